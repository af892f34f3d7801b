#pragma once

#include "HarrowlaneApp/Copy/Plane.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/Printing.h"
#include "UsageModel/WeekSeries.h"

/// Weeks to tell and to draw, in UTC.
namespace TestSupport {

inline constexpr double hour = 3600.0;
inline constexpr double day = 86400.0;
/// A Monday, 2026-03-02 17:00 UTC: the window's start.
inline constexpr UsageModel::Date monday{1772470800};

/// A week of which 41 % are over.
inline UsageModel::WeekSeries weekOf(UsageModel::SeriesScale scale) {
    UsageModel::WeekSeries series;
    series.windowStart = monday;
    series.windowEnd = monday + 7 * day;
    series.now = monday + 0.41 * 7 * day;
    series.scale = scale;
    series.norm.basis = UsageModel::WeeklyNorm::Basis::median;
    series.coneLikelyEnd = {.t = series.windowEnd};
    return series;
}

/// A week with a gauge that lands at `landing`.
inline UsageModel::WeekSeries capWeek(double landing) {
    UsageModel::WeekSeries series = weekOf(UsageModel::SeriesScale::capFraction);
    series.limitLevel = 1.0;
    series.coneLikelyEnd.used = landing;
    return series;
}

inline UsageModel::WeekSeries typicalWeek() {
    return weekOf(UsageModel::SeriesScale::typicalWeeks);
}

inline UsageModel::WeekSeries with(UsageModel::WeekSeries series, std::vector<UsageModel::SessionBar> sessions) {
    series.sessions = std::move(sessions);
    return series;
}

/// Opus alone, at usual prices.
inline UsageModel::WhatIfSpace opusSpace() {
    using UsageModel::ModelClass;
    return {
        .byFamily = {{ModelClass::opus, 1.0}},
        .familyMultiplier = {{ModelClass::opus, 1.0},
                             {ModelClass::fable, 2.0},
                             {ModelClass::sonnet, 0.6},
                             {ModelClass::haiku, 0.2},
                             {ModelClass::other, 0.6}},
        .outputShare = 0.3,
        .effortMix = {{UsageModel::EffortLevel::high, 1.0}},
        .currentEffort = UsageModel::EffortLevel::high,
        .effortMultiplier = UsageModel::effortOutputPriors(),
    };
}

/// Five hours of Opus from the window's start.
inline UsageModel::SessionBar session(UsageModel::SessionCapBasis basis, double fill) {
    return {.start = monday,
            .end = monday + 5 * hour,
            .fillFraction = fill,
            .byModelClass = {{UsageModel::ModelClass::opus, 1.0}},
            .capBasis = basis};
}

/// The chart in the dashboard.
inline constexpr HarrowlaneApp::Size chartSize{.width = 656, .height = 300};

inline UsageModel::Calendar utc() {
    return UsageModel::Calendar::utc();
}

} // namespace TestSupport
