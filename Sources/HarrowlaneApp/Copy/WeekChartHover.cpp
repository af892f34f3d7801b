#include "HarrowlaneApp/Copy/WeekChartHover.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/WeekChartBars.h"
#include "UsageEngine/ForecastShape.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using UsageModel::Date;
using UsageModel::SessionBar;
using UsageModel::WeekSeries;

bool isAtBars(double y, const Rect& bottomPanel) {
    constexpr double tolerance = 4.0;
    return y >= bottomPanel.y - tolerance && y <= bottomPanel.bottom() + tolerance;
}

std::optional<HoverTarget> sessionAt(double x, const WeekSeries& series, const Geometry& geometry) {
    constexpr double tolerance = 1.0;
    const auto found = std::ranges::find_if(series.sessions, [&](const SessionBar& session) {
        const Rect bar = barRect(session, geometry);
        return x >= bar.x - tolerance && x <= bar.right() + tolerance;
    });
    if (found == series.sessions.end()) return std::nullopt;
    return *found;
}

Date dateAt(double x, const Geometry& geometry) {
    const double share = (x - geometry.top.panel.x) / std::max(geometry.top.panel.width, 1.0);
    return geometry.top.windowStart + std::clamp(share, 0.0, 1.0) * (geometry.top.windowEnd - geometry.top.windowStart);
}

} // namespace

std::optional<HoverTarget> hoverTarget(const Point& pointer, const WeekSeries& series, const Geometry& geometry) {
    if (!(geometry.top.windowEnd > geometry.top.windowStart)) return std::nullopt;
    if (isAtBars(pointer.y, geometry.bottom.panel)) return sessionAt(pointer.x, series, geometry);
    if (geometry.top.panel.contains(pointer)) return CurvePlace{.at = dateAt(pointer.x, geometry)};
    return std::nullopt;
}

std::optional<double> valueOn(std::span<const UsageModel::SeriesPoint> curve, Date at) {
    if (curve.empty()) return std::nullopt;
    return UsageEngine::valueOn(curve, at);
}

std::optional<double> curveValue(const WeekSeries& series, Date at) {
    return valueOn(at <= series.now ? series.actual : series.forecastLikely, at);
}

HoverMark hoverMark(const HoverTarget& target, const WeekSeries& series, const Geometry& geometry) {
    if (const auto* session = std::get_if<SessionBar>(&target)) {
        const Rect bar = barRect(*session, geometry);
        return {.hairline = bar.x + bar.width / 2, .outline = bar};
    }
    const Date at = std::get<CurvePlace>(target).at;
    HoverMark mark{.hairline = geometry.x(at)};
    if (const auto value = curveValue(series, at)) mark.dot = {.x = mark.hairline, .y = geometry.top.heldY(*value)};
    return mark;
}

} // namespace HarrowlaneApp::WeekChart
