#pragma once

#include <span>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/LiveModel.h"

namespace UsageEngine {

struct LiveModelQuestion {
    std::span<const UsageModel::UsageEvent> events;
    /// Those of the events.
    WeighedTurns turns;
    const UsageModel::CategoryWeights& weights;
    UsageModel::Date now;
    /// Seconds.
    double lookback = UsageModel::LiveModel::defaultLookback;
};

/// What has been running since `lookback` ago, that instant not included, up to now. Of each session its latest class,
/// and the latest effort that it declared; of the sessions the latest first. Turns that weigh nothing together make no
/// session, but are counted.
[[nodiscard]] UsageModel::LiveModel readLiveModel(const LiveModelQuestion& question);

} // namespace UsageEngine
