#pragma once

#include <algorithm>
#include <cstdint>
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
    /// The turn's place among the events it was made from.
    std::uint32_t event = 0;
    UsageModel::ModelClass modelClass = UsageModel::ModelClass::other;
    std::optional<UsageModel::EffortLevel> effort;

    friend bool operator==(const WeighedTurn&, const WeighedTurn&) = default;
};

static_assert(sizeof(WeighedTurn) <= 24, "each pass over a million turns reads them all: keep one small");

/// Turns by time, as `weigh` gives them; what it refers to must outlive it.
using WeighedTurns = std::span<const WeighedTurn>;

/// From an instant on, up to but not including another.
struct TimeSpan {
    UsageModel::Date from;
    UsageModel::Date to;

    [[nodiscard]] bool contains(UsageModel::Date date) const { return date >= from && date < to; }
    /// A walk's step from `at` on to `next`, which ends with the span. Straight to the end where `next` does not lie
    /// ahead: on a clock set back across midnight, and so far from 1970 that no date is an hour from another.
    [[nodiscard]] UsageModel::Date step(UsageModel::Date at, UsageModel::Date next) const {
        return next > at ? std::min(next, to) : to;
    }
};

/// The turns of the events by time; those of one instant keep their order. At most 2^32 events, none at an instant
/// that is not a number.
[[nodiscard]] std::vector<WeighedTurn> weigh(std::span<const UsageModel::UsageEvent> events,
                                             const UsageModel::CategoryWeights& weights);

/// The turns in a span, found by halving.
[[nodiscard]] WeighedTurns within(WeighedTurns turns, const TimeSpan& span);
/// Those from its first instant to its last, the last included.
[[nodiscard]] WeighedTurns withinClosed(WeighedTurns turns, const TimeSpan& span);

/// Which turns count against a limit.
struct TurnFilter {
    /// Only classes that count against the weekly Opus limit.
    bool opusOnly = false;
    /// Only classes of one bucket.
    std::optional<UsageModel::ModelBucket> bucket;

    [[nodiscard]] bool admits(const WeighedTurn& turn) const {
        const bool isOpus = !opusOnly || UsageModel::isOpusClass(turn.modelClass);
        return isOpus && (!bucket || UsageModel::bucket(turn.modelClass) == *bucket);
    }
};

/// What a turn adds to a sum: its weight where it counts, else 0. Classes alternate without a pattern that a processor
/// could guess; a zero is cheaper than a wrong guess.
[[nodiscard]] inline double countedWeight(const WeighedTurn& turn, const TurnFilter& filter) {
    return filter.admits(turn) ? turn.weight : 0.0;
}

/// The weights of the turns that count, added by time.
[[nodiscard]] double sumOf(WeighedTurns turns, const TurnFilter& filter = {});

} // namespace UsageEngine
