#include "UsageEngine/BindingResolver.h"

#include <algorithm>

#include "UsageEngine/TimeText.h"
#include "UsageEngine/WholePercent.h"

namespace UsageEngine::BindingResolver {

namespace {

using UsageModel::Consequence;
using UsageModel::Date;
using UsageModel::Projection;
using UsageModel::Severity;
using UsageModel::Verdict;
using UsageModel::WindowKind;

/// Whether a breaching window stops the user before another one does.
bool emptiesBefore(const Projection& one, const Projection& other) {
    if (!one.likelyEmpty) return false;
    return !other.likelyEmpty || *one.likelyEmpty < *other.likelyEmpty;
}

const Input* firstToEmpty(std::span<const Input> inputs) {
    const Input* first = nullptr;
    for (const Input& input : inputs) {
        if (!input.projection.willBreachBeforeReset) continue;
        if (first == nullptr || emptiesBefore(input.projection, first->projection)) first = &input;
    }
    return first;
}

Verdict onTrack(std::string subtext) {
    return {.headline = "On track",
            .consequence = Consequence::fine,
            .severity = Severity::green,
            .subtext = std::move(subtext)};
}

Verdict landingWithHeadroom(const Projection& projection) {
    const std::string percent = wholePercent(std::max(projection.endFraction, 0.0));
    return onTrack("Projected to reach about " + percent + "% by reset — with headroom.");
}

Verdict sessionPause(double until, const std::string& reset) {
    // Half an hour is too little to finish what one is at.
    constexpr double soon = 1800.0;
    return {.headline = "Session limit in ~" + TimeText::duration(until),
            .consequence = Consequence::sessionPause,
            .severity = until < soon ? Severity::red : Severity::amber,
            .subtext = "A short pause until the 5-hour window resets in " + reset + "."};
}

Verdict lockout(double until, const std::string& reset) {
    return {.headline = "Locked out in ~" + TimeText::duration(until),
            .consequence = Consequence::lockout,
            .severity = Severity::red,
            .subtext = "Full lockout until reset in " + reset + ". Ease off to make it."};
}

Verdict downgrade(double until, const std::string& reset) {
    return {.headline = "Opus dry in ~" + TimeText::duration(until),
            .consequence = Consequence::downgradeToSonnet,
            .severity = Severity::amber,
            .subtext = "Drops to Sonnet-only, then resets in " + reset + ". Weekly lockout not projected."};
}

Verdict breach(const Input& input, Date likelyEmpty, Date now) {
    const double until = likelyEmpty - now;
    const std::string reset = TimeText::until(now, input.state.resetsAt);
    switch (input.state.kind) {
    case WindowKind::session5h: return sessionPause(until, reset);
    case WindowKind::weeklyAll: return lockout(until, reset);
    case WindowKind::weeklyOpus: return downgrade(until, reset);
    }
    return {};
}

} // namespace

WindowKind resolve(std::span<const Input> inputs) {
    if (inputs.empty()) return WindowKind::weeklyAll;
    if (const Input* breaching = firstToEmpty(inputs)) return breaching->state.kind;
    const auto end = [](const Input& input) { return input.projection.endFraction; };
    return std::ranges::max_element(inputs, {}, end)->state.kind;
}

Verdict verdict(WindowKind binding, std::span<const Input> inputs, Date now) {
    const auto input = std::ranges::find(inputs, binding, [](const Input& one) { return one.state.kind; });
    if (input == inputs.end()) return onTrack("Nothing projected to run out before reset.");
    const Projection& projection = input->projection;
    if (projection.willBreachBeforeReset && projection.likelyEmpty) return breach(*input, *projection.likelyEmpty, now);
    return landingWithHeadroom(projection);
}

} // namespace UsageEngine::BindingResolver
