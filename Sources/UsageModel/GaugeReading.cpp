#include "UsageModel/GaugeReading.h"

#include "UsageModel/Json.h"

namespace UsageModel {

std::optional<GaugeReading> GaugeReading::decode(std::string_view text) {
    return Json::decodeText<GaugeReading>(text);
}

std::vector<Anchor> GaugeReading::anchors() const {
    const AnchorSource anchorSource = source == "oauth" ? AnchorSource::oauth : AnchorSource::statusLine;
    std::vector<Anchor> anchors;
    for (const WindowKind kind : allCases<WindowKind>) {
        const auto window = windows.find(std::string(statusLineKey(kind)));
        if (window == windows.end() || !window->second.usedPercentage) continue;
        const auto& resetsAt = window->second.resetsAt;
        anchors.push_back({
            .ts = Date{capturedAt},
            .source = anchorSource,
            .window = kind,
            .kind = AnchorKind::percentage,
            .usedFraction = *window->second.usedPercentage / 100,
            .resetsAt = resetsAt ? std::optional(Date{*resetsAt}) : std::nullopt,
        });
    }
    return anchors;
}

} // namespace UsageModel
