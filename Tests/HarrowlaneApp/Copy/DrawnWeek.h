#pragma once

#include "HarrowlaneApp/Copy/Weeks.h"

namespace TestSupport {

/// A week with curves and two sessions, a day apart.
inline UsageModel::WeekSeries drawnWeek() {
    using UsageModel::ModelClass;
    UsageModel::WeekSeries series = capWeek(1.0);
    series.actual = {{monday, 0.0}, {monday + 2 * day, 0.4}, {series.now, 0.5}};
    series.forecastLikely = {{series.now, 0.5}, {series.windowEnd, 1.0}};
    series.baseline = {{monday, 0.0}, {series.windowEnd, 0.8}};
    for (const double start : {0.0, day}) {
        series.sessions.push_back({.start = monday + start,
                                   .end = monday + start + 5 * hour,
                                   .fillFraction = 0.5,
                                   .weeklyCost = 0.13,
                                   .byModelClass = {{ModelClass::fable, 0.6}, {ModelClass::opus, 0.4}},
                                   .capBasis = UsageModel::SessionCapBasis::liveGauge});
    }
    return series;
}

} // namespace TestSupport
