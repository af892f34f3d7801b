#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

#include <QTimer>

#include "HarrowlaneApp/Alerts/Banner.h"

namespace HarrowlaneApp {

/// Shows a banner once its delay is over, at once where it has none, and not at all where `owner` is gone by then.
inline void afterDelay(QObject& owner, const Banner& banner, std::function<void()> show) {
    constexpr double longestSeconds = 86400.0;
    if (!(banner.delaySeconds > 0.0)) return show();
    const std::chrono::duration<double> delay(std::min(banner.delaySeconds, longestSeconds));
    QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(delay), Qt::PreciseTimer, &owner, std::move(show));
}

} // namespace HarrowlaneApp
