#pragma once

#include <optional>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/WeekSeries.h"

namespace UsageEngine {

struct WeeklyNormQuestion {
    WeighedTurns turns;
    /// The beginning of the current window.
    UsageModel::Date windowStart;
    /// The length of a window in seconds.
    double span = 0.0;
    UsageModel::Date now;
    /// How many windows to look back.
    int lookback = 0;
    TurnFilter filter;
    /// A window that begins before it is not wholly known and counts for nothing.
    std::optional<UsageModel::Date> earliestEvent;
};

/// How much one window usually totals, and how far windows stray from that: from the past windows in which anything was
/// used; without any, from what the current one has used so far. Empty without a span or a look back.
[[nodiscard]] UsageModel::WeeklyNorm learnWeeklyNorm(const WeeklyNormQuestion& question);

} // namespace UsageEngine
