#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "UsageEngine/Aggregator.h"
#include "UsageEngine/Turns.h"
#include "UsageEngine/WindowComputation.h"
#include "UsageModel/Printing.h"

namespace UsageEngine {

/// A token of any kind weighs one log unit on any model, so that sums can be told by heart.
inline UsageModel::CategoryWeights oneUnitEach() {
    return {.input = 1, .output = 1, .cacheCreation = 1, .cacheRead = 1, .classMultiplier = {}};
}

inline UsageModel::UsageEvent spent(UsageModel::Date ts, std::int64_t units,
                                    UsageModel::ModelClass modelClass = UsageModel::ModelClass::opus,
                                    std::optional<UsageModel::EffortLevel> effort = {}) {
    return {.ts = ts, .sessionId = "a", .modelClass = modelClass, .input = units, .effort = effort};
}

inline UsageModel::Anchor resetTold(UsageModel::WindowKind window, UsageModel::Date ts,
                                    std::optional<UsageModel::Date> resetsAt) {
    return {.ts = ts,
            .source = UsageModel::AnchorSource::syntheticLog,
            .window = window,
            .kind = UsageModel::AnchorKind::ceiling,
            .usedFraction = 1.0,
            .resetsAt = resetsAt};
}

inline UsageModel::Anchor sessionAt(UsageModel::Date ts, std::optional<double> usedFraction) {
    return {.ts = ts,
            .source = UsageModel::AnchorSource::statusLine,
            .window = UsageModel::WindowKind::session5h,
            .kind = UsageModel::AnchorKind::percentage,
            .usedFraction = usedFraction,
            .resetsAt = {}};
}

inline UsageModel::Anchor sessionFull(UsageModel::Date ts) {
    return resetTold(UsageModel::WindowKind::session5h, ts, {});
}

/// A window of a reading: how many percent are used, and when it resets.
inline UsageModel::GaugeWindow told(std::optional<double> percent, std::optional<UsageModel::Date> resetsAt) {
    return {.usedPercentage = percent, .resetsAt = resetsAt ? std::optional(resetsAt->secondsSince1970) : std::nullopt};
}

inline UsageModel::GaugeReading reading(UsageModel::Date captured,
                                        std::map<std::string, UsageModel::GaugeWindow> windows) {
    return {.capturedAt = captured.secondsSince1970, .source = "statusLine", .windows = std::move(windows)};
}

inline SessionCapScale capOf(std::optional<double> units) {
    return {.capInLogUnits = units, .evidence = {}};
}

/// All that a refresh goes by.
struct Scene {
    std::vector<UsageModel::UsageEvent> events;
    std::vector<UsageModel::Anchor> anchors;
    std::optional<UsageModel::GaugeReading> gauge;
    UsageModel::Date now = sunday;
    std::optional<double> heldCap;
    UsageModel::CategoryWeights weights = oneUnitEach();
    UsageModel::Calendar calendar = UsageModel::Calendar::utc();

    /// Calls `look(facts)`; the facts last no longer.
    auto withFacts(auto&& look) const {
        const std::vector<WeighedTurn> turns = weigh(events, weights);
        return look(Facts{.events = events,
                          .turns = turns,
                          .anchors = anchors,
                          .gauge = gauge ? &*gauge : nullptr,
                          .now = now,
                          .weights = weights,
                          .calendar = calendar});
    }

    [[nodiscard]] WindowCompute window(UsageModel::WindowKind kind, const SessionCapScale& cap = {}) const {
        return withFacts([&](const Facts& facts) { return computeWindow(kind, facts, cap); });
    }

    [[nodiscard]] UsageModel::UsageSnapshot snapshot() const {
        return Aggregator{.weights = weights, .calendar = calendar}.snapshot({.events = events,
                                                                              .anchors = anchors,
                                                                              .gauge = gauge,
                                                                              .now = now,
                                                                              .ingest = {},
                                                                              .heldSessionCap = heldCap});
    }
};

} // namespace UsageEngine
