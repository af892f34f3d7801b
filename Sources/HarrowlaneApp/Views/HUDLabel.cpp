#include "HarrowlaneApp/Views/HUDLabel.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

namespace HarrowlaneApp {

namespace {

// As little as an ellipsis: a label never keeps a window from being made small.
constexpr int leastWidth = 16;

} // namespace

HUDLabel::HUDLabel(const ApplicationLook& look, TextStyle style, Overflow overflow, QWidget* parent)
    : HUDWidget(look, parent),
      style_(std::move(style)),
      overflow_(overflow) {
    QSizePolicy policy(QSizePolicy::Preferred, overflow == Overflow::wrap ? QSizePolicy::Minimum : QSizePolicy::Fixed);
    policy.setHeightForWidth(overflow == Overflow::wrap);
    setSizePolicy(policy);
}

void HUDLabel::setText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

void HUDLabel::setStyle(TextStyle style) {
    style_ = std::move(style);
    updateGeometry();
    update();
}

QSize HUDLabel::sizeHint() const {
    return {static_cast<int>(std::ceil(style_.font.width(text_))), style_.lineHeight};
}

QSize HUDLabel::minimumSizeHint() const {
    return {std::min(sizeHint().width(), leastWidth), style_.lineHeight};
}

int HUDLabel::heightForWidth(int width) const {
    return std::max(static_cast<int>(lines(width).size()), 1) * style_.lineHeight;
}

QStringList HUDLabel::lines(double width) const {
    if (overflow_ == Overflow::wrap) return style_.font.wrapped(text_, std::max(width, 1.0));
    return {style_.font.elided(text_, width)};
}

double HUDLabel::left(const QString& line) const {
    const double room = width() - style_.font.width(line);
    if (alignment_.testFlag(Qt::AlignRight)) return room;
    return alignment_.testFlag(Qt::AlignHCenter) ? room / 2.0 : 0.0;
}

void HUDLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(withOpacity(colors().*style_.color, style_.opacity));
    const QStringList shownLines = lines(width());
    double top = (height() - style_.lineHeight * static_cast<double>(shownLines.size())) / 2.0;
    for (const QString& line : shownLines) {
        style_.font.draw(painter, {.left = left(line), .top = top, .height = 1.0 * style_.lineHeight}, line);
        top += style_.lineHeight;
    }
}

} // namespace HarrowlaneApp
