#include "HarrowlaneApp/Copy/WeekChartBars.h"

#include <algorithm>

namespace HarrowlaneApp::WeekChart {

namespace {

using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;

/// A measured session cannot have gone beyond its cap, whatever the figures say.
double drawnFill(const SessionBar& session) {
    const bool isMeasured =
        session.capBasis == SessionCapBasis::ownCeiling || session.capBasis == SessionCapBasis::liveGauge;
    return isMeasured ? std::min(session.fillFraction, 1.0) : session.fillFraction;
}

/// The parts that are worth drawing, the largest first.
std::vector<BucketShare> stackOf(const SessionBar& session, double axisTop) {
    constexpr double leastOfAxis = 0.002;
    const double fill = drawnFill(session);
    std::vector<BucketShare> stack;
    for (const BucketShare& part : largestFirst(chartBucketed(session.byModelClass))) {
        if (part.share * fill >= axisTop * leastOfAxis) stack.push_back(part);
    }
    return stack;
}

std::vector<BarSegment> segmentsOf(const SessionBar& session, const Geometry& geometry) {
    constexpr double gap = 1.5;
    constexpr double leastHeight = 0.6;
    const Rect whole = barRect(session, geometry);
    const double fill = drawnFill(session);
    std::vector<BarSegment> segments;
    double base = 0.0;
    for (const BucketShare& part : stackOf(session, geometry.bottom.axisTop)) {
        const double floor = geometry.botY(base) - (base > 0 ? gap : 0.0);
        base += part.share * fill;
        const double top = geometry.botY(base);
        if (!(floor - top > leastHeight)) continue;
        segments.push_back(
            {.bucket = part.bucket, .rect = {.x = whole.x, .y = top, .width = whole.width, .height = floor - top}});
    }
    if (!segments.empty()) segments.back().hasRoundTop = true;
    return segments;
}

} // namespace

Rect barRect(const SessionBar& session, const Geometry& geometry) {
    constexpr double leastWidth = 1.5;
    const double x = geometry.x(session.start);
    const double top = geometry.botY(drawnFill(session));
    return {
        .x = x,
        .y = top,
        .width = std::max(geometry.x(session.end) - x, leastWidth),
        .height = geometry.bottom.panel.bottom() - top,
    };
}

std::vector<Bar> bars(const WeekSeries& series, const Geometry& geometry) {
    std::vector<Bar> bars;
    for (const SessionBar& session : series.sessions) {
        bars.push_back({.rect = barRect(session, geometry),
                        .segments = segmentsOf(session, geometry),
                        .isCurrent = session.isCurrent});
    }
    return bars;
}

std::vector<ChartBucket> drawnBuckets(std::span<const SessionBar> sessions) {
    const double axisTop = barAxisTop(sessions);
    std::array<bool, UsageModel::caseCount<ChartBucket>> isDrawn{};
    for (const SessionBar& session : sessions) {
        for (const BucketShare& part : stackOf(session, axisTop)) isDrawn[UsageModel::caseIndex(part.bucket)] = true;
    }
    std::vector<ChartBucket> drawn;
    std::ranges::copy_if(UsageModel::allCases<ChartBucket>, std::back_inserter(drawn),
                         [&](ChartBucket bucket) { return isDrawn[UsageModel::caseIndex(bucket)]; });
    return drawn;
}

std::string_view barAxisCaption(std::span<const SessionBar> sessions) {
    return anyCalibrated(sessions) ? "5h cap" : "relative";
}

} // namespace HarrowlaneApp::WeekChart
