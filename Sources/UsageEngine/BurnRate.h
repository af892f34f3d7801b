#pragma once

#include "UsageEngine/WeighedTurns.h"

namespace UsageEngine::BurnRate {

struct RecentQuestion {
    WeighedTurns turns;
    UsageModel::Date now;
    /// How far to look back; must be above 0.
    double windowSeconds = 0.0;
};

/// Log units per second over the last stretch, both of its ends included.
[[nodiscard]] double recent(const RecentQuestion& question);

} // namespace UsageEngine::BurnRate
