#include "HarrowlaneApp/Copy/WeekMiniChart.h"

#include <algorithm>
#include <cmath>

#include "HarrowlaneApp/Copy/Figures.h"

namespace HarrowlaneApp::WeekMiniChart {

namespace {

using UsageModel::SeriesPoint;
using UsageModel::SeriesScale;
using UsageModel::WeekSeries;

/// Among those that are numbers.
double largestLevel(const WeekSeries& series) {
    double largest = 0.0;
    const auto look = [&](double level) {
        if (std::isfinite(level)) largest = std::max(largest, level);
    };
    look(series.usedNow);
    look(series.coneLikelyEnd.used);
    for (const auto* curve : {&series.actual, &series.forecastLikely, &series.forecastHigh, &series.forecastLow}) {
        for (const SeriesPoint& point : *curve) look(point.used);
    }
    return largest;
}

double axisTopOf(const WeekSeries& series) {
    constexpr double ofLimit = 1.15;
    constexpr double ofLargest = 1.06;
    constexpr double least = 1e-6; // a week without any use still has an axis
    if (series.scale == SeriesScale::capFraction) return ofLimit;
    return std::max(ofLargest * largestLevel(series), least);
}

} // namespace

Layout layOut(const WeekSeries& series, const Size& size) {
    constexpr double textBelowTop = 5.0;
    const Plot plot{
        .panel = {.x = 0.0, .y = padT, .width = size.width - padR, .height = size.height - padT - padB},
        .windowStart = series.windowStart,
        .windowEnd = series.windowEnd,
        .axisTop = axisTopOf(series),
    };
    const bool limitFits = series.limitLevel && *series.limitLevel <= plot.axisTop;
    return {
        .plot = plot,
        .limitY = limitFits ? std::optional(plot.heldY(*series.limitLevel)) : std::nullopt,
        .now = {.x = plot.x(series.now), .y = plot.heldY(series.usedNow)},
        .landingText = Figures::percent(series.coneLikelyEnd.used),
        .landingY = std::max(plot.heldY(series.coneLikelyEnd.used), padT + textBelowTop),
    };
}

} // namespace HarrowlaneApp::WeekMiniChart
