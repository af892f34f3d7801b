#pragma once

#include "HarrowlaneApp/Samples/PreviewData.h"
#include "UsageModel/UsageSnapshot.h"

/// What a popover may have to show, in UTC, on a Thursday at 2:15 PM.
namespace ViewTests {

inline constexpr UsageModel::Date thursday{1772720100};

/// The sample: a week over its pace.
inline UsageModel::UsageSnapshot overPace() {
    return HarrowlaneApp::PreviewData::overPace(thursday);
}

/// The same week with every level lowered to a share of what it was.
inline void lower(UsageModel::WeekSeries& week, double share) {
    week.usedNow *= share;
    week.coneLikelyEnd.used *= share;
    for (auto* curve : {&week.actual, &week.forecastLikely, &week.forecastHigh, &week.forecastLow}) {
        for (auto& point : *curve) point.used *= share;
    }
    week.crossing.reset();
}

/// A week that lands at some 78 percent, with advice to use the room.
inline UsageModel::UsageSnapshot calm() {
    UsageModel::UsageSnapshot snapshot = overPace();
    for (auto& meter : snapshot.meters) meter.used *= 0.55;
    lower(*snapshot.weekSeries, 0.74);
    snapshot.recommendation = {.kind = UsageModel::Recommendation::Kind::spendMore,
                               .title = "Room to raise effort to X-High",
                               .detail = "You're on Opus at high effort. This week lands at 78% at this pace; this "
                                         "takes it to about 83% — and every other window stays inside too.",
                               .impact = "uses the room you have",
                               .command = "/effort xhigh"};
    return snapshot;
}

/// A week without a gauge: all is estimated, and measured by a typical week.
inline UsageModel::UsageSnapshot estimated() {
    UsageModel::UsageSnapshot snapshot = overPace();
    for (auto& meter : snapshot.meters) meter.confidence.anchored = false;
    snapshot.weekSeries->scale = UsageModel::SeriesScale::typicalWeeks;
    snapshot.weekSeries->limitLevel.reset();
    snapshot.weekSeries->boundaryEstimated = true;
    snapshot.recommendation.reset();
    return snapshot;
}

} // namespace ViewTests
