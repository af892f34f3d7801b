#include "HarrowlaneApp/Views/HUDButton.h"

#include <cmath>

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"

namespace HarrowlaneApp {

namespace {

constexpr double disabledOpacity = 0.40;

} // namespace

QColor mixed(const QColor& from, const QColor& to, double share) {
    const auto part = [share](float first, float second) {
        return first + (second - first) * static_cast<float>(share);
    };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()), part(from.alphaF(), to.alphaF()));
}

HUDButton::HUDButton(const ApplicationLook& look, const QString& text, QWidget* parent)
    : QAbstractButton(parent),
      look_(look),
      hover_(new Fade(*this)),
      press_(new Fade(*this)) {
    setText(text);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&look, &ApplicationLook::changed, this, [this] { update(); });
    connect(this, &QAbstractButton::pressed, this, [this] { press_->set(true); });
    connect(this, &QAbstractButton::released, this, [this] { press_->set(false); });
}

bool HUDButton::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::HoverEnter: hover_->set(isEnabled()); break;
    case QEvent::HoverLeave: hover_->set(false); break;
    case QEvent::EnabledChange:
        if (!isEnabled()) hover_->set(false);
        break;
    default: break;
    }
    return QAbstractButton::event(event);
}

void HUDButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) painter.setOpacity(disabledOpacity);
    paintFace(painter);
}

void HUDButton::focusInEvent(QFocusEvent* event) {
    if (showsFocusRing(event->reason())) {
        delete ring_;
        ring_ = new FocusRing(look_, *this, outline());
    }
    QAbstractButton::focusInEvent(event);
}

void HUDButton::focusOutEvent(QFocusEvent* event) {
    delete ring_;
    QAbstractButton::focusOutEvent(event);
}

void HUDButton::resizeEvent(QResizeEvent* event) {
    if (ring_) ring_->setOutline(outline());
    QAbstractButton::resizeEvent(event);
}

void HUDButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

PushButton::PushButton(const ApplicationLook& look, const QString& text, Kind kind, QWidget* parent)
    : HUDButton(look, text, parent),
      kind_(kind) {}

PushButton::PushButton(const ApplicationLook& look, const QString& text, const Measures& measures, QWidget* parent)
    : HUDButton(look, text, parent),
      measures_(measures) {}

void PushButton::setKind(Kind kind) {
    kind_ = kind;
    update();
}

HUDFont PushButton::font() const {
    return HUDType::text(measures_.textSize, HUDType::Weight::semibold);
}

QSize PushButton::sizeHint() const {
    return {static_cast<int>(std::ceil(font().width(text()))) + 2 * measures_.padding, measures_.height};
}

FocusRing::Outline PushButton::outline() const {
    return {.box = rect(), .radius = measures_.radius};
}

void PushButton::paintFace(QPainter& painter) {
    const QRectF face = rect();
    const auto wash = [&](const QColor& color) { fillRounded(painter, face, measures_.radius, color); };
    if (kind_ == Kind::prominent) {
        wash(colors().cyan);
        wash(withOpacity(Qt::white, 0.16 * hovered() * (1.0 - pressed())));
        wash(withOpacity(Qt::black, 0.18 * pressed()));
        painter.setPen(onAccent(colors()));
    } else {
        wash(colors().cardRaised);
        wash(withOpacity(colors().ink, std::max(0.06 * hovered(), 0.12 * pressed())));
        const bool strong = look().increaseContrast;
        const QColor edge = strong ? colors().edgeStrong : mixed(colors().edge, colors().edgeStrong, hovered());
        strokeInside(painter, face, measures_.radius, edge, strong ? 1.5 : 1.0);
        painter.setPen(colors().ink);
    }
    const double left = (width() - font().width(text())) / 2.0;
    font().draw(painter, {.left = left, .height = face.height()}, text());
}

QSize TextButton::sizeHint() const {
    const double width = HUDType::text(11.5, HUDType::Weight::semibold).width(text());
    return {static_cast<int>(std::ceil(width)) + 2 * reach, 16 + 2 * reach};
}

FocusRing::Outline TextButton::outline() const {
    constexpr double inset = reach - 4.0;
    return {.box = QRectF(rect()).adjusted(inset, inset, -inset, -inset), .radius = 4.0};
}

void TextButton::paintFace(QPainter& painter) {
    painter.setPen(mixed(mixed(colors().cyan, colors().ink, 0.35 * hovered()), colors().dim, 0.5 * pressed()));
    const LineBox box{.left = 1.0 * reach, .height = 1.0 * height()};
    HUDType::text(11.5, HUDType::Weight::semibold).draw(painter, box, text());
}

} // namespace HarrowlaneApp
