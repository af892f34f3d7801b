#pragma once

#include "UsageEngine/SessionCapScale.h"
#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/UsageSnapshot.h"
#include "UsageModel/WeekSeries.h"

namespace UsageEngine {

/// The factor from a session's log units to fractions of its limit, and what it rests on.
struct BlockScale {
    double scale = 1.0;
    UsageModel::SessionCapBasis basis = UsageModel::SessionCapBasis::uncalibrated;

    friend bool operator==(const BlockScale&, const BlockScale&) = default;
};

/// A session's own anchor beats the learnt cap; without either a log unit is worth 1. An anchor whose factor would be
/// exactly 1 counts as none.
[[nodiscard]] BlockScale blockScale(const UsageModel::SessionBlock& block, const SessionAnchors& anchors,
                                    WeighedTurns turns, const SessionCapScale& capScale);

} // namespace UsageEngine
