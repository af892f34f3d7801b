#pragma once

#include <span>
#include <vector>

#include "HarrowlaneApp/Copy/WeekChartForecast.h"
#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

namespace HarrowlaneApp::WeekChart {

/// A line from left to right; or an area, whose last point is joined to its first.
using Trace = std::vector<Point>;

/// A curve in a panel, its points in the order of time. Of the points in one column of pixels only the lowest and the
/// highest are kept, and of those in a straight line its ends: more of them cannot be seen, and cost as much as those
/// that can. No point of the curve's, held to the panel, lies further than a tenth of a pixel from the line.
/// `pixelsPerPoint` is above 0.
[[nodiscard]] Trace trace(std::span<const UsageModel::SeriesPoint> curve, const Plot& plot, double pixelsPerPoint);

/// The area between a line and a level below or above it. Empty without a line.
[[nodiscard]] Trace areaTo(double level, const Trace& line);
/// The area between two lines; empty where one is missing.
[[nodiscard]] Trace areaBetween(const Trace& upper, const Trace& lower);
/// The area between the likely forecast and the limit, on the side that the wash is about.
[[nodiscard]] Trace washArea(const Wash& wash, const Trace& likely);

} // namespace HarrowlaneApp::WeekChart
