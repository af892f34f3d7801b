#pragma once

#include <optional>
#include <span>
#include <vector>

#include "UsageModel/CategoryWeights.h"
#include "UsageModel/Date.h"
#include "UsageModel/EffortLevel.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/UsageEvent.h"

namespace UsageEngine {

/// A turn as the engine sees it. What it weighs is computed once, for all that is asked about it.
struct WeighedTurn {
    UsageModel::Date ts;
    /// Log units; negative in a damaged log.
    double weight = 0.0;
    UsageModel::ModelClass modelClass = UsageModel::ModelClass::other;
    std::optional<UsageModel::EffortLevel> effort;

    friend bool operator==(const WeighedTurn&, const WeighedTurn&) = default;
};

/// Turns in any order; what it refers to must outlive it.
using WeighedTurns = std::span<const WeighedTurn>;

/// The turns in the order of the events.
[[nodiscard]] std::vector<WeighedTurn> weigh(std::span<const UsageModel::UsageEvent> events,
                                             const UsageModel::CategoryWeights& weights);

/// The turns by time; those of one instant keep their order.
[[nodiscard]] std::vector<WeighedTurn> byTime(std::vector<WeighedTurn> turns);

/// Which turns count against a limit.
struct TurnFilter {
    /// Only classes that count against the weekly Opus limit.
    bool opusOnly = false;
    /// Only classes of one bucket.
    std::optional<UsageModel::ModelBucket> bucket;

    [[nodiscard]] bool admits(const WeighedTurn& turn) const;
};

/// From an instant on, up to but not including another.
struct TimeSpan {
    UsageModel::Date from;
    UsageModel::Date to;

    [[nodiscard]] bool contains(UsageModel::Date date) const { return date >= from && date < to; }
};

} // namespace UsageEngine
