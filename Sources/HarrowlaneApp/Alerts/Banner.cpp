#include "HarrowlaneApp/Alerts/Banner.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace HarrowlaneApp {

namespace {

using Urgency = Banner::Urgency;

Urgency urgencyOf(const UsageEngine::ThresholdAlert& alert) {
    return alert.isCritical() ? Urgency::timeSensitive : Urgency::active;
}

} // namespace

std::string wholeNumber(double value) {
    constexpr double largest = 9e15; // exact in a double, and further off than any date
    const double held = std::clamp(std::isnan(value) ? 0.0 : value, -largest, largest);
    return std::to_string(static_cast<std::int64_t>(held));
}

Banner Banners::pace(const UsageModel::UsageSnapshot& snapshot, UsageEngine::AlertLevel level) {
    return {
        .identifier = "hwl-pace-" + wholeNumber(snapshot.generatedAt.secondsSince1970),
        .title = snapshot.verdict.headline,
        .body = snapshot.verdict.subtext,
        .urgency = level == UsageEngine::AlertLevel::critical ? Urgency::timeSensitive : Urgency::active,
    };
}

Banner Banners::level(const UsageEngine::ThresholdAlert& alert, UsageModel::Date now) {
    constexpr double hour = 3600.0;
    return {
        .identifier = "hwl-level-" + std::string(text(alert.window)) + "-" + std::to_string(alert.threshold) + "-" +
                      wholeNumber(now.secondsSince1970 / hour),
        .title = alert.title(),
        .body = alert.body(now),
        .urgency = urgencyOf(alert),
    };
}

Banner Banners::test(UsageModel::Date now) {
    constexpr double twoDays = 172800.0;
    const UsageEngine::ThresholdAlert alert{
        .window = UsageModel::WindowKind::weeklyAll, .threshold = 90, .used = 0.9, .resetsAt = now + twoDays};
    return {
        .identifier = "hwl-test-" + wholeNumber(now.secondsSince1970),
        .title = alert.title(),
        .body = alert.body(now),
    };
}

} // namespace HarrowlaneApp
