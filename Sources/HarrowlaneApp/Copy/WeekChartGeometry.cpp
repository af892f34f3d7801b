#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

#include <algorithm>
#include <cmath>

#include "HarrowlaneApp/Copy/Figures.h"
#include "UsageEngine/TimeText.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using UsageModel::SeriesScale;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;

double axisTopOf(SeriesScale scale) {
    return scale == SeriesScale::capFraction ? 1.25 : 2.0;
}

} // namespace

double Geometry::botY(double fill) const {
    return bottom.y(std::max(fill, 0.0));
}

Geometry geometry(const WeekSeries& series, const Size& size) {
    const double left = size.height - padT - padB - panelGap - bottomPanelHeight;
    const Rect top{
        .x = padL,
        .y = padT,
        .width = size.width - padL - padR,
        .height = std::max(left, leastTopPanelHeight),
    };
    const Rect bottom{.x = padL, .y = top.bottom() + panelGap, .width = top.width, .height = bottomPanelHeight};
    const auto plot = [&](const Rect& panel, double axisTop) {
        return Plot{
            .panel = panel,
            .windowStart = series.windowStart,
            .windowEnd = series.windowEnd,
            .axisTop = axisTop,
        };
    };
    return {.top = plot(top, axisTopOf(series.scale)), .bottom = plot(bottom, barAxisTop(series.sessions))};
}

double barAxisTop(std::span<const SessionBar> sessions) {
    constexpr double aboveFullCap = 1.15;
    constexpr double aboveFullest = 1.05;
    constexpr double least = 1e-6;
    if (sessions.empty()) return aboveFullest;
    if (anyCalibrated(sessions)) return aboveFullCap;
    double fullest = 0.0;
    for (const SessionBar& bar : sessions) {
        if (std::isfinite(bar.fillFraction)) fullest = std::max(fullest, bar.fillFraction);
    }
    return std::max(fullest * aboveFullest, least);
}

bool anyCalibrated(std::span<const SessionBar> sessions) {
    return std::ranges::any_of(sessions,
                               [](const SessionBar& bar) { return bar.capBasis != SessionCapBasis::uncalibrated; });
}

std::string accessibilitySummary(const WeekSeries& series, const UsageModel::Calendar& calendar) {
    const bool isCap = series.scale == SeriesScale::capFraction;
    std::string summary = "This week's usage chart. " + Figures::percent(series.usedNow) +
                          (isCap ? " of the weekly cap used so far." : " of a typical week used so far.");
    if (series.crossing) {
        summary +=
            " Projected to reach the limit " + UsageEngine::TimeText::shortStamp(*series.crossing, calendar) + ".";
    }
    return summary;
}

} // namespace HarrowlaneApp::WeekChart
