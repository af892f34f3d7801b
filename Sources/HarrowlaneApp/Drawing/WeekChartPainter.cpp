#include "HarrowlaneApp/Drawing/WeekChartPainter.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

#include "HarrowlaneApp/Drawing/BucketColors.h"
#include "HarrowlaneApp/Drawing/HUDPanel.h"
#include "HarrowlaneApp/Drawing/WeekChartCanvas.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using Line = DashboardTexts::LineKey::Line;
using Role = Caption::Role;

// A ring runs along its dot's edge, half of its width on either side: the present's lies below its dot of 8, that of
// the pointer above its dot of 7.
constexpr double nowDotDiameter = 8.0;
constexpr double nowDotRing = 2.0 / 2.0;
constexpr double outlineAround = 2.0;
constexpr double hoverOutlineAround = 2.5;
constexpr double hoverDotRing = 1.5;
constexpr double hoverDotDiameter = 7.0 - hoverDotRing;

void paintDayGrid(const Canvas& canvas) {
    // Days that cannot be told apart are not drawn: years of them would be a grey wash, and take minutes.
    constexpr double narrowestDay = 3.0;
    if (static_cast<double>(canvas.layout.days.size()) * narrowestDay > canvas.top().width) return;
    for (const DayColumn& day : canvas.layout.days) {
        if (!day.isWeekend) continue;
        canvas.fillCrisp({QPointF(day.left, canvas.top().y), QPointF(day.right, canvas.bottom().bottom())},
                         canvas.ink(0.028));
    }
    for (const DayColumn& day : canvas.layout.days) {
        if (day.hasLine) canvas.throughPanels(day.left, solid(canvas.ink(0.14), 1.0));
    }
    canvas.write(Role::day);
}

void paintTopAxis(const Canvas& canvas) {
    const Rect& panel = canvas.top();
    const ReferenceLine& line = canvas.layout.reference;
    canvas.write(Role::tick);
    canvas.horizontal(panel.bottom(), panel.x, panel.right(), solid(canvas.ink(0.14), 1.0));
    const QColor color = captionColor(Role::reference, canvas.palette, canvas.tint, line.isLimit);
    canvas.horizontal(line.y, panel.x, panel.right(), dashed(color, 1.4, {.on = 6.0, .off = 4.0}));
    canvas.write(Role::reference);
}

/// With round upper corners.
QPainterPath topOf(const QRectF& rect) {
    constexpr double cornerRadius = 3.0;
    const double radius = std::min({cornerRadius, rect.width() / 2.0, rect.height()});
    const QSizeF corner(2.0 * radius, 2.0 * radius);
    QPainterPath path(rect.bottomLeft());
    path.arcTo(QRectF(rect.topLeft(), corner), 180.0, -90.0);
    path.arcTo(QRectF(QPointF(rect.right() - corner.width(), rect.top()), corner), 90.0, -90.0);
    path.lineTo(rect.bottomRight());
    return path;
}

void paintSegment(const Canvas& canvas, const BarSegment& segment) {
    const QColor& color = bucketColor(segment.bucket, canvas.palette.appearance);
    if (segment.hasRoundTop) return canvas.painter.fillPath(topOf(in(segment.rect)), color);
    canvas.painter.fillRect(in(segment.rect), color);
}

void paintBar(const Canvas& canvas, const Bar& bar) {
    for (const BarSegment& segment : bar.segments) paintSegment(canvas, segment);
    if (!bar.isCurrent) return;
    canvas.painter.setPen(dashed(canvas.ink(0.4), 1.1, {.on = 3.0, .off = 3.0}));
    canvas.painter.setBrush(Qt::NoBrush);
    const QRectF around = in(bar.rect).adjusted(-outlineAround, -outlineAround, outlineAround, 0.0);
    canvas.painter.drawRoundedRect(around, outlineAround, outlineAround);
}

void paintSessionBars(const Canvas& canvas) {
    const Rect& panel = canvas.bottom();
    canvas.horizontal(panel.bottom(), panel.x, panel.right(), solid(canvas.ink(0.22), 1.0));
    if (canvas.layout.fullCap) {
        const QPen guide = dashed(canvas.ink(0.10), 1.0, {.on = 4.0, .off = 4.0});
        canvas.horizontal(*canvas.layout.fullCap, panel.x, panel.right(), guide);
    }
    canvas.write(Role::barAxis);
    for (const Bar& bar : canvas.layout.bars) paintBar(canvas, bar);
}

