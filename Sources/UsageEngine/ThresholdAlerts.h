#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "UsageEngine/StoredInstant.h"
#include "UsageModel/Fields.h"
#include "UsageModel/UsageSnapshot.h"
#include "UsageModel/WindowKind.h"

namespace UsageEngine {

/// A limit window has reached a level.
struct ThresholdAlert {
    UsageModel::WindowKind window = UsageModel::WindowKind::weeklyAll;
    /// The level, in percent.
    std::int64_t threshold = 0;
    /// The used fraction at that moment.
    double used = 0.0;
    std::optional<UsageModel::Date> resetsAt;

    [[nodiscard]] bool isCritical() const { return threshold >= 99; }
    /// "95% of your weekly limit used"
    [[nodiscard]] std::string title() const;
    /// What happens at 100%, and until when, as seen from `now`.
    [[nodiscard]] std::string body(UsageModel::Date now) const;

    friend bool operator==(const ThresholdAlert&, const ThresholdAlert&) = default;
};

/// Tells when a window has reached a level, at most once for each level and episode. An episode is one occurrence of
/// the window, told by its start. Only official percentages count. A value without a clock, to be stored between runs
/// of the program.
struct ThresholdAlerts {
    static constexpr std::array<std::int64_t, 3> defaultThresholds{90, 95, 99};

    struct Episode {
        StoredInstant windowStart;
        /// The highest level that was told, or passed over in a snooze; 0 for none. Never falls in an episode.
        std::int64_t highestFired = 0;

        friend bool operator==(const Episode&, const Episode&) = default;
    };

    /// Percents, ascending.
    std::vector<std::int64_t> thresholds{defaultThresholds.begin(), defaultThresholds.end()};
    /// By the text form of the window. A key that is no window's is kept as it is.
    std::map<std::string, Episode> episodes;

    struct Observation {
        std::span<const UsageModel::WindowState> meters;
        UsageModel::Date now;
        /// Before this instant nothing is told, and what is passed over until then never will be.
        std::optional<UsageModel::Date> snoozedUntil;
    };

    /// The alerts to post, lowest level first, those of one level in the order of the meters. Of the levels that a
    /// window has passed since it was last seen, only the highest is told. A meter without an official reading is not
    /// looked at.
    [[nodiscard]] std::vector<ThresholdAlert> update(const Observation& seen);

    /// The highest level that was told in the window's episode; 0 where there is none.
    [[nodiscard]] std::int64_t fired(UsageModel::WindowKind window) const;

    friend bool operator==(const ThresholdAlerts&, const ThresholdAlerts&) = default;
};

template <UsageModel::FieldsOf<ThresholdAlert> Self>
void visitFields(Self& self, auto&& visit) {
    visit("window", self.window);
    visit("threshold", self.threshold);
    visit("used", self.used);
    visit("resetsAt", self.resetsAt);
}

template <UsageModel::FieldsOf<ThresholdAlerts::Episode> Self>
void visitFields(Self& self, auto&& visit) {
    visit("windowStart", self.windowStart);
    visit("highestFired", self.highestFired);
}

template <UsageModel::FieldsOf<ThresholdAlerts> Self>
void visitFields(Self& self, auto&& visit) {
    visit("thresholds", self.thresholds);
    visit("episodes", self.episodes);
}

} // namespace UsageEngine
