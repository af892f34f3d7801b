#include "UsageEngine/Advice.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <absl/strings/ascii.h>

#include "UsageEngine/Remedy.h"
#include "UsageEngine/TimeText.h"
#include "UsageEngine/WholePercent.h"

namespace UsageEngine::Advice {

namespace {

using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::LiveModel;
using UsageModel::ModelClass;
using UsageModel::Recommendation;
using UsageModel::WhatIfSpace;
using UsageModel::WindowKind;
using Kind = Recommendation::Kind;

constexpr double limit = 1.0;

std::string nameOf(WindowKind kind) {
    constexpr std::array<const char*, 3> names{"This session", "This week", "Your Opus week"};
    return names[UsageModel::caseIndex(kind)];
}

std::string nameOf(ModelClass model) {
    return std::string(displayName(model));
}

std::string modelCommand(ModelClass model) {
    return "/model " + std::string(text(model));
}

std::string atEffort(EffortLevel effort) {
    return " at " + absl::AsciiStrToLower(std::string(label(effort))) + " effort";
}

std::vector<Remedy::Room> roomsOf(std::span<const WindowCompute> computed, const WhatIfSpace& space) {
    std::vector<Remedy::Room> rooms;
    for (const WindowCompute& compute : computed) {
        rooms.push_back({.kind = compute.state.kind,
                         .space = space,
                         .used = compute.state.used,
                         .endFraction = compute.projection.endFraction,
                         .limit = limit});
    }
    return rooms;
}

/// What the user runs, as all of it agrees.
struct Setup {
    ModelClass model = ModelClass::other;
    std::optional<EffortLevel> effort;
    std::size_t sessions = 0;
};

std::string setupText(const Setup& setup) {
    std::string text = "You're on " + nameOf(setup.model);
    if (setup.effort) text += atEffort(*setup.effort);
    if (setup.sessions >= 2) text += " across " + std::to_string(setup.sessions) + " live sessions";
    return text + ". ";
}

std::string landingText(const Question& question, double landing) {
    const WindowCompute& binding = question.binding;
    const bool isOnlyOne = question.computed.size() == 1;
    return nameOf(binding.state.kind) + " lands at " + wholePercent(binding.projection.endFraction) +
           "% at this pace; this takes it to about " + wholePercent(landing) + "%" +
           (isOnlyOne ? " — still inside." : " — and every other window stays inside too.");
}

/// What a step up is called, and how it is made. It changes one of the two at least.
struct Step {
    std::string title;
    std::string command;
};

Step stepUp(const Remedy::Upgrade& upgrade) {
    if (!upgrade.model)
        return {.title = "Room to raise effort to " + std::string(label(*upgrade.effort)),
                .command = command(*upgrade.effort)};
    const std::string model = nameOf(*upgrade.model);
    return {.title = upgrade.effort ? "Room for " + model + atEffort(*upgrade.effort) : "Room to move up to " + model,
            .command = modelCommand(*upgrade.model)};
}

Step stepDown(const Remedy::Option& option, EffortLevel current) {
    if (!option.model)
        return {.title = "Lower effort: " + std::string(label(current)) + " -> " + std::string(label(*option.effort)),
                .command = command(*option.effort)};
    const std::string model = nameOf(*option.model);
    return {.title = option.effort ? model + atEffort(*option.effort) : "Route the rest to " + model,
            .command = modelCommand(*option.model)};
}

Recommendation waitForReset(const WindowCompute& binding, Date now) {
    return {.kind = Kind::easeOff,
            .title = nameOf(binding.state.kind) + " is spent",
            .detail = "Nothing gets you back inside before it resets in " +
                      TimeText::until(now, binding.state.resetsAt) + ". It refills then.",
            .impact = "wait for the reset",
            .command = {}};
}

std::string projectedText(const WindowCompute& binding) {
    return nameOf(binding.state.kind) + " is projected to hit " + wholePercent(binding.projection.endFraction) +
           "% by reset";
}

Recommendation pauseFor(double seconds, const WindowCompute& binding) {
    return {.kind = Kind::easeOff,
            .title = "Pause for about " + TimeText::duration(seconds),
            .detail = projectedText(binding) +
                      ", and no model or effort change is enough on its own. That break puts you back inside, if you "
                      "pick up at the same pace.",
            .impact = "avoids a lockout",
            .command = {}};
}

Recommendation change(const Remedy::Outcome& outcome, const WindowCompute& binding) {
    const Remedy::Option& option = *outcome.option;
    const EffortLevel current = binding.whatIf.anchorEffort();
    const auto [title, command] = stepDown(option, current);
    std::string detail = projectedText(binding) + "; this lands it around " + wholePercent(option.landing) + "%.";
    if (option.model && !outcome.effortAloneWasEnough && UsageModel::stepDown(current))
        detail += " Lowering effort alone doesn't get you there.";
    return {.kind = Kind::easeOff,
            .title = title,
            .detail = std::move(detail),
            .impact = "back inside the cap",
            .command = command};
}

} // namespace

std::optional<Recommendation> recommend(const Question& question) {
    return question.binding.projection.willBreachBeforeReset ? easeOff(question.binding, question.now)
                                                             : spendMore(question);
}

std::optional<Recommendation> spendMore(const Question& question) {
    const LiveModel& live = question.live;
    const auto from = live.settledClass(LiveModel::consensus);
    const auto space = live.space(question.binding.whatIf);
    if (!from || !space) return std::nullopt;
    const auto effort = live.settledEffort(LiveModel::consensus);
    const auto upgrade = Remedy::upgrade(roomsOf(question.computed, *space), from, effort);
    if (!upgrade) return std::nullopt;
    const std::optional<double>& landing = upgrade->landings.find(question.binding.state.kind);
    if (!landing) return std::nullopt;

    const auto [title, command] = stepUp(*upgrade);
    const Setup setup{.model = *from, .effort = effort, .sessions = live.sessions.size()};
    return Recommendation{.kind = Kind::spendMore,
                          .title = title,
                          .detail = setupText(setup) + landingText(question, *landing),
                          .impact = "uses the room you have",
                          .command = command};
}

std::optional<Recommendation> easeOff(const WindowCompute& binding, Date now) {
    // A reset that is seconds away leaves no rate to compute with.
    constexpr double leastRemaining = 60.0;
    const UsageModel::WindowState& state = binding.state;
    if (!binding.projection.willBreachBeforeReset || !state.resetsAt) return std::nullopt;
    const Remedy::Outcome outcome = Remedy::search({
        .space = binding.whatIf,
        .used = state.used,
        .endFraction = binding.projection.endFraction,
        .limit = limit,
        .remaining = std::max(*state.resetsAt - now, leastRemaining),
    });
    switch (outcome.kind) {
    case Remedy::Outcome::Case::fine: return std::nullopt;
    case Remedy::Outcome::Case::pastSaving: return waitForReset(binding, now);
    case Remedy::Outcome::Case::pause: return pauseFor(outcome.seconds, binding);
    case Remedy::Outcome::Case::change: return change(outcome, binding);
    }
    return std::nullopt;
}

} // namespace UsageEngine::Advice
