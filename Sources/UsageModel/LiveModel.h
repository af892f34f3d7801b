#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "UsageModel/Date.h"
#include "UsageModel/EffortLevel.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/Fields.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/WhatIfSpace.h"

namespace UsageModel {

/// What has been running in the recent past.
struct LiveModel {
    struct Session {
        std::string id;
        ModelClass modelClass = ModelClass::other;
        std::optional<EffortLevel> effort;
        Date lastTurn;
        /// Log units.
        double weight = 0.0;

        friend bool operator==(const Session&, const Session&) = default;
    };

    static constexpr double defaultLookback = 2700.0;
    /// The share at which a class or an effort counts as settled.
    static constexpr double consensus = 0.9;

    std::vector<Session> sessions;
    /// The recent burn's share by class, and by effort.
    EnumMap<ModelClass, double> byClass;
    EnumMap<EffortLevel, double> byEffort;
    /// The recent share of output tokens.
    double outputShare = 0.0;
    /// The recent burn in log units.
    double weight = 0.0;
    /// How many turns were looked at, and the latest of them.
    std::int64_t turns = 0;
    std::optional<Date> lastTurn;
    /// Seconds looked back.
    double lookback = defaultLookback;

    [[nodiscard]] bool isLive() const { return lastTurn && weight > 0; }
    [[nodiscard]] bool isWellConditioned() const { return isLive() && turns > 2; }
    [[nodiscard]] bool isConcurrent() const { return sessions.size() >= 2; }

    /// The leading class if its share is at least `share`. Absent while nothing is live, and where `other` leads.
    [[nodiscard]] std::optional<ModelClass> settledClass(double share) const;
    /// The leading effort if its share is at least `share`. Absent while nothing is live.
    [[nodiscard]] std::optional<EffortLevel> settledEffort(double share) const;
    /// The space of changes for what runs now, at the prices of `base`. Absent while nothing is live, and below three
    /// turns.
    [[nodiscard]] std::optional<WhatIfSpace> space(const WhatIfSpace& base) const;

    friend bool operator==(const LiveModel&, const LiveModel&) = default;
};

/// The entry of the largest share; of equals, the alphabetically first. Absent for an empty map.
template <NamedEnum Key>
[[nodiscard]] std::optional<std::pair<Key, double>> topShare(const EnumMap<Key, double>& shares) {
    std::optional<std::pair<Key, double>> top;
    for (const auto& entry : shares) {
        const bool leads =
            !top || entry.second > top->second || (entry.second == top->second && text(entry.first) < text(top->first));
        if (leads) top = entry;
    }
    return top;
}

template <FieldsOf<LiveModel::Session> Self>
void visitFields(Self& self, auto&& visit) {
    visit("id", self.id);
    visit("modelClass", self.modelClass);
    visit("effort", self.effort);
    visit("lastTurn", self.lastTurn);
    visit("weight", self.weight);
}

template <FieldsOf<LiveModel> Self>
void visitFields(Self& self, auto&& visit) {
    visit("sessions", self.sessions);
    visit("byClass", self.byClass);
    visit("byEffort", self.byEffort);
    visit("outputShare", self.outputShare);
    visit("weight", self.weight);
    visit("turns", self.turns);
    visit("lastTurn", self.lastTurn);
    visit("lookback", self.lookback);
}

} // namespace UsageModel
