#include "UsageModel/LiveModel.h"

namespace UsageModel {

namespace {

constexpr std::int64_t fewestTurnsForSpace = 3;

template <NamedEnum Key>
std::optional<Key> leaderOf(const EnumMap<Key, double>& shares, double atLeast) {
    const auto top = topShare(shares);
    if (!top || !(top->second >= atLeast)) return std::nullopt;
    return top->first;
}

} // namespace

std::optional<ModelClass> LiveModel::settledClass(double share) const {
    if (!isLive()) return std::nullopt;
    const std::optional<ModelClass> leader = leaderOf(byClass, share);
    return leader == ModelClass::other ? std::nullopt : leader;
}

std::optional<EffortLevel> LiveModel::settledEffort(double share) const {
    if (!isLive()) return std::nullopt;
    return leaderOf(byEffort, share);
}

std::optional<WhatIfSpace> LiveModel::space(const WhatIfSpace& base) const {
    if (!isLive() || turns < fewestTurnsForSpace) return std::nullopt;
    const auto topEffort = topShare(byEffort);
    return WhatIfSpace{
        .byFamily = byClass,
        .familyMultiplier = base.familyMultiplier,
        .outputShare = outputShare,
        .effortMix = byEffort,
        .currentEffort = topEffort ? std::optional(topEffort->first) : base.currentEffort,
        .effortMultiplier = base.effortMultiplier,
    };
}

} // namespace UsageModel
