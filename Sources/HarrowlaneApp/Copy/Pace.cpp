#include "HarrowlaneApp/Copy/Pace.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/Figures.h"

namespace HarrowlaneApp::Pace {

namespace {

using UsageModel::Severity;

// One large turn in the first minutes would read as a runaway.
constexpr double earliestRate = 0.06;
constexpr double overusing = 1.25;
constexpr double overPace = 1.05;
constexpr double onPace = 0.9;

bool isTooEarly(const Shares& shares) {
    return shares.timeUsed < earliestRate;
}

std::string verdictOn(double ratio) {
    constexpr double above = 1.02;
    constexpr double below = 0.98;
    if (ratio > above) return "Above 1.0×, so tokens are running out faster than the session is.";
    if (ratio < below) return "Below 1.0×, so tokens are running out slower than the session is.";
    return "At 1.0×, tokens and the session run out together.";
}

} // namespace

Status status(const Shares& shares) {
    if (isTooEarly(shares)) return {.ratio = 1.0, .label = "On pace", .severity = Severity::green};
    const double ratio = shares.tokensUsed / shares.timeUsed;
    if (ratio > overusing) return {.ratio = ratio, .label = "Overusing", .severity = Severity::red};
    if (ratio > overPace) return {.ratio = ratio, .label = "Over pace", .severity = Severity::amber};
    return {.ratio = ratio, .label = ratio >= onPace ? "On pace" : "Under pace", .severity = Severity::green};
}

std::string explanation(const Shares& shares) {
    if (isTooEarly(shares)) {
        return "Only " + Figures::finePercent(shares.timeUsed) +
               " into the session — too early to read a rate. One large turn in the first few minutes divides by "
               "almost nothing and would read as a runaway. This settles shortly.";
    }
    const double ratio = status(shares).ratio;
    return "Burn rate = tokens spent ÷ session elapsed\n" + Figures::finePercent(shares.tokensUsed) + " ÷ " +
           Figures::finePercent(shares.timeUsed) + " ≈ " + ratioText(ratio) + "\n\n" + verdictOn(ratio);
}

std::string ratioText(double ratio) {
    return Figures::fixed(std::clamp(ratio, 0.0, 9.9), 1) + "×";
}

std::string accessibleRatio(const Shares& shares) {
    const Status now = status(shares);
    return "Burn rate " + Figures::fixed(now.ratio, 1) + " times, " + now.label;
}

std::optional<std::string> overspendNote(const Shares& shares) {
    constexpr double leastWorthTelling = 2.0;
    const double overspent = shares.tokensUsed - shares.timeUsed;
    if (!(Figures::wholePercent(overspent) >= leastWorthTelling)) return std::nullopt;
    return Figures::percent(overspent) + " overspent";
}

std::string accessibleRails(const Shares& shares) {
    return Figures::percent(shares.tokensUsed) + " of tokens spent against " + Figures::percent(shares.timeUsed) +
           " of the window";
}

std::optional<HotPart> hotPart(const Shares& shares) {
    const Severity severity = status(shares).severity;
    if (severity == Severity::green) return std::nullopt;
    return HotPart{.gate = shares.timeUsed, .severity = severity};
}

double filledLength(const RailShare& share) {
    constexpr double leastVisible = 3.0;
    if (!(share.fraction > 0)) return 0.0;
    return std::max(std::min(share.fraction, 1.0) * share.length, leastVisible);
}

AxisLabels axisLabels(const RailShare& clock) {
    constexpr double clearance = 62.0;
    const double place = std::clamp(clock.fraction, 0.0, 1.0) * clock.length;
    return {.start = place >= clearance, .end = clock.length - place >= clearance};
}

} // namespace HarrowlaneApp::Pace
