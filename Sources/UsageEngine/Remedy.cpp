#include "UsageEngine/Remedy.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "UsageModel/LiveModel.h"

namespace UsageEngine::Remedy {

namespace {

using UsageModel::EffortLevel;
using UsageModel::ModelAndEffort;
using UsageModel::ModelClass;
using UsageModel::WhatIfSpace;
using UsageModel::WindowKind;
using Landings = UsageModel::EnumMap<WindowKind, double>;
using Models = std::vector<std::optional<ModelClass>>;
using Efforts = std::vector<std::optional<EffortLevel>>;

/// One step of model disturbs, or gains, as much as two of effort.
constexpr std::int64_t stepsPerTier = 2;

std::int64_t tierIndex(ModelClass model) {
    return std::ranges::find(tiers, model) - tiers.begin();
}

bool isTier(ModelClass model) {
    return std::ranges::find(tiers, model) != tiers.end();
}

std::int64_t levelIndex(EffortLevel effort) {
    return static_cast<std::int64_t>(UsageModel::caseIndex(effort));
}

/// The landing of a window whose further use is multiplied by a factor.
double landing(double used, double endFraction, double factor) {
    return used + std::max(endFraction - used, 0.0) * factor;
}

/// Every step down from what runs now, in the order of trial: by effort, and for each by model.
std::vector<ModelAndEffort> stepsDown(const WhatIfSpace& space) {
    const std::optional<ModelClass> tier = dominantTier(space);
    Models models{std::nullopt};
    if (tier) models.insert(models.end(), tiers.begin(), tiers.begin() + tierIndex(*tier));
    Efforts efforts{std::nullopt};
    for (const EffortLevel level : UsageModel::allCases<EffortLevel>) {
        if (level < space.anchorEffort()) efforts.emplace_back(level);
    }

    std::vector<ModelAndEffort> steps;
    for (const auto effort : efforts) {
        for (const auto model : models) {
            if (model || effort) steps.push_back({.model = model, .effort = effort});
        }
    }
    return steps;
}

Option optionOf(const ModelAndEffort& step, const SearchQuestion& question) {
    const WhatIfSpace& space = question.space;
    const std::int64_t effortSteps = step.effort ? levelIndex(space.anchorEffort()) - levelIndex(*step.effort) : 0;
    const std::int64_t tierSteps = step.model ? tierIndex(*dominantTier(space)) - tierIndex(*step.model) : 0;
    return {.model = step.model,
            .effort = step.effort,
            .landing = landing(question.used, question.endFraction, space.factor(step)),
            .disruption = effortSteps + stepsPerTier * tierSteps};
}

Outcome pauseOrNothing(const SearchQuestion& question) {
    // Half of the time that is left, or more, is no advice.
    constexpr double longestShare = 0.5;
    const double rate = std::max(question.endFraction - question.used, 0.0) / question.remaining;
    if (!(rate > 0.0)) return {.kind = Outcome::Case::fine, .option = {}};
    const double pause = question.remaining - (question.limit - question.used) / rate;
    if (!(pause > 0.0)) return {.kind = Outcome::Case::fine, .option = {}};
    if (pause >= question.remaining * longestShare) return {.kind = Outcome::Case::pastSaving, .option = {}};
    return {.kind = Outcome::Case::pause, .option = {}, .seconds = pause};
}

/// What a change multiplies the further use of a window by; absent where that cannot be told.
std::optional<double> factorIn(const Room& room, const ModelAndEffort& step) {
    if (room.kind != WindowKind::weeklyOpus || !step.model) return room.space.factor(step);
    // Nothing more lands on this window.
    if (!isOpusClass(*step.model)) return 0.0;

    constexpr double smallestShare = 1e-9;
    const double share = room.space.opusShare();
    if (!(share > smallestShare)) return std::nullopt;
    return room.space.modelFactor(step.model) / share * room.space.effortFactor(step.effort);
}

bool isClear(const Room& room) {
    return room.used < room.limit && room.endFraction < room.limit;
}

/// Every step up, in the order of trial: by model, and for each by the efforts that it offers.
std::vector<ModelAndEffort> stepsUp(ModelClass from, std::optional<EffortLevel> effort) {
    Models models{std::nullopt};
    models.insert(models.end(), tiers.begin() + tierIndex(from) + 1, tiers.end());

    std::vector<ModelAndEffort> steps;
    for (const auto model : models) {
        if (model) steps.push_back({.model = model, .effort = {}});
        if (!effort) continue;
        for (const EffortLevel level : UsageModel::availableEfforts(model.value_or(from))) {
            if (level > *effort) steps.push_back({.model = model, .effort = level});
        }
    }
    return steps;
}

/// Where each window lands; absent where one lands too high or cannot be told.
std::optional<Landings> landingsOf(std::span<const Room> rooms, const ModelAndEffort& step) {
    Landings landings;
    for (const Room& room : rooms) {
        const std::optional<double> factor = factorIn(room, step);
        if (!factor) return std::nullopt;
        const double end = landing(room.used, room.endFraction, *factor);
        if (end > room.limit * upgradeMargin) return std::nullopt;
        landings.set(room.kind, end);
    }
    return landings;
}

std::optional<Upgrade> upgradeBy(const ModelAndEffort& step, std::span<const Room> rooms, const ModelAndEffort& from) {
    if (std::ranges::none_of(rooms, [&](const Room& room) { return room.space.applies(step); })) return std::nullopt;
    const std::optional<Landings> landings = landingsOf(rooms, step);
    if (!landings) return std::nullopt;
    const std::int64_t tierSteps = step.model ? tierIndex(*step.model) - tierIndex(*from.model) : 0;
    const std::int64_t effortSteps = step.effort ? levelIndex(*step.effort) - levelIndex(*from.effort) : 0;
    return Upgrade{.model = step.model,
                   .effort = step.effort,
                   .landings = *landings,
                   .gain = effortSteps + stepsPerTier * tierSteps};
}

double fullest(const Upgrade& upgrade) {
    double most = -std::numeric_limits<double>::infinity();
    for (const auto& [kind, end] : upgrade.landings) most = std::max(most, end);
    return most;
}

bool isBetter(const Upgrade& one, const Upgrade& other) {
    if (one.gain != other.gain) return one.gain > other.gain;
    return fullest(one) < fullest(other);
}

} // namespace

Outcome search(const SearchQuestion& question) {
    const auto& [space, used, endFraction, limit, remaining] = question;
    if (!(endFraction > limit)) return {.kind = Outcome::Case::fine, .option = {}};
    const double target = limit * searchMargin;
    if (!(used < target) || !(remaining > 0.0)) return {.kind = Outcome::Case::pastSaving, .option = {}};

    std::optional<Option> best;
    bool effortAlone = false;
    for (const ModelAndEffort& step : stepsDown(space)) {
        const Option option = optionOf(step, question);
        if (!(option.landing <= target)) continue;
        effortAlone = effortAlone || !option.model;
        const auto cost = [](const Option& one) { return std::pair(one.disruption, one.landing); };
        if (!best || cost(option) < cost(*best)) best = option;
    }
    if (!best) return pauseOrNothing(question);
    return {.kind = Outcome::Case::change, .option = best, .effortAloneWasEnough = effortAlone};
}

std::optional<Upgrade> upgrade(std::span<const Room> rooms, std::optional<ModelClass> from,
                               std::optional<EffortLevel> effort) {
    if (!from || rooms.empty() || !isTier(*from)) return std::nullopt;
    if (!std::ranges::all_of(rooms, isClear)) return std::nullopt;
    std::optional<Upgrade> best;
    for (const ModelAndEffort& step : stepsUp(*from, effort)) {
        const auto candidate = upgradeBy(step, rooms, {.model = from, .effort = effort});
        if (candidate && (!best || isBetter(*candidate, *best))) best = candidate;
    }
    return best;
}

std::optional<ModelClass> dominantTier(const WhatIfSpace& space) {
    const auto top = UsageModel::topShare(space.byFamily);
    if (!top || !(top->second > 0.0)) return std::nullopt;
    return top->first == ModelClass::other ? ModelClass::sonnet : top->first;
}

} // namespace UsageEngine::Remedy
