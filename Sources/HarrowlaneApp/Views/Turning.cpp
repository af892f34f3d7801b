#include "HarrowlaneApp/Views/Turning.h"

#include <QEvent>
#include <QStyle>
#include <QWidget>

namespace HarrowlaneApp {

namespace {

constexpr int turnMilliseconds = 900;

} // namespace

Turning::Turning(QWidget& widget) : QObject(&widget), widget_(widget) {
    animation_.setStartValue(0.0);
    animation_.setEndValue(360.0);
    animation_.setDuration(turnMilliseconds);
    animation_.setLoopCount(-1);
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        angle_ = value.toDouble();
        widget_.update();
    });
    widget.installEventFilter(this);
}

void Turning::set(bool on) {
    isOn_ = on;
    if (!on) angle_ = 0.0;
    follow();
}

void Turning::follow() {
    const bool wanted = isOn_ && widget_.isVisible() &&
                        widget_.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget_) > 0;
    if (wanted == isTurning()) return;
    if (wanted) {
        animation_.start();
    } else {
        animation_.stop();
    }
}

bool Turning::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) follow();
    return QObject::eventFilter(watched, event);
}

} // namespace HarrowlaneApp
