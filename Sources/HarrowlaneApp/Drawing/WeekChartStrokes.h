#pragma once

#include <QLineF>
#include <QList>
#include <QPen>
#include <QPolygonF>

#include "HarrowlaneApp/Copy/DashboardTexts.h"
#include "HarrowlaneApp/Copy/Plane.h"
#include "HarrowlaneApp/Copy/WeekChartCurves.h"
#include "HarrowlaneApp/Drawing/Palette.h"

/// The lines of the week chart: each in a colour, a width and a rhythm of its own, in the chart and in its legend.
namespace HarrowlaneApp::WeekChart {

/// Names a colour of the palette.
using Tint = QColor Palette::*;

/// Lengths of a dash and of the gap behind it, points.
struct Dash {
    double on = 0.0;
    double off = 0.0;
};

[[nodiscard]] QPen solid(const QColor& color, double width);
[[nodiscard]] QPen dashed(const QColor& color, double width, const Dash& dash);
/// With round ends, by which each dash is longer than told.
[[nodiscard]] QPen dotted(const QColor& color, double width, const Dash& dash);

/// The dashes of such a pen along a line, each straight from its beginning to its end. None where the pen is not a
/// broken one.
[[nodiscard]] QList<QLineF> dashesAlong(const Trace& line, const QPen& pen);

/// The outline of a dash with round ends, of as many straight edges as the eye can tell at these widths: to fill it
/// takes a quarter of the time that a pen needs.
[[nodiscard]] QPolygonF rounded(const QLineF& dash, double width);

/// How a curve is drawn.
[[nodiscard]] QPen strokeOf(DashboardTexts::LineKey::Line line, const Palette& palette, Tint tint);

/// A vertical or horizontal line's middle so that its edges lie between pixels, as near to the place as can be.
[[nodiscard]] double crisp(double place, double width, double pixelsPerPoint);

[[nodiscard]] inline QPointF at(const Point& point) {
    return {point.x, point.y};
}
[[nodiscard]] inline QRectF in(const Rect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

} // namespace HarrowlaneApp::WeekChart
