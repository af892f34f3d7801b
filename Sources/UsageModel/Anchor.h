#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "UsageModel/Date.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"
#include "UsageModel/WindowKind.h"

namespace UsageModel {

/// What a point of truth states: a used fraction, or that the limit was hit.
enum class AnchorKind { percentage, ceiling };

template <>
struct EnumNames<AnchorKind> {
    static constexpr std::array<std::string_view, 2> names{"percentage", "ceiling"};
};

/// Where a point of truth came from.
enum class AnchorSource { statusLine, oauth, syntheticLog };

template <>
struct EnumNames<AnchorSource> {
    static constexpr std::array<std::string_view, 3> names{"statusLine", "oauth", "syntheticLog"};
};

/// One point of truth about a window.
struct Anchor {
    Date ts;
    AnchorSource source = AnchorSource::statusLine;
    WindowKind window = WindowKind::session5h;
    AnchorKind kind = AnchorKind::percentage;
    /// The fraction of the window used, 1 being the limit.
    std::optional<double> usedFraction;
    std::optional<Date> resetsAt;

    friend bool operator==(const Anchor&, const Anchor&) = default;
};

template <FieldsOf<Anchor> Self>
void visitFields(Self& self, auto&& visit) {
    visit("ts", self.ts);
    visit("source", self.source);
    visit("window", self.window);
    visit("kind", self.kind);
    visit("usedFraction", self.usedFraction);
    visit("resetsAt", self.resetsAt);
}

/// The used fraction that the anchor stands for: 1 for a ceiling; else the stated one, 0 where none is stated.
[[nodiscard]] double assertedFraction(const Anchor& anchor);

} // namespace UsageModel
