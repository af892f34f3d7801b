#include "HarrowlaneApp/Drawing/DisplayOptions.h"

#include <utility>

namespace HarrowlaneApp {

DisplayOptions::DisplayOptions(std::unique_ptr<AccessibilityDisplay> display, QObject* parent)
    : QObject(parent),
      display_(std::move(display)),
      reduceTransparency_(display_->shouldReduceTransparency()),
      increaseContrast_(display_->shouldIncreaseContrast()) {
    display_->observe([this] { read(); });
}

Look DisplayOptions::look(Appearance appearance) const {
    return {.appearance = appearance, .reduceTransparency = reduceTransparency_, .increaseContrast = increaseContrast_};
}

void DisplayOptions::read() {
    const bool reduces = display_->shouldReduceTransparency();
    const bool increases = display_->shouldIncreaseContrast();
    if (reduces == reduceTransparency_ && increases == increaseContrast_) return;
    reduceTransparency_ = reduces;
    increaseContrast_ = increases;
    Q_EMIT changed();
}

} // namespace HarrowlaneApp
