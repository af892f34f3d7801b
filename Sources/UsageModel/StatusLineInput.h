#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "UsageModel/Fields.h"
#include "UsageModel/GaugeReading.h"

namespace UsageModel {

/// What this program reads of the JSON that Claude Code hands to a status line. The fields bear the names of that
/// JSON; everything else in it is ignored.
struct StatusLineInput {
    struct RL {
        /// Percent used, 0 to 100.
        std::optional<double> used_percentage;
        /// The reset instant, in seconds since 1970.
        std::optional<double> resets_at;

        friend bool operator==(const RL&, const RL&) = default;
    };

    struct RateLimits {
        std::optional<RL> five_hour;
        std::optional<RL> seven_day;
        std::optional<RL> seven_day_opus;

        friend bool operator==(const RateLimits&, const RateLimits&) = default;
    };

    std::optional<RateLimits> rate_limits;

    /// The status line's document. Absent when it is no JSON object or a member read here has the wrong type.
    [[nodiscard]] static std::optional<StatusLineInput> decode(std::string_view text);

    /// The reading that the document states, as taken at `capturedAt` (seconds since 1970) by `source`.
    /// Absent when no window states a percentage; a window without one is kept beside another that has one.
    [[nodiscard]] std::optional<GaugeReading> gaugeReading(double capturedAt, std::string_view source) const;

    friend bool operator==(const StatusLineInput&, const StatusLineInput&) = default;
};

template <FieldsOf<StatusLineInput::RL> Self>
void visitFields(Self& self, auto&& visit) {
    visit("used_percentage", self.used_percentage);
    visit("resets_at", self.resets_at);
}

template <FieldsOf<StatusLineInput::RateLimits> Self>
void visitFields(Self& self, auto&& visit) {
    visit("five_hour", self.five_hour);
    visit("seven_day", self.seven_day);
    visit("seven_day_opus", self.seven_day_opus);
}

template <FieldsOf<StatusLineInput> Self>
void visitFields(Self& self, auto&& visit) {
    visit("rate_limits", self.rate_limits);
}

} // namespace UsageModel
