#include "HarrowlaneApp/Drawing/WeekMiniChartPainter.h"

#include <span>

#include <QLinearGradient>
#include <QPainter>
#include <QPolygonF>

#include "HarrowlaneApp/Copy/WeekChartCurves.h"
#include "HarrowlaneApp/Copy/WeekMiniChart.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/HUDType.h"
#include "HarrowlaneApp/Drawing/WeekChartStrokes.h"

namespace HarrowlaneApp::WeekMiniChart {

namespace {

using WeekChart::Trace;

constexpr double lineWidth = 1.8;
constexpr double landingGap = 7.0;
constexpr WeekChart::Dash dash{.on = 4.0, .off = 3.0};

/// What every part of the chart is drawn with, in points from the chart's own corner on.
struct Canvas {
    QPainter& painter;
    const Picture& picture;
    const Look& look;
    Layout layout;
    double pixelsPerPoint = 1.0;

    [[nodiscard]] Trace trace(std::span<const UsageModel::SeriesPoint> curve) const {
        return WeekChart::trace(curve, layout.plot, pixelsPerPoint);
    }
};

QPolygonF polygon(const Trace& trace) {
    QPolygonF made;
    for (const Point& point : trace) made << WeekChart::at(point);
    return made;
}

void paintLevel(const Canvas& canvas, double y, const QPen& pen) {
    const Rect& panel = canvas.layout.plot.panel;
    const double middle = WeekChart::crisp(y, 1.0, canvas.pixelsPerPoint);
    canvas.painter.setPen(pen);
    canvas.painter.drawLine(QPointF(panel.x, middle), QPointF(panel.right(), middle));
}

/// How strongly the tint shows at the top of an area, and at its bottom.
struct Fading {
    double top = 0.0;
    double bottom = 0.0;
};

void fillArea(const Canvas& canvas, const Trace& area, const Fading& opacity) {
    if (area.empty()) return;
    const QPolygonF shape = polygon(area);
    const QRectF bounds = shape.boundingRect();
    QLinearGradient gradient(bounds.topLeft(), bounds.bottomLeft());
    gradient.setColorAt(0.0, withOpacity(canvas.picture.tint, opacity.top));
    gradient.setColorAt(1.0, withOpacity(canvas.picture.tint, opacity.bottom));
    canvas.painter.setPen(Qt::NoPen);
    canvas.painter.setBrush(gradient);
    canvas.painter.drawPolygon(shape);
    canvas.painter.setBrush(Qt::NoBrush);
}

void paintLimits(const Canvas& canvas) {
    const Palette& palette = canvas.look.palette();
    paintLevel(canvas, canvas.layout.plot.panel.bottom(), QPen(withOpacity(palette.ink, 0.14), 1.0));
    if (canvas.layout.limitY)
        paintLevel(canvas, *canvas.layout.limitY, WeekChart::dashed(withOpacity(palette.dim, 0.90), 1.0, dash));
}

void paintForecast(const Canvas& canvas) {
    const UsageModel::WeekSeries& series = canvas.picture.series;
    const Trace cone = WeekChart::areaBetween(canvas.trace(series.forecastHigh), canvas.trace(series.forecastLow));
    fillArea(canvas, cone, {.top = 0.16, .bottom = 0.02});
    canvas.painter.setPen(WeekChart::dashed(canvas.picture.tint, lineWidth, dash));
    canvas.painter.drawPolyline(polygon(canvas.trace(series.forecastLikely)));
}

void paintBurned(const Canvas& canvas) {
    const Trace line = canvas.trace(canvas.picture.series.actual);
    fillArea(canvas, WeekChart::areaTo(canvas.layout.plot.panel.bottom(), line), {.top = 0.32, .bottom = 0.04});
    canvas.painter.setPen(QPen(canvas.picture.tint, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    canvas.painter.drawPolyline(polygon(line));
}

void paintNow(const Canvas& canvas) {
    constexpr double radius = 2.5;
    constexpr double ring = 1.5;
    const QPointF middle = WeekChart::at(canvas.layout.now);
    canvas.painter.setPen(Qt::NoPen);
    canvas.painter.setBrush(HUDPanel{}.surface(canvas.look).fill);
    canvas.painter.drawEllipse(middle, radius + ring, radius + ring);
    canvas.painter.setBrush(canvas.look.palette().ink);
    canvas.painter.drawEllipse(middle, radius, radius);
}

void paintLanding(const Canvas& canvas) {
    constexpr double lineHeight = 12.0;
    const HUDFont font = HUDType::display(9.5);
    const LineBox box{.left = canvas.layout.plot.panel.right() + landingGap,
                      .top = canvas.layout.landingY - lineHeight / 2.0,
                      .height = lineHeight};
    canvas.painter.setPen(canvas.picture.tint);
    font.draw(canvas.painter, box, font.elided(QString::fromStdString(canvas.layout.landingText), padR - landingGap));
}

} // namespace

void paint(QPainter& painter, const Picture& picture, const Look& look) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(picture.place.topLeft());
    const Canvas canvas{
        .painter = painter,
        .picture = picture,
        .look = look,
        .layout = layOut(picture.series, {.width = picture.place.width(), .height = picture.place.height()}),
        .pixelsPerPoint = painter.deviceTransform().m11(),
    };
    paintLimits(canvas);
    paintForecast(canvas);
    paintBurned(canvas);
    paintNow(canvas);
    paintLanding(canvas);
    painter.restore();
}

} // namespace HarrowlaneApp::WeekMiniChart
