#include "HarrowlaneApp/Copy/WeekChartCurves.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace HarrowlaneApp::WeekChart {

namespace {

// In pixels: smoothing shows a shift of a tenth as a shade or two.
constexpr double invisible = 0.1;

/// The lowest and the highest of some points, in their order; of points of one height the outermost.
void keepExtremes(Trace& kept, std::span<const Point> column) {
    const auto [highest, lowest] = std::ranges::minmax_element(column, {}, &Point::y);
    kept.push_back(*std::min(highest, lowest));
    if (highest != lowest) kept.push_back(*std::max(highest, lowest));
}

Trace thinned(const Trace& points, double pixelsPerPoint) {
    const auto column = [&](const Point& point) { return std::floor(point.x * pixelsPerPoint); };
    Trace kept;
    for (auto from = points.begin(); from != points.end();) {
        const auto to =
            std::find_if(from + 1, points.end(), [&](const Point& p) { return column(p) != column(*from); });
        keepExtremes(kept, {from, to});
        from = to;
    }
    return kept;
}

/// The slopes under which a point may be passed, seen from another one left of it.
struct Slopes {
    double least = -std::numeric_limits<double>::infinity();
    double most = std::numeric_limits<double>::infinity();

    [[nodiscard]] bool hold(double slope) const { return slope >= least && slope <= most; }
    void narrow(const Point& from, const Point& to, double tolerance) {
        least = std::max(least, (to.y - tolerance - from.y) / (to.x - from.x));
        most = std::min(most, (to.y + tolerance - from.y) / (to.x - from.x));
    }
};

/// Without the points that a straight line passes within the tolerance.
Trace straightened(const Trace& points, double tolerance) {
    if (points.empty()) return {};
    Trace kept{points.front()};
    Slopes slopes;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double slope = (points[i].y - kept.back().y) / (points[i].x - kept.back().x);
        // A slope that is no number is that of two points in one place.
        if (i > 1 && !slopes.hold(slope)) {
            kept.push_back(points[i - 1]);
            slopes = {};
        }
        slopes.narrow(kept.back(), points[i], tolerance);
    }
    if (points.size() > 1) kept.push_back(points.back());
    return kept;
}

/// Where the way from one point to the next meets a level, if they lie on different sides of it.
void addMeeting(Trace& line, const Point& from, const Point& to, double level) {
    if ((from.y - level) * (to.y - level) >= 0.0) return;
    const double share = (level - from.y) / (to.y - from.y);
    line.push_back({.x = from.x + share * (to.x - from.x), .y = level});
}

} // namespace

Trace trace(std::span<const UsageModel::SeriesPoint> curve, const Plot& plot, double pixelsPerPoint) {
    Trace points;
    points.reserve(curve.size());
    for (const auto& point : curve) points.push_back({.x = plot.x(point.t), .y = plot.heldY(point.used)});
    return straightened(thinned(points, pixelsPerPoint), invisible / pixelsPerPoint);
}

Trace areaTo(double level, const Trace& line) {
    if (line.empty()) return {};
    Trace area = line;
    area.push_back({.x = line.back().x, .y = level});
    area.push_back({.x = line.front().x, .y = level});
    return area;
}

Trace areaBetween(const Trace& upper, const Trace& lower) {
    if (upper.empty() || lower.empty()) return {};
    Trace area = upper;
    area.insert(area.end(), lower.rbegin(), lower.rend());
    return area;
}

Trace washArea(const Wash& wash, const Trace& likely) {
    const bool isOver = wash.kind == Wash::Kind::over;
    Trace line;
    for (std::size_t i = 0; i < likely.size(); ++i) {
        if (i > 0) addMeeting(line, likely[i - 1], likely[i], wash.limitY);
        const double y = likely[i].y;
        line.push_back({.x = likely[i].x, .y = isOver ? std::min(y, wash.limitY) : std::max(y, wash.limitY)});
    }
    return areaTo(wash.limitY, line);
}

} // namespace HarrowlaneApp::WeekChart
