#pragma once

#include <QRectF>

#include "HarrowlaneApp/Copy/WeekChartHover.h"
#include "HarrowlaneApp/Drawing/Look.h"
#include "HarrowlaneApp/Drawing/WeekChartLayout.h"

class QPainter;

/// Draws the week chart, from the painter's origin on, on whatever panel lies there.
namespace HarrowlaneApp::WeekChart {

/// All of it, from the back to the front.
void paint(QPainter& painter, const Layout& layout, const Look& look, Tint tint = &Palette::cyan);

/// What is drawn over the chart for the place that is pointed at.
struct Hover {
    HoverMark mark;
    /// The place lies behind the present.
    bool isForecast = false;
};

[[nodiscard]] Hover hoverOf(const HoverTarget& target, const UsageModel::WeekSeries& series, const Geometry& geometry);
void paint(QPainter& painter, const Hover& hover, const Layout& layout, const Look& look, Tint tint = &Palette::cyan);
/// All that the marks may colour.
[[nodiscard]] QRectF extent(const Hover& hover, const Geometry& geometry);

} // namespace HarrowlaneApp::WeekChart
