#pragma once

#include <vector>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/UsageSnapshot.h"

/// The five-hour session blocks, rebuilt from turns alone.
namespace UsageEngine::SessionWindows {

/// The length of a block in seconds.
inline constexpr double span = 18000.0;

/// The blocks by time. Each begins with the first turn that the block before does not hold, not at a full hour, and
/// lasts `span`; so they may differ from the official windows. `usedFraction` is their sum in log units, and
/// `isCurrent` tells whether `now` lies in one. Empty without turns. Turns after `now` count like any other.
[[nodiscard]] std::vector<UsageModel::SessionBlock> reconstruct(WeighedTurns turns, UsageModel::Date now);

} // namespace UsageEngine::SessionWindows
