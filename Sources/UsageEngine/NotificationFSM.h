#pragma once

#include <optional>

#include "UsageEngine/StoredInstant.h"
#include "UsageModel/Fields.h"
#include "UsageModel/UsageSnapshot.h"

namespace UsageEngine {

/// How urgent it is that the binding limit runs out before it resets. Ordered; its number is its stored form.
enum class AlertLevel {
    normal = 0,
    /// It is going to run out, but has not been for long.
    advisory = 1,
    /// It has been for long enough to speak of.
    headsUp = 2,
    /// It is red, or runs out soon.
    critical = 3,
};

struct NotificationDecision {
    /// The level from now on.
    AlertLevel level = AlertLevel::normal;
    /// A banner is to be shown now.
    bool fireBanner = false;

    friend bool operator==(const NotificationDecision&, const NotificationDecision&) = default;
};

/// Decides when to say that the binding limit is going to run out before it resets. A breach is the time in which every
/// update says so; each level is announced at most once in it, and only the upper two ever. A value without a clock,
/// to be stored between runs of the program: what it is built with is stored too, and stays.
struct NotificationFSM {
    /// How long a breach must last before it is worth a word.
    double sustainSeconds = 1800.0;
    /// A limit that runs out sooner than this is critical.
    double criticalWithinSeconds = 86400.0;
    AlertLevel level = AlertLevel::normal;
    /// When the breach began; absent outside of one.
    std::optional<StoredInstant> overSince;
    /// The highest level that was announced in this breach.
    AlertLevel highestFired = AlertLevel::normal;
    /// Before this instant no banner is shown. A level that is reached until then counts as announced all the same.
    std::optional<StoredInstant> snoozeUntil;

    struct Observation {
        /// The limit is going to run out before it resets. Without that, nothing else is looked at.
        bool breaching = false;
        UsageModel::Severity severity = UsageModel::Severity::green;
        /// Absent where it is not known to run out; negative where it has.
        std::optional<double> secondsToEmpty;
        UsageModel::Date now;
    };

    /// Takes in one observation. The level follows it up and down; an announced one stays announced until the breach
    /// is over.
    [[nodiscard]] NotificationDecision update(const Observation& seen);

    /// Replaces an earlier snooze. Nothing in the program calls it yet.
    void snooze(UsageModel::Date until) { snoozeUntil = StoredInstant{until}; }

    friend bool operator==(const NotificationFSM&, const NotificationFSM&) = default;
};

template <UsageModel::FieldsOf<NotificationDecision> Self>
void visitFields(Self& self, auto&& visit) {
    visit("level", self.level);
    visit("fireBanner", self.fireBanner);
}

template <UsageModel::FieldsOf<NotificationFSM> Self>
void visitFields(Self& self, auto&& visit) {
    visit("sustainSeconds", self.sustainSeconds);
    visit("criticalWithinSeconds", self.criticalWithinSeconds);
    visit("level", self.level);
    visit("overSince", self.overSince);
    visit("highestFired", self.highestFired);
    visit("snoozeUntil", self.snoozeUntil);
}

} // namespace UsageEngine

template <>
struct UsageModel::Json::detail::Form<UsageEngine::AlertLevel> {
    static nlohmann::json encode(UsageEngine::AlertLevel value) { return static_cast<int>(value); }
    static UsageEngine::AlertLevel decode(const nlohmann::json& json) {
        const std::int64_t value = toInteger(json);
        require(value >= 0 && value <= static_cast<int>(UsageEngine::AlertLevel::critical), "not a level");
        return static_cast<UsageEngine::AlertLevel>(value);
    }
};
