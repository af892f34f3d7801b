#pragma once

#include <cmath>
#include <limits>

#include "UsageModel/CategoryWeights.h"
#include "UsageModel/WhatIfSpace.h"

/// Spaces of changes for tests, one told in words of the other.
namespace UsageEngine::Spaces {

using Shares = UsageModel::EnumMap<UsageModel::ModelClass, double>;
using Efforts = UsageModel::EnumMap<UsageModel::EffortLevel, double>;

inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr auto haiku = UsageModel::ModelClass::haiku;
inline constexpr auto sonnet = UsageModel::ModelClass::sonnet;
inline constexpr auto opus = UsageModel::ModelClass::opus;
inline constexpr auto fable = UsageModel::ModelClass::fable;
inline constexpr auto other = UsageModel::ModelClass::other;

inline double justBelow(double value) {
    return std::nextafter(value, -infinity);
}

inline double justAbove(double value) {
    return std::nextafter(value, infinity);
}

/// All on one class, all of it output unless told otherwise, at high effort, and at the usual prices.
inline UsageModel::WhatIfSpace on(UsageModel::ModelClass modelClass, double outputShare = 1.0) {
    return {.byFamily = {{modelClass, 1.0}},
            .familyMultiplier = UsageModel::CategoryWeights::pricePriors(),
            .outputShare = outputShare,
            .currentEffort = UsageModel::EffortLevel::high,
            .effortMultiplier = UsageModel::effortOutputPriors()};
}

inline UsageModel::WhatIfSpace withEffort(UsageModel::WhatIfSpace space,
                                          std::optional<UsageModel::EffortLevel> effort) {
    space.currentEffort = effort;
    return space;
}

inline UsageModel::WhatIfSpace withMix(UsageModel::WhatIfSpace space, const Shares& byFamily) {
    space.byFamily = byFamily;
    return space;
}

inline UsageModel::WhatIfSpace withPrices(UsageModel::WhatIfSpace space, const Shares& prices) {
    space.familyMultiplier = prices;
    return space;
}

inline UsageModel::WhatIfSpace withMultipliers(UsageModel::WhatIfSpace space, const Efforts& multipliers) {
    space.effortMultiplier = multipliers;
    return space;
}

} // namespace UsageEngine::Spaces
