#pragma once

#include <vector>

#include "UsageEngine/WeighedTurns.h"

namespace UsageEngine {

/// A Sunday, 2026-03-01 00:00:00 UTC.
inline constexpr UsageModel::Date sunday{1772323200};
inline constexpr double hour = 3600.0;
inline constexpr double day = 86400.0;
inline constexpr double week = 7 * day;

inline WeighedTurn turnAt(UsageModel::Date ts, double weight,
                          UsageModel::ModelClass modelClass = UsageModel::ModelClass::opus,
                          std::optional<UsageModel::EffortLevel> effort = {}) {
    return {.ts = ts, .weight = weight, .modelClass = modelClass, .effort = effort};
}

using Turns = std::vector<WeighedTurn>;

} // namespace UsageEngine
