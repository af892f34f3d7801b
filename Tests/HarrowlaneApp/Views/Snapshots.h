#pragma once

#include <algorithm>
#include <cmath>
#include <string>

#include "UsageModel/Calendar.h"
#include "UsageModel/UsageSnapshot.h"

/// Weeks to show, in UTC: they began on Monday at 5 PM, and it is Thursday, 2:15 PM.
namespace ViewTests {

inline constexpr double hour = 3600.0;
inline constexpr UsageModel::Date monday{1772470800};
inline constexpr UsageModel::Date thursday = monday + 69.25 * hour;
inline constexpr UsageModel::Date nextMonday = monday + 168.0 * hour;

/// Nights are flat, days are not.
inline double shareBy(double hours) {
    constexpr double dayHours = 24.0;
    constexpr double working = 10.0;
    const double whole = std::floor(hours / dayHours);
    const double part = std::clamp((hours - whole * dayHours) / working, 0.0, 1.0);
    return (whole + part * part * (3.0 - 2.0 * part)) / 7.0;
}

inline std::vector<UsageModel::SeriesPoint> curve(double fromHours, double toHours, double from, double to) {
    std::vector<UsageModel::SeriesPoint> points;
    const double low = shareBy(fromHours);
    const double high = shareBy(toHours);
    for (double hours = fromHours; hours <= toHours; hours += 0.25) {
        const double share = (shareBy(hours) - low) / (high - low);
        points.push_back({.t = monday + hours * hour, .used = from + share * (to - from)});
    }
    return points;
}

/// A week of which 58 % are used, that lands there.
inline UsageModel::WeekSeries weekLanding(double landing, double usedNow = 0.577) {
    UsageModel::WeekSeries week{.windowStart = monday, .windowEnd = nextMonday, .now = thursday, .usedNow = usedNow};
    week.limitLevel = 1.0;
    week.coneLikelyEnd = {.t = nextMonday, .used = landing};
    week.actual = curve(0.0, 69.25, 0.0, usedNow);
    week.forecastLikely = curve(69.25, 168.0, usedNow, landing);
    week.forecastHigh = curve(69.25, 168.0, usedNow, landing * 1.1);
    week.forecastLow = curve(69.25, 168.0, usedNow, landing * 0.9);
    week.norm.basis = UsageModel::WeeklyNorm::Basis::median;
    week.norm.samples = {1.0, 1.1, 0.9};
    week.intensity = 1.22;
    week.intensityIsMeaningful = true;
    if (landing > 1.0) week.crossing = monday + (6.0 * 24.0 + 6.22) * hour;
    return week;
}

inline UsageModel::WindowState meter(UsageModel::WindowKind kind, double used, double elapsed) {
    const bool isSession = kind == UsageModel::WindowKind::session5h;
    return {.kind = kind,
            .used = used,
            .windowStart = isSession ? thursday + -3.0 * hour : monday,
            .resetsAt = isSession ? thursday + 2.0 * hour : nextMonday,
            .elapsedFraction = elapsed,
            .confidence = {.anchored = true}};
}

inline UsageModel::Recommendation routeToSonnet() {
    return {.kind = UsageModel::Recommendation::Kind::easeOff,
            .title = "Route the rest to Sonnet",
            .detail = "Your Opus week is projected to hit 105% by reset; this lands it around 83%. Lowering effort "
                      "alone doesn't get you there.",
            .impact = "back inside the cap",
            .command = "/model sonnet"};
}

/// A week that is over its pace.
inline UsageModel::UsageSnapshot overPace() {
    UsageModel::UsageSnapshot snapshot;
    snapshot.generatedAt = thursday;
    snapshot.meters = {meter(UsageModel::WindowKind::session5h, 0.74, 0.60),
                       meter(UsageModel::WindowKind::weeklyAll, 0.577, 0.412)};
    snapshot.weekSeries = weekLanding(1.053);
    snapshot.recommendation = routeToSonnet();
    return snapshot;
}

/// A week with room to spare.
inline UsageModel::UsageSnapshot calm() {
    UsageModel::UsageSnapshot snapshot = overPace();
    snapshot.meters = {meter(UsageModel::WindowKind::session5h, 0.41, 0.60),
                       meter(UsageModel::WindowKind::weeklyAll, 0.34, 0.412)};
    snapshot.weekSeries = weekLanding(0.78, 0.34);
    snapshot.recommendation = {.kind = UsageModel::Recommendation::Kind::spendMore,
                               .title = "Room to raise effort to X-High",
                               .detail = "You're on Opus at high effort. This week lands at 78% at this pace; this "
                                         "takes it to about 83% — and every other window stays inside too.",
                               .impact = "uses the room you have",
                               .command = "/effort xhigh"};
    return snapshot;
}

/// A week without a gauge: all is estimated, and measured by a typical week.
inline UsageModel::UsageSnapshot estimated() {
    UsageModel::UsageSnapshot snapshot = overPace();
    snapshot.meters = {meter(UsageModel::WindowKind::session5h, 0.84, 0.60),
                       meter(UsageModel::WindowKind::weeklyAll, 0.67, 0.412)};
    for (auto& each : snapshot.meters) each.confidence.anchored = false;
    snapshot.weekSeries = weekLanding(1.22, 0.67);
    snapshot.weekSeries->scale = UsageModel::SeriesScale::typicalWeeks;
    snapshot.weekSeries->limitLevel.reset();
    snapshot.weekSeries->crossing.reset();
    snapshot.weekSeries->boundaryEstimated = true;
    snapshot.recommendation.reset();
    return snapshot;
}

} // namespace ViewTests
