#pragma once

#include <optional>
#include <span>
#include <variant>

#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

namespace HarrowlaneApp::WeekChart {

/// A place on the curves.
struct CurvePlace {
    UsageModel::Date at;

    friend bool operator==(const CurvePlace&, const CurvePlace&) = default;
};

/// What the pointer points at.
using HoverTarget = std::variant<UsageModel::SessionBar, CurvePlace>;

/// In the bottom panel and a little around it the first session whose bar stands at that x, however high; in the top
/// panel the instant. Absent elsewhere, and everywhere where the window has no length.
[[nodiscard]] std::optional<HoverTarget> hoverTarget(const Point& pointer, const UsageModel::WeekSeries& series,
                                                     const Geometry& geometry);

/// A curve's value at an instant, interpolated, beyond its ends that of the end. Absent of no points.
[[nodiscard]] std::optional<double> valueOn(std::span<const UsageModel::SeriesPoint> curve, UsageModel::Date at);
/// What was used by then, or will likely be.
[[nodiscard]] std::optional<double> curveValue(const UsageModel::WeekSeries& series, UsageModel::Date at);

/// What a target is shown with.
struct HoverMark {
    /// The place of the hairline across both panels.
    double hairline = 0.0;
    /// On a curve: the dot's centre.
    std::optional<Point> dot;
    /// Around a session's bar.
    std::optional<Rect> outline;

    friend bool operator==(const HoverMark&, const HoverMark&) = default;
};

[[nodiscard]] HoverMark hoverMark(const HoverTarget& target, const UsageModel::WeekSeries& series,
                                  const Geometry& geometry);

} // namespace HarrowlaneApp::WeekChart
