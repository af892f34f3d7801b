#include "HarrowlaneApp/Copy/WeekCopy.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Copy/Words.h"
#include "UsageEngine/TimeText.h"

namespace HarrowlaneApp::WeekCopy {

namespace {

using UsageModel::Calendar;
using UsageModel::SeriesScale;
using UsageModel::WeekSeries;
namespace TimeText = UsageEngine::TimeText;

struct Sentences {
    std::string headline;
    std::string detail;
};

double landing(const WeekSeries& series) {
    return series.coneLikelyEnd.used;
}

double elapsed(const WeekSeries& series) {
    return (series.now - series.windowStart) / std::max(series.windowEnd - series.windowStart, 1.0);
}

std::string timeLeft(const WeekSeries& series) {
    return TimeText::duration(series.windowEnd - series.now);
}

bool landsOver(const WeekSeries& series) {
    return landing(series) > limit(series);
}

Sentences typicalSentences(const WeekSeries& series) {
    if (!series.intensityIsMeaningful) {
        return {"Warming up — not enough of the week has elapsed yet to gauge your pace",
                "Connect the usage helper in Settings to see this against your account's real limits."};
    }
    return {"This week is running " + Figures::multiple(series.intensity) + " a typical week for you",
            "That is the heaviest stretch in your recent history. Whether it breaks your account cap is a question "
            "these logs cannot answer — the shape of the week is in them, the ceiling is not."};
}

std::vector<Tile> typicalTiles(const WeekSeries& series) {
    return {
        {Figures::multiple(series.intensity), "", "projected vs a typical week", Standing::close},
        {Figures::multiple(series.usedNow), "", "of a typical week so far", {}},
        {Figures::percentNumber(elapsed(series)), "%", "of the week elapsed", {}},
        {timeLeft(series), "", "until reset (estimated)", {}},
    };
}

Standing standingOfRatio(double ratio) {
    if (ratio > 1.25) return Standing::over;
    return ratio > 1.05 ? Standing::close : Standing::comfortable;
}

std::vector<Tile> capTiles(const WeekSeries& series) {
    const double ratio = Pace::status({.tokensUsed = series.usedNow, .timeUsed = elapsed(series)}).ratio;
    return {
        {Figures::percentNumber(series.usedNow), "%", "of the weekly cap used", standingOfRatio(ratio)},
        {Figures::percentNumber(elapsed(series)), "%", "of the week elapsed", {}},
        {Pace::ratioText(ratio), "", "used vs. time elapsed", {}},
        {Figures::multiple(series.intensity), "", "vs a typical week", {}},
        {timeLeft(series), "", "until reset", {}},
        {Figures::percentNumber(landing(series)), "%", "projected by reset", standing(series)},
    };
}

/// "Sonnet at low effort", "Haiku", "low effort"; empty for no change.
std::string labelOf(const UsageModel::ModelAndEffort& change) {
    std::vector<std::string> parts;
    if (change.model) parts.emplace_back(displayName(*change.model));
    if (change.effort) parts.push_back(Words::lowerCase(label(*change.effort)) + " effort");
    return Words::joined(parts, " at ");
}

/// What the cheapest change would do about a week that runs out; empty where none is known.
std::string changeSentence(const WeekSeries& series) {
    if (!series.whatIf) return "";
    const auto change = series.whatIf->cheapestCombination();
    const std::string label = labelOf(change);
    if (label.empty()) return "";
    if (series.ghostLanding(series.whatIf->factor(change)) < limit(series)) {
        return " " + label + " lands you inside the cap.";
    }
    return " Even " + label + " leaves you over — no single change gets you there on its own.";
}

Sentences runsOutSentences(const WeekSeries& series, const Calendar& calendar) {
    const std::string missing = TimeText::duration(series.windowEnd - *series.crossing);
    return {"You run out " + TimeText::dayAndTime(*series.crossing, calendar),
            "That is " + missing + " short of the reset." + changeSentence(series)};
}

Sentences capSentences(const WeekSeries& series, const Calendar& calendar) {
    constexpr double mostForUnspent = 64.0;
    if (series.crossing && landsOver(series)) return runsOutSentences(series, calendar);
    const double percent = Figures::wholePercent(landing(series));
    if (percent <= mostForUnspent && series.norm.supportsUnderUseClaims()) {
        return {"You will leave about " + Figures::fixed(100 - percent, 0) + "% of the week unspent",
                "Room to spare at your current pace, with " + timeLeft(series) + " left in the window."};
    }
    return {"On track to finish the week around " + Figures::percent(landing(series)),
            "Running " + Figures::multiple(series.intensity) + " your usual pace with " + timeLeft(series) + " left."};
}

std::string resetLine(const WeekSeries& series, const Calendar& calendar) {
    return (series.boundaryEstimated ? "resets ~" : "resets ") + TimeText::hourStamp(series.windowEnd, calendar) +
           " · " + timeLeft(series);
}

Compact typicalCompact(const WeekSeries& series, const Calendar& calendar) {
    return {
        .headline = series.intensityIsMeaningful ? Figures::multiple(series.intensity) + " a typical week"
                                                 : std::string("Warming up"),
        .badge = "No gauge",
        .resetLine = resetLine(series, calendar),
        .stats = {{Figures::multiple(series.usedNow), "of typical"}, {Figures::percent(elapsed(series)), "elapsed"}},
        .standing = Standing::comfortable,
    };
}

std::string capHeadline(const WeekSeries& series, const Calendar& calendar) {
    if (landsOver(series)) {
        return series.crossing ? "Runs out " + TimeText::shortStamp(*series.crossing, calendar)
                               : std::string("Over the cap by reset");
    }
    if (hasRoomToSpare(series)) return "Lands " + Figures::percent(landing(series)) + ", room to spare";
    return "On track for " + Figures::percent(landing(series));
}

std::string capBadge(const WeekSeries& series) {
    const Standing now = standing(series);
    if (landsOver(series)) return now == Standing::over ? "Over pace" : "Cutting it fine";
    if (hasRoomToSpare(series)) return "Under pace";
    return now == Standing::close ? "Close to the cap" : "On track";
}

Compact capCompact(const WeekSeries& series, const Calendar& calendar) {
    return {
        .headline = capHeadline(series, calendar),
        .badge = capBadge(series),
        .resetLine = resetLine(series, calendar),
        .stats = {{Figures::percent(series.usedNow), "used"}, {Figures::percent(elapsed(series)), "elapsed"}},
        .standing = standing(series),
    };
}

} // namespace

Standing standing(const WeekSeries& series) {
    constexpr double smallestLimit = 1e-9;
    const double x = landing(series) / std::max(limit(series), smallestLimit);
    if (x > 1.05) return Standing::over;
    return x >= 0.95 ? Standing::close : Standing::comfortable;
}

Signal signal(Standing standing) {
    constexpr std::array<Signal, 3> signals{Signal::good, Signal::warn, Signal::crit};
    return signals[UsageModel::caseIndex(standing)];
}

UsageModel::Severity severity(Standing standing) {
    using UsageModel::Severity;
    constexpr std::array<Severity, 3> severities{Severity::green, Severity::amber, Severity::red};
    return severities[UsageModel::caseIndex(standing)];
}

bool hasRoomToSpare(const WeekSeries& series) {
    constexpr double roomBelow = 0.65;
    return landing(series) < roomBelow * limit(series) && series.norm.supportsUnderUseClaims();
}

double limit(const WeekSeries& series) {
    return series.limitLevel.value_or(1.0);
}

Content content(const WeekSeries& series, const Calendar& calendar) {
    const bool isTypical = series.scale == SeriesScale::typicalWeeks;
    Sentences said = isTypical ? typicalSentences(series) : capSentences(series, calendar);
    return {
        .headline = std::move(said.headline),
        .detail = std::move(said.detail),
        .tiles = isTypical ? typicalTiles(series) : capTiles(series),
    };
}

Compact compact(const WeekSeries& series, const Calendar& calendar) {
    return series.scale == SeriesScale::typicalWeeks ? typicalCompact(series, calendar) : capCompact(series, calendar);
}

} // namespace HarrowlaneApp::WeekCopy
