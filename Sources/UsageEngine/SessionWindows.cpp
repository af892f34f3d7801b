#include "UsageEngine/SessionWindows.h"

namespace UsageEngine::SessionWindows {

namespace {

using UsageModel::Date;
using UsageModel::SessionBlock;

SessionBlock blockFrom(Date start, Date now) {
    const Date end = start + span;
    return {
        .start = start, .end = end, .usedFraction = 0.0, .byModelClass = {}, .isCurrent = now >= start && now < end};
}

} // namespace

std::vector<SessionBlock> reconstruct(WeighedTurns turns, Date now) {
    std::vector<SessionBlock> blocks;
    for (const WeighedTurn& turn : turns) {
        if (blocks.empty() || turn.ts >= blocks.back().end) blocks.push_back(blockFrom(turn.ts, now));
        blocks.back().usedFraction += turn.weight;
        blocks.back().byModelClass[turn.modelClass] += turn.weight;
    }
    return blocks;
}

} // namespace UsageEngine::SessionWindows
