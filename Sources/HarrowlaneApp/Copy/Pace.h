#pragma once

#include <optional>
#include <string>

#include "UsageModel/Fields.h"
#include "UsageModel/UsageSnapshot.h"

/// Tokens against time: how fast a window's tokens are spent, compared with how fast its time goes by.
namespace HarrowlaneApp::Pace {

/// Where a window stands. Fractions: 1 is all of its tokens, or all of its time.
struct Shares {
    double tokensUsed = 0.0;
    double timeUsed = 0.0;
};

struct Status {
    /// Tokens over time. 1 at the very beginning of a window, which says nothing about the rate.
    double ratio = 1.0;
    std::string label;
    UsageModel::Severity severity = UsageModel::Severity::green;

    friend bool operator==(const Status&, const Status&) = default;
};

template <UsageModel::FieldsOf<Status> Self>
void visitFields(Self& self, auto&& visit) {
    visit("ratio", self.ratio);
    visit("label", self.label);
    visit("severity", self.severity);
}

[[nodiscard]] Status status(const Shares& shares);

/// How the rate came about; several lines.
[[nodiscard]] std::string explanation(const Shares& shares);

inline constexpr std::string_view ratioCaption = "burn rate";
/// "1.4×", held to 0.0 through 9.9: the figure of a card.
[[nodiscard]] std::string ratioText(double ratio);
/// The same figure in words, as it is; with the label.
[[nodiscard]] std::string accessibleRatio(const Shares& shares);

/// "26% overspent"; absent below 2 percent.
[[nodiscard]] std::optional<std::string> overspendNote(const Shares& shares);

inline constexpr std::string_view tokensKey = "tokens";
inline constexpr std::string_view sessionKey = "session";
/// Both rails in words.
[[nodiscard]] std::string accessibleRails(const Shares& shares);

/// From `gate` on the rail of tokens shows in the colours of `severity`: that part was spent before its time.
struct HotPart {
    double gate = 0.0;
    UsageModel::Severity severity = UsageModel::Severity::amber;

    friend bool operator==(const HotPart&, const HotPart&) = default;
};

/// Absent while the tokens do not run ahead.
[[nodiscard]] std::optional<HotPart> hotPart(const Shares& shares);

/// A share of a rail `length` points long.
struct RailShare {
    double fraction = 0.0;
    double length = 0.0;
};

/// How much of the rail is filled, in points: held to the rail, and 3 at least where there is anything to show.
[[nodiscard]] double filledLength(const RailShare& share);

/// Which of the two texts under the ends of the rails keep clear of the clock line.
struct AxisLabels {
    bool start = true;
    bool end = true;

    friend bool operator==(const AxisLabels&, const AxisLabels&) = default;
};

/// `clock` is the place of the clock line.
[[nodiscard]] AxisLabels axisLabels(const RailShare& clock);

} // namespace HarrowlaneApp::Pace
