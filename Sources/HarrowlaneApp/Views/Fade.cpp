#include "HarrowlaneApp/Views/Fade.h"

#include <QStyle>
#include <QWidget>

namespace HarrowlaneApp {

namespace {

constexpr int milliseconds = 120;

} // namespace

Fade::Fade(QWidget& control) : QObject(&control), control_(control) {
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        value_ = value.toDouble();
        control_.update();
    });
}

void Fade::set(bool on) {
    if (on == isOn_) return;
    isOn_ = on;
    animation_.stop();
    const bool isAnimated = control_.isVisible() &&
                            control_.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &control_) > 0;
    animation_.setDuration(isAnimated ? milliseconds : 0);
    animation_.setStartValue(value_);
    animation_.setEndValue(on ? 1.0 : 0.0);
    animation_.start();
}

} // namespace HarrowlaneApp
