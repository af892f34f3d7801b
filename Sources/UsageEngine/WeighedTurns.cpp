#include "UsageEngine/WeighedTurns.h"

#include <algorithm>

namespace UsageEngine {

std::vector<WeighedTurn> weigh(std::span<const UsageModel::UsageEvent> events,
                               const UsageModel::CategoryWeights& weights) {
    std::vector<WeighedTurn> turns;
    turns.reserve(events.size());
    for (const UsageModel::UsageEvent& event : events) {
        turns.push_back({
            .ts = event.ts,
            .weight = weights.effective(event),
            .modelClass = event.modelClass,
            .effort = event.effort,
        });
    }
    return turns;
}

std::vector<WeighedTurn> byTime(std::vector<WeighedTurn> turns) {
    // They come from the store in this order.
    if (!std::ranges::is_sorted(turns, {}, &WeighedTurn::ts)) std::ranges::stable_sort(turns, {}, &WeighedTurn::ts);
    return turns;
}

bool TurnFilter::admits(const WeighedTurn& turn) const {
    if (opusOnly && !UsageModel::isOpusClass(turn.modelClass)) return false;
    return !bucket || UsageModel::bucket(turn.modelClass) == *bucket;
}

} // namespace UsageEngine
