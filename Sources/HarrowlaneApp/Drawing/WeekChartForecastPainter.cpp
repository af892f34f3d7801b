#include <algorithm>

#include <QLinearGradient>

#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/WeekChartCanvas.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using Line = DashboardTexts::LineKey::Line;
using Role = Caption::Role;

/// A colour at two opacities, from the upper of two heights to the lower.
struct Fade {
    QColor color;
    double upper = 0.0;
    double lower = 0.0;
};

QBrush gradient(const Fade& fade, double top, double bottom) {
    QLinearGradient made(0.0, top, 0.0, bottom);
    made.setColorAt(0.0, withOpacity(fade.color, fade.upper));
    made.setColorAt(1.0, withOpacity(fade.color, fade.lower));
    return made;
}

void fillFading(const Canvas& canvas, const Trace& area, const Fade& fade) {
    if (area.empty()) return;
    const auto [highest, lowest] = std::ranges::minmax(area, {}, &Point::y);
    canvas.fill(area, gradient(fade, highest.y, lowest.y));
}

void paintCone(const Canvas& canvas) {
    const Layout& layout = canvas.layout;
    const QColor& tint = canvas.palette.*canvas.tint;
    fillFading(canvas, layout.cone, {.color = tint, .upper = 0.30, .lower = 0.04});
    canvas.stroke(layout.likely, strokeOf(Line::forecast, canvas.palette, canvas.tint));
}

void paintUnspent(const Canvas& canvas) {
    const QColor& good = canvas.palette.good;
    const Trace& area = canvas.layout.washArea;
    fillFading(canvas, area, {.color = good, .upper = 0.18, .lower = 0.04});
    if (area.empty()) return;
    Trace edge = area;
    edge.push_back(edge.front());
    canvas.stroke(edge, dashed(withOpacity(good, 0.30), 1.0, {.on = 3.0, .off = 3.0}));
    canvas.write(Role::unspent);
}

void paintOver(const Canvas& canvas) {
    fillFading(canvas, canvas.layout.washArea, {.color = canvas.palette.crit, .upper = 0.34, .lower = 0.10});
    canvas.write(Role::over);
}

void paintWash(const Canvas& canvas) {
    if (!canvas.layout.wash) return;
    return canvas.layout.wash->kind == Wash::Kind::over ? paintOver(canvas) : paintUnspent(canvas);
}

void paintCrossing(const Canvas& canvas) {
    constexpr double diameter = 9.0;
    constexpr double ringWidth = 2.0;
    constexpr double plateRadius = 4.0;
    const Layout& layout = canvas.layout;
    if (!layout.crossing || !layout.crossingCaption) return;
    const QColor& crit = canvas.palette.crit;
    canvas.painter.setPen(QPen(crit, ringWidth));
    canvas.painter.setBrush(canvas.card);
    canvas.painter.drawEllipse(at(layout.crossing->centre), diameter / 2.0, diameter / 2.0);
    const QRectF plate = in(layout.crossingCaption->plate);
    fillRounded(canvas.painter, plate, plateRadius, withOpacity(canvas.card, 0.88));
    canvas.painter.setPen(QPen(withOpacity(crit, 0.40), 1.0));
    canvas.painter.setBrush(Qt::NoBrush);
    canvas.painter.drawRoundedRect(plate, plateRadius, plateRadius);
    canvas.write(layout.crossingCaption->caption);
}

void paintGhost(const Canvas& canvas) {
    const Layout& layout = canvas.layout;
    if (!layout.ghostEnd) return;
    canvas.stroke(layout.ghost, strokeOf(Line::ghost, canvas.palette, canvas.tint));
    constexpr double ring = 1.2; // half of it over the dot
    canvas.dot(
        {.centre = *layout.ghostEnd, .diameter = 5.2 - ring, .ring = ring, .color = canvas.palette.*canvas.tint});
}

Role roleOf(const Readout& readout) {
    switch (readout.role) {
    case Readout::Role::landing: return Role::landing;
    case Readout::Role::typical: return Role::typical;
    case Readout::Role::ghost: break;
    }
    return Role::ghost;
}

/// From the value to its text: level, then a slope to where the text found room, and level again.
Trace tickOf(const Readout& readout, double panelEdge) {
    constexpr double fromPanel = 2.0;
    constexpr double level = 3.0;
    constexpr double slope = 4.0;
    constexpr double end = 2.0;
    const double left = panelEdge + fromPanel;
    return {{.x = left, .y = readout.trueY},
            {.x = left + level, .y = readout.trueY},
            {.x = left + level + slope, .y = readout.y},
            {.x = left + level + slope + end, .y = readout.y}};
}

void paintReadouts(const Canvas& canvas) {
    constexpr double width = 1.2;
    for (const Readout& readout : canvas.layout.readouts) {
        const QColor color = captionColor(roleOf(readout), canvas.palette, canvas.tint, true);
        canvas.stroke(tickOf(readout, canvas.top().right()), solid(color, width));
    }
    for (const Role role : {Role::landing, Role::typical, Role::ghost}) canvas.write(role);
}

} // namespace

void paintForecast(const Canvas& canvas) {
    canvas.stroke(canvas.layout.typical, strokeOf(Line::typical, canvas.palette, canvas.tint));
    paintCone(canvas);
    paintWash(canvas);
    paintCrossing(canvas);
    paintGhost(canvas);
    paintReadouts(canvas);
}

} // namespace HarrowlaneApp::WeekChart
