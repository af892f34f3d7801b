#pragma once

#include <optional>
#include <span>

#include "UsageModel/Anchor.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/CategoryWeights.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/UsageEvent.h"
#include "UsageModel/UsageSnapshot.h"

namespace UsageEngine {

struct SnapshotInput {
    /// All that are recorded, in any order; by time is fastest. At most 2^32.
    std::span<const UsageModel::UsageEvent> events;
    std::span<const UsageModel::Anchor> anchors;
    /// The reading in force, however old.
    std::optional<UsageModel::GaugeReading> gauge;
    UsageModel::Date now;
    UsageModel::IngestProgress ingest;
    /// The `sessionCapInLogUnits` of an earlier snapshot, for when nothing else tells the cap.
    std::optional<double> heldSessionCap;
};

/// The engine's one door: everything that the user is told is drawn from its snapshots. A value without state; safe on
/// any thread.
struct Aggregator {
    UsageModel::CategoryWeights weights = UsageModel::CategoryWeights::priors(UsageModel::liveWeightScale);
    UsageModel::Calendar calendar = UsageModel::Calendar::utc();

    /// Never fails; the same input gives the same snapshot. Nothing in it is NaN or infinite for input that is finite.
    /// A window is in force where the gauge knows it; without a gauge all are.
    [[nodiscard]] UsageModel::UsageSnapshot snapshot(const SnapshotInput& input) const;
};

} // namespace UsageEngine
