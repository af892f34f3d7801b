#pragma once

#include <algorithm>
#include <ostream>

#include "HarrowlaneApp/Copy/Weeks.h"
#include "HarrowlaneApp/Drawing/WeekChartLayout.h"

/// Weeks with straight curves, of which every place is known beforehand.
namespace DrawingTests {

struct Straight {
    UsageModel::SeriesScale scale = UsageModel::SeriesScale::capFraction;
    double landing = 1.0;
    /// How much of the week is gone, 0 to 1.
    double gone = 0.4;
    int sessions = 6;
    bool boundaryEstimated = false;
};

inline void PrintTo(const Straight& week, std::ostream* out) {
    *out << UsageModel::text(week.scale) << " landing at " << week.landing << ", " << week.gone << " gone, "
         << week.sessions << " sessions";
}

inline UsageModel::SessionBar straightSession(int index, const Straight& week) {
    const double apart = (week.sessions > 20 ? 4.1 : 8.0) * TestSupport::hour;
    const UsageModel::Date start = TestSupport::monday + TestSupport::hour + index * apart;
    return {.start = start,
            .end = start + 4.0 * TestSupport::hour,
            .fillFraction = 0.8,
            .weeklyCost = 0.02,
            .byModelClass = {{UsageModel::ModelClass::opus, 0.6}, {UsageModel::ModelClass::sonnet, 0.4}},
            .isCurrent = index + 1 == week.sessions,
            .capBasis = week.scale == UsageModel::SeriesScale::capFraction ? UsageModel::SessionCapBasis::learnedScale
                                                                           : UsageModel::SessionCapBasis::uncalibrated};
}

/// It rises evenly from its start to the landing; the cone opens by a tenth to each side.
inline UsageModel::WeekSeries straightWeek(const Straight& week) {
    constexpr double weekSeconds = 7.0 * TestSupport::day;
    UsageModel::WeekSeries series = TestSupport::weekOf(week.scale);
    series.now = series.windowStart + week.gone * weekSeconds;
    series.usedNow = std::min(week.gone * week.landing, 1.5);
    series.boundaryEstimated = week.boundaryEstimated;
    series.actual = {{series.windowStart, 0.0}, {series.now, series.usedNow}};
    series.baseline = {{series.windowStart, 0.0}, {series.windowEnd, 0.86}};
    const auto forecast = [&](double end) {
        return std::vector<UsageModel::SeriesPoint>{{series.now, series.usedNow}, {series.windowEnd, end}};
    };
    series.forecastLikely = forecast(week.landing);
    series.forecastHigh = forecast(1.1 * week.landing);
    series.forecastLow = forecast(0.9 * week.landing);
    series.coneLikelyEnd = series.forecastLikely.back();
    series.norm.samples = {1.0, 1.0, 1.0};
    if (week.scale == UsageModel::SeriesScale::capFraction) series.limitLevel = 1.0;
    if (week.landing > 1.0 && series.usedNow < 1.0) series.crossing = series.windowStart + weekSeconds / week.landing;
    for (int i = 0; i < week.sessions; ++i) series.sessions.push_back(straightSession(i, week));
    return series;
}

} // namespace DrawingTests
