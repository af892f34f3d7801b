#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/ModelClass.h"

namespace UsageModel {

/// The effort setting of a turn, in rising order.
enum class EffortLevel : std::uint8_t { low, medium, high, xhigh, max };

template <>
struct EnumNames<EffortLevel> {
    static constexpr std::array<std::string_view, 5> names{"low", "medium", "high", "xhigh", "max"};
};

[[nodiscard]] std::string_view label(EffortLevel level);
/// What the user types to choose the level, such as "/effort low".
[[nodiscard]] std::string command(EffortLevel level);
/// The next lower level; absent for `low`.
[[nodiscard]] std::optional<EffortLevel> stepDown(EffortLevel level);
/// The levels that a class offers, in rising order: none on Haiku, all on every other.
[[nodiscard]] std::span<const EffortLevel> availableEfforts(ModelClass modelClass);

/// How much of the output share of a turn scales with the effort, `high` being 1. The weighting of a turn does not use
/// it: these are priors for questions of the kind "what if".
[[nodiscard]] const EnumMap<EffortLevel, double>& effortOutputPriors();

} // namespace UsageModel
