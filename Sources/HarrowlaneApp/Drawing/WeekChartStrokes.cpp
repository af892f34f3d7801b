#include "HarrowlaneApp/Drawing/WeekChartStrokes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace HarrowlaneApp::WeekChart {

namespace {

// On white the violet stands out more than on black.
double typicalOpacity(const Palette& palette) {
    return palette.appearance == Appearance::dark ? 0.72 : 0.68;
}

/// Walks along a line, a length at a time.
class Walk {
public:
    explicit Walk(const Trace& line) : line_(line) {}

    /// Absent behind the line's end.
    [[nodiscard]] std::optional<QPointF> place() const {
        if (next_ >= line_.size()) return std::nullopt;
        return leg().pointAt(legLength() > 0.0 ? gone_ / legLength() : 0.0);
    }

    void go(double length) {
        gone_ += length;
        while (next_ < line_.size() && gone_ > legLength()) {
            gone_ -= legLength();
            ++next_;
        }
    }

private:
    [[nodiscard]] QLineF leg() const { return {at(line_[next_ - 1]), at(line_[next_])}; }
    [[nodiscard]] double legLength() const { return leg().length(); }

    const Trace& line_;
    std::size_t next_ = 1;
    double gone_ = 0.0;
};

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

QList<QLineF> dashesAlong(const Trace& line, const QPen& pen) {
    const QList<qreal> pattern = pen.dashPattern();
    if (pattern.size() != 2 || line.size() < 2) return {};
    QList<QLineF> dashes;
    Walk walk(line);
    for (auto begin = walk.place(); begin; begin = walk.place()) {
        walk.go(pattern[0] * pen.widthF());
        dashes.append({*begin, walk.place().value_or(at(line.back()))});
        walk.go(pattern[1] * pen.widthF());
    }
    return dashes;
}

QPolygonF rounded(const QLineF& dash, double width) {
    constexpr int edgesOfAnEnd = 4;
    const double across = std::atan2(dash.dy(), dash.dx()) + std::numbers::pi / 2.0;
    QPolygonF outline;
    outline.reserve(2 * (edgesOfAnEnd + 1));
    for (const double end : {0.0, 1.0}) {
        for (int corner = 0; corner <= edgesOfAnEnd; ++corner) {
            const double angle = across + std::numbers::pi * (end + static_cast<double>(corner) / edgesOfAnEnd);
            outline.append(dash.pointAt(end) + width / 2.0 * QPointF(std::cos(angle), std::sin(angle)));
        }
    }
    return outline;
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
