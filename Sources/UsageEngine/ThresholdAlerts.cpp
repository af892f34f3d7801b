#include "UsageEngine/ThresholdAlerts.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "UsageEngine/TimeText.h"

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::WindowKind;
using UsageModel::WindowState;
using Episode = ThresholdAlerts::Episode;

struct Wording {
    std::string_view name;
    /// Ends before the word on when the window resets.
    std::string_view consequence;
};

// In the order of `WindowKind`.
constexpr std::array<Wording, UsageModel::caseCount<WindowKind>> wordings{{
    {.name = "session", .consequence = "pauses Claude until the 5-hour session resets"},
    {.name = "weekly", .consequence = "locks you out until the weekly window resets"},
    {.name = "Opus weekly", .consequence = "drops Opus to Sonnet until the Opus window resets"},
}};

const Wording& wordingOf(WindowKind window) {
    return wordings[UsageModel::caseIndex(window)];
}

// A window's start moves by seconds from one reading to the next; only a new occurrence moves it this far.
double longestDrift(WindowKind window) {
    return UsageModel::nominalDuration(window) / 2;
}

Episode& episodeOf(const WindowState& meter, std::map<std::string, Episode>& episodes) {
    const Episode fresh{.windowStart = {meter.windowStart}};
    Episode& episode = episodes.try_emplace(std::string(text(meter.kind)), fresh).first->second;
    if (std::abs(episode.windowStart - meter.windowStart) >= longestDrift(meter.kind)) episode = fresh;
    return episode;
}

std::optional<std::int64_t> highestReached(std::span<const std::int64_t> thresholds, double used) {
    const double percent = used * 100;
    std::optional<std::int64_t> top;
    for (const std::int64_t threshold : thresholds) {
        if (percent >= static_cast<double>(threshold)) top = std::max(threshold, top.value_or(threshold));
    }
    return top;
}

} // namespace

std::string ThresholdAlert::title() const {
    return std::to_string(threshold) + "% of your " + std::string(wordingOf(window).name) + " limit used";
}

std::string ThresholdAlert::body(Date now) const {
    const std::string when = resetsAt ? "in " + TimeText::duration(*resetsAt - now) : "at the next reset";
    return "Hitting 100% " + std::string(wordingOf(window).consequence) + " " + when + ".";
}

std::vector<ThresholdAlert> ThresholdAlerts::update(const Observation& seen) {
    const bool snoozed = seen.snoozedUntil && seen.now < *seen.snoozedUntil;
    std::vector<ThresholdAlert> alerts;
    for (const WindowState& meter : seen.meters) {
        if (!meter.confidence.anchored) continue;
        Episode& episode = episodeOf(meter, episodes);
        const auto top = highestReached(thresholds, meter.used);
        if (!top || episode.highestFired >= *top) continue;
        episode.highestFired = *top;
        if (snoozed) continue;
        alerts.push_back({.window = meter.kind, .threshold = *top, .used = meter.used, .resetsAt = meter.resetsAt});
    }
    std::ranges::stable_sort(alerts, {}, &ThresholdAlert::threshold);
    return alerts;
}

std::int64_t ThresholdAlerts::fired(WindowKind window) const {
    const auto episode = episodes.find(std::string(text(window)));
    return episode == episodes.end() ? 0 : episode->second.highestFired;
}

} // namespace UsageEngine
