#include "UsageEngine/BlockScale.h"

#include "UsageEngine/Rollups.h"

namespace UsageEngine {

BlockScale blockScale(const UsageModel::SessionBlock& block, const SessionAnchors& anchors, WeighedTurns turns,
                      const SessionCapScale& capScale) {
    using UsageModel::SessionCapBasis;
    constexpr double smallestUse = 1e-9;
    if (const UsageModel::Anchor* anchor = anchors.latestIn(block)) {
        const double logged = Rollups::weightedUsage(turns, {.from = block.start, .to = anchor->ts});
        const double fraction = UsageModel::assertedFraction(*anchor);
        const auto ratio = logged > smallestUse ? soundFactor(fraction / logged) : std::nullopt;
        if (ratio && *ratio != 1.0) return {.scale = *ratio, .basis = SessionCapBasis::ownCeiling};
    }
    if (const auto learnt = capScale.scale()) return {.scale = *learnt, .basis = SessionCapBasis::learnedScale};
    return {};
}

} // namespace UsageEngine
