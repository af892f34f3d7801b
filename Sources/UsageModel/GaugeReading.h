#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "UsageModel/Anchor.h"
#include "UsageModel/Fields.h"

namespace UsageModel {

/// The official state of one window.
struct GaugeWindow {
    /// Percent used, 0 to 100, not clamped.
    std::optional<double> usedPercentage;
    /// The reset instant, in seconds since 1970.
    std::optional<double> resetsAt;

    friend bool operator==(const GaugeWindow&, const GaugeWindow&) = default;
};

template <FieldsOf<GaugeWindow> Self>
void visitFields(Self& self, auto&& visit) {
    visit("usedPercentage", self.usedPercentage);
    visit("resetsAt", self.resetsAt);
}

/// The whole content of the gauge file.
struct GaugeReading {
    /// When the reading was taken, in seconds since 1970.
    double capturedAt = 0.0;
    /// Who produced it: "oauth" marks the polled source, any other text counts as the status line.
    std::string source;
    /// By `statusLineKey`; names that are no window's are kept and mean nothing.
    std::map<std::string, GaugeWindow> windows;

    /// A gauge file's text. Absent when it is not one JSON object with the three members of the right types.
    [[nodiscard]] static std::optional<GaugeReading> decode(std::string_view text);

    /// What the reading asserts: one percentage for each window that states one, in the order of the windows.
    [[nodiscard]] std::vector<Anchor> anchors() const;

    friend bool operator==(const GaugeReading&, const GaugeReading&) = default;
};

template <FieldsOf<GaugeReading> Self>
void visitFields(Self& self, auto&& visit) {
    visit("capturedAt", self.capturedAt);
    visit("source", self.source);
    visit("windows", self.windows);
}

} // namespace UsageModel
