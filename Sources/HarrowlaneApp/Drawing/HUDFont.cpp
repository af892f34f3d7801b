#include "HarrowlaneApp/Drawing/HUDFont.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

namespace HarrowlaneApp {

namespace {

constexpr int masterSize = 128;
// Below this a text is a smear, and the way back from the large size would divide by nothing.
constexpr double smallestSize = 0.5;
// Centred to the letter, a line looks low: more of its letters rise than hang.
constexpr double opticalRise = 0.4;

} // namespace

HUDFont::HUDFont(const QFont& face, double size, double tracking)
    : master_(face),
      size_(std::max(size, smallestSize)),
      scale_(size_ / masterSize) {
    master_.setPixelSize(masterSize);
    master_.setHintingPreference(QFont::PreferNoHinting);
    master_.setStyleStrategy(QFont::PreferAntialias);
    master_.setLetterSpacing(QFont::AbsoluteSpacing, tracking / scale_);
}

QFont HUDFont::rounded() const {
    QFont font = master_;
    font.setPixelSize(std::max(static_cast<int>(std::lround(size_)), 1));
    font.setLetterSpacing(QFont::AbsoluteSpacing, master_.letterSpacing() * scale_);
    return font;
}

double HUDFont::width(const QString& text) const {
    return QFontMetricsF(master_).horizontalAdvance(text) * scale_;
}

double HUDFont::inkWidth(const QString& text) const {
    return text.isEmpty() ? 0.0 : width(text) - master_.letterSpacing() * scale_;
}

double HUDFont::ascent() const {
    return QFontMetricsF(master_).ascent() * scale_;
}

double HUDFont::descent() const {
    return QFontMetricsF(master_).descent() * scale_;
}

double HUDFont::capitalHeight() const {
    return QFontMetricsF(master_).capHeight() * scale_;
}

double HUDFont::inkAbove(const QString& text) const {
    return -QFontMetricsF(master_).tightBoundingRect(text).top() * scale_;
}

double HUDFont::rightBearing(QChar letter) const {
    return QFontMetricsF(master_).rightBearing(letter) * scale_;
}

double HUDFont::baseline(const LineBox& box) const {
    return box.top + (box.height + ascent() - descent()) / 2.0 - opticalRise;
}

QString HUDFont::elided(const QString& text, double width) const {
    return QFontMetricsF(master_).elidedText(text, Qt::ElideRight, width / scale_);
}

QStringList HUDFont::wrapped(const QString& text, double width) const {
    QTextLayout layout(text, master_);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width / scale_);
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

void HUDFont::draw(QPainter& painter, const QPointF& baseline, const QString& text) const {
    painter.save();
    painter.translate(baseline);
    painter.scale(scale_, scale_);
    painter.setFont(master_);
    painter.drawText(QPointF(), text);
    painter.restore();
}

void HUDFont::draw(QPainter& painter, const LineBox& box, const QString& text) const {
    draw(painter, QPointF(box.left, baseline(box)), text);
}

void HUDFont::drawToRight(QPainter& painter, const LineBox& box, double right, const QString& text) const {
    draw(painter, QPointF(right - width(text), baseline(box)), text);
}

} // namespace HarrowlaneApp
