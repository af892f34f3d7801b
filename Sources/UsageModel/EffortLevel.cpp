#include "UsageModel/EffortLevel.h"

namespace UsageModel {

std::string_view label(EffortLevel level) {
    constexpr std::array<std::string_view, 5> labels{"Low", "Medium", "High", "X-High", "Max"};
    return labels[caseIndex(level)];
}

std::string command(EffortLevel level) {
    return "/effort " + std::string(text(level));
}

std::optional<EffortLevel> stepDown(EffortLevel level) {
    if (level == EffortLevel::low) return std::nullopt;
    return allCases<EffortLevel>[caseIndex(level) - 1];
}

std::span<const EffortLevel> availableEfforts(ModelClass modelClass) {
    if (modelClass == ModelClass::haiku) return {};
    return allCases<EffortLevel>;
}

const EnumMap<EffortLevel, double>& effortOutputPriors() {
    static const EnumMap<EffortLevel, double> priors{
        {EffortLevel::low, 0.55},  {EffortLevel::medium, 0.75}, {EffortLevel::high, 1.0},
        {EffortLevel::xhigh, 1.3}, {EffortLevel::max, 1.6},
    };
    return priors;
}

} // namespace UsageModel