void paintBurned(const Canvas& canvas) {
    const Layout& layout = canvas.layout;
    canvas.fill(layout.burnedArea, canvas.ink(0.06));
    canvas.stroke(layout.burned, strokeOf(Line::burned, canvas.palette, canvas.tint));
    canvas.dot({.centre = layout.now, .diameter = nowDotDiameter, .ring = nowDotRing, .color = canvas.palette.ink});
}

/// A piece of a vertical line.
struct Piece {
    double from = 0.0;
    double to = 0.0;
};

/// Where the line of the present would spoil what it crosses: the ring that sets the dot off, and the caption of the
/// crossing. From the top down.
std::vector<Piece> leftOut(const Layout& layout) {
    constexpr double reach = nowDotDiameter / 2.0 + nowDotRing;
    std::vector<Piece> pieces{{.from = layout.now.y - reach, .to = layout.now.y + reach}};
    if (layout.crossingCaption) {
        const Rect& plate = layout.crossingCaption->plate;
        if (layout.now.x >= plate.x && layout.now.x <= plate.right())
            pieces.push_back({.from = plate.y, .to = plate.bottom()});
    }
    std::ranges::sort(pieces, {}, &Piece::from);
    return pieces;
}

void paintNow(const Canvas& canvas) {
    const Layout& layout = canvas.layout;
    const QPen pen = solid(canvas.ink(0.5), 1.2);
    double from = canvas.top().y;
    for (const Piece& piece : leftOut(layout)) {
        if (piece.from > from) canvas.vertical(layout.now.x, from, piece.from, pen);
        from = std::max(from, piece.to);
    }
    if (from < canvas.top().bottom()) canvas.vertical(layout.now.x, from, canvas.top().bottom(), pen);
    canvas.vertical(layout.now.x, canvas.bottom().y, canvas.bottom().bottom(), pen);
}

void paintNowAndReset(const Canvas& canvas) {
    paintNow(canvas);
    canvas.throughPanels(canvas.top().right(), dashed(canvas.ink(0.35), 1.0, {.on = 3.0, .off = 3.0}));
    canvas.write(Role::now);
    canvas.write(Role::reset);
}

Canvas canvasOf(QPainter& painter, const Layout& layout, const Look& look, Tint tint) {
    return {.painter = painter,
            .layout = layout,
            .palette = look.palette(),
            .card = HUDPanel{}.surface(look).fill,
            .tint = tint};
}

} // namespace

void paint(QPainter& painter, const Layout& layout, const Look& look, Tint tint) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const Canvas canvas = canvasOf(painter, layout, look, tint);
    paintDayGrid(canvas);
    paintTopAxis(canvas);
    paintSessionBars(canvas);
    paintForecast(canvas);
    paintBurned(canvas);
    paintNowAndReset(canvas);
    painter.restore();
}

Hover hoverOf(const HoverTarget& target, const UsageModel::WeekSeries& series, const Geometry& geometry) {
    const auto* place = std::get_if<CurvePlace>(&target);
    return {.mark = hoverMark(target, series, geometry), .isForecast = place != nullptr && place->at > series.now};
}

void paint(QPainter& painter, const Hover& hover, const Layout& layout, const Look& look, Tint tint) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const Canvas canvas = canvasOf(painter, layout, look, tint);
    canvas.throughPanels(hover.mark.hairline, dashed(canvas.ink(0.28), 1.0, {.on = 3.0, .off = 3.0}));
    if (hover.mark.dot) {
        const QColor& color = hover.isForecast ? canvas.palette.*tint : canvas.palette.ink;
        canvas.dot({.centre = *hover.mark.dot, .diameter = hoverDotDiameter, .ring = hoverDotRing, .color = color});
    }
    if (hover.mark.outline) {
        constexpr double around = hoverOutlineAround;
        painter.setPen(QPen(canvas.ink(0.55), 1.2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(in(*hover.mark.outline).adjusted(-around, -around, around, around), 4.0, 4.0);
    }
    painter.restore();
}

QRectF extent(const Hover& hover, const Geometry& geometry) {
    // The widest of the marks, and a little for what smoothing adds.
    constexpr double around = hoverDotDiameter / 2.0 + hoverDotRing + 1.0;
    const double top = geometry.top.panel.y;
    QRectF all(hover.mark.hairline - around, top - around, 2.0 * around,
               geometry.bottom.panel.bottom() - top + 2.0 * around);
    if (hover.mark.outline) all |= in(*hover.mark.outline).adjusted(-around, -around, around, around);
    return all;
}

} // namespace HarrowlaneApp::WeekChart
