#pragma once

#include <vector>

#include "HarrowlaneApp/Copy/ChartBucket.h"
#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

namespace HarrowlaneApp::WeekChart {

/// A family's part of a bar.
struct BarSegment {
    ChartBucket bucket = ChartBucket::other;
    Rect rect;
    /// It is the topmost part that is drawn.
    bool hasRoundTop = false;

    friend bool operator==(const BarSegment&, const BarSegment&) = default;
};

/// A session in the bottom panel.
struct Bar {
    /// From the panel's floor to the session's fill, parts and gaps together.
    Rect rect;
    /// From the floor upwards, the largest first; too small ones are left out.
    std::vector<BarSegment> segments;
    bool isCurrent = false;

    friend bool operator==(const Bar&, const Bar&) = default;
};

/// Where a session stands, drawn and pointed at: at least 1.5 wide, and no higher than a full cap where its fill was
/// measured.
[[nodiscard]] Rect barRect(const UsageModel::SessionBar& session, const Geometry& geometry);
/// One bar a session, in their order.
[[nodiscard]] std::vector<Bar> bars(const UsageModel::WeekSeries& series, const Geometry& geometry);
/// The families that have a part in any bar, in the enumeration's order: what a legend has to explain.
[[nodiscard]] std::vector<ChartBucket> drawnBuckets(std::span<const UsageModel::SessionBar> sessions);

/// What the bars' axis is called.
[[nodiscard]] std::string_view barAxisCaption(std::span<const UsageModel::SessionBar> sessions);

} // namespace HarrowlaneApp::WeekChart
