#include "HarrowlaneApp/Drawing/WeekChartCanvas.h"

#include <algorithm>
#include <cmath>

#include <QPainterPath>

namespace HarrowlaneApp::WeekChart {

namespace {

QPolygonF polygon(const Trace& points) {
    QPolygonF made;
    made.reserve(static_cast<qsizetype>(points.size()));
    for (const Point& point : points) made.append(at(point));
    return made;
}

QRectF disc(const Point& centre, double diameter) {
    return {centre.x - diameter / 2.0, centre.y - diameter / 2.0, diameter, diameter};
}

bool isWhole(double pixels) {
    return pixels == std::round(pixels);
}

} // namespace

void Canvas::stroke(const Trace& line, const QPen& pen) const {
    if (line.size() < 2) return;
    if (pen.capStyle() == Qt::RoundCap && pen.style() == Qt::CustomDashLine) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(pen.color());
        for (const QLineF& dash : dashesAlong(line, pen)) painter.drawConvexPolygon(rounded(dash, pen.widthF()));
        return;
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.drawPolyline(polygon(line));
}

void Canvas::fill(const Trace& area, const QBrush& brush) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawPolygon(polygon(area));
}

void Canvas::fillCrisp(const QRectF& rect, const QColor& color) const {
    // Qt shares out more rows among threads, and waits for these longer than it would paint.
    constexpr double rowsAtOnce = 64.0;
    const double strip = rowsAtOnce / layout.pixelsPerPoint;
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (QRectF rest = rect; rest.height() > 0.0; rest.setTop(rest.top() + strip))
        painter.fillRect(QRectF(rest.topLeft(), QSizeF(rest.width(), std::min(strip, rest.height()))), color);
    painter.setRenderHint(QPainter::Antialiasing);
}

void Canvas::vertical(double x, double from, double to, const QPen& pen) const {
    const double width = pen.widthF();
    const double middle = crisp(x, width, layout.pixelsPerPoint);
    // The same pixels as the pen's, sooner.
    if (pen.style() == Qt::SolidLine && isWhole(width * layout.pixelsPerPoint))
        return fillCrisp({middle - width / 2.0, from, width, to - from}, pen.color());
    painter.setPen(pen);
    painter.drawLine(QPointF(middle, from), QPointF(middle, to));
}

void Canvas::horizontal(double y, double from, double to, const QPen& pen) const {
    const double middle = crisp(y, pen.widthF(), layout.pixelsPerPoint);
    painter.setPen(pen);
    painter.drawLine(QPointF(from, middle), QPointF(to, middle));
}

void Canvas::throughPanels(double x, const QPen& pen) const {
    vertical(x, top().y, top().bottom(), pen);
    vertical(x, bottom().y, bottom().bottom(), pen);
}

void Canvas::dot(const Dot& dot) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(card);
    painter.drawEllipse(disc(dot.centre, dot.diameter + 2.0 * dot.ring));
    painter.setBrush(dot.color);
    painter.drawEllipse(disc(dot.centre, dot.diameter));
}

void Canvas::write(const Caption& caption) const {
    painter.setPen(captionColor(caption.role, palette, tint, layout.reference.isLimit));
    caption.font.draw(painter, at(caption.start), caption.text);
}

void Canvas::write(Caption::Role role) const {
    for (const Caption& caption : layout.captions) {
        if (caption.role == role) write(caption);
    }
}

} // namespace HarrowlaneApp::WeekChart
