#include "UsageModel/StatusLineInput.h"

#include <algorithm>

#include "UsageModel/Json.h"

namespace UsageModel {

std::optional<StatusLineInput> StatusLineInput::decode(std::string_view text) {
    return Json::decodeText<StatusLineInput>(text);
}

std::optional<GaugeReading> StatusLineInput::gaugeReading(double capturedAt, std::string_view source) const {
    if (!rate_limits) return std::nullopt;

    GaugeReading reading{.capturedAt = capturedAt, .source = std::string(source), .windows = {}};
    visitFields(*rate_limits, [&](const char* name, const std::optional<RL>& limit) {
        if (limit) reading.windows[name] = {.usedPercentage = limit->used_percentage, .resetsAt = limit->resets_at};
    });

    const auto statesPercentage = [](const auto& entry) { return entry.second.usedPercentage.has_value(); };
    if (std::ranges::none_of(reading.windows, statesPercentage)) return std::nullopt;
    return reading;
}

} // namespace UsageModel
