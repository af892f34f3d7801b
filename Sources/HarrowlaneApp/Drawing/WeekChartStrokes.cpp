#include "HarrowlaneApp/Drawing/WeekChartStrokes.h"

#include <algorithm>
#include <cmath>

namespace HarrowlaneApp::WeekChart {

namespace {

// On white the violet stands out more than on black.
double typicalOpacity(const Palette& palette) {
    return palette.appearance == Appearance::dark ? 0.72 : 0.68;
}

QPen broken(const QColor& color, double width, const Dash& dash) {
    QPen pen(color, width);
    pen.setDashPattern({dash.on / width, dash.off / width}); // a pen counts in its own widths
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

} // namespace

QPen solid(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin};
}

QPen dashed(const QColor& color, double width, const Dash& dash) {
    QPen pen = broken(color, width, dash);
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

QPen dotted(const QColor& color, double width, const Dash& dash) {
    QPen pen = broken(color, width, dash);
    pen.setCapStyle(Qt::RoundCap);
    return pen;
}

QPen strokeOf(DashboardTexts::LineKey::Line line, const Palette& palette, Tint tint) {
    using Line = DashboardTexts::LineKey::Line;
    switch (line) {
    case Line::burned: return {palette.ink, 2.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
    case Line::forecast: return dashed(palette.*tint, 1.8, {.on = 5.0, .off = 3.5});
    case Line::typical:
        return dotted(withOpacity(palette.violet, typicalOpacity(palette)), 1.5, {.on = 2.0, .off = 3.5});
    case Line::ghost: break;
    }
    return dotted(withOpacity(palette.*tint, 0.75), 1.8, {.on = 0.1, .off = 4.2});
}

double crisp(double place, double width, double pixelsPerPoint) {
    // A line thinner than a pixel still takes one.
    const double pixels = std::max(std::round(width * pixelsPerPoint), 1.0);
    return (std::round(place * pixelsPerPoint - pixels / 2.0) + pixels / 2.0) / pixelsPerPoint;
}

} // namespace HarrowlaneApp::WeekChart
