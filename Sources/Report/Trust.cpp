#include "Report/Trust.h"

#include <algorithm>
#include <optional>

#include "UsageEngine/Backtest.h"
#include "UsageEngine/Rollups.h"

namespace Report {

namespace {

using UsageEngine::TimeSpan;
using UsageEngine::WeighedTurns;
using UsageModel::Date;

namespace Backtest = UsageEngine::Backtest;
using Trials = std::vector<Backtest::Trial>;

constexpr double weekSeconds = 604800.0;

double totalOf(const TrustQuestion& question, const TimeSpan& span) {
    return UsageEngine::Rollups::weightedUsage(question.turns, span);
}

TimeSpan spanOf(const Week& week) {
    return {.from = week.start, .to = week.end};
}

/// By time. The history covers them and the week before each.
std::vector<Week> completedWeeks(const TrustQuestion& question) {
    std::vector<Week> weeks;
    if (question.turns.empty()) return weeks;
    const Date earliest = question.turns.front().ts;
    for (Date end = question.weekStart; weeks.size() < Trust::mostWeeks; end = end - weekSeconds) {
        const Week week{.start = end - weekSeconds, .end = end};
        if (!(week.start - weekSeconds >= earliest)) break;
        weeks.push_back(week);
    }
    std::ranges::reverse(weeks);
    return weeks;
}

/// The middles of as many equal parts.
std::vector<Date> instantsOf(const Week& week) {
    std::vector<Date> instants;
    for (std::size_t i = 0; i < Trust::instantsPerWeek; ++i) {
        const double share = (static_cast<double>(i) + 0.5) / static_cast<double>(Trust::instantsPerWeek);
        instants.push_back(week.start + share * (week.end - week.start));
    }
    return instants;
}

Trials forecastTrials(const TrustQuestion& question, const Week& week, Method method) {
    const std::vector<Date> instants = instantsOf(week);
    return Backtest::evaluate({
                                  .turns = question.turns,
                                  .calendar = question.calendar,
                                  .week = spanOf(week),
                                  .sampleTimes = instants,
                                  .bottomUp = method == Method::bottomUp,
                                  .useComposite = method == Method::composite,
                              })
        .trials;
}

double naiveTotal(const TrustQuestion& question, const Week& week, Method method, Date asOf) {
    if (method == Method::lastWeek) return totalOf(question, {.from = week.start - weekSeconds, .to = week.start});
    const double share = (asOf - week.start) / (week.end - week.start);
    return totalOf(question, {.from = week.start, .to = asOf}) / share;
}

Trials naiveTrials(const TrustQuestion& question, const Week& week, Method method) {
    const double actual = totalOf(question, spanOf(week));
    Trials trials;
    for (const Date asOf : instantsOf(week))
        trials.push_back(Backtest::trial(asOf, naiveTotal(question, week, method, asOf), actual));
    return trials;
}

Score scoreOf(const TrustQuestion& question, const std::vector<Week>& weeks, Method method) {
    const bool isNaive = method == Method::straightLine || method == Method::lastWeek;
    Trials all;
    for (const Week& week : weeks) {
        const Trials trials = isNaive ? naiveTrials(question, week, method) : forecastTrials(question, week, method);
        all.insert(all.end(), trials.begin(), trials.end());
    }
    const Backtest::Result result = Backtest::summarised(std::move(all));
    return {
        .trials = static_cast<std::int64_t>(result.trials.size()),
        .medianAbsoluteError = result.medianAbsoluteErrorPct,
        .p90AbsoluteError = result.p90AbsoluteErrorPct,
        .medianSignedError = result.medianSignedErrorPct,
        .shareOverPredicted = result.shareOverPredicted,
    };
}

} // namespace

Trust trustOf(const TrustQuestion& question) {
    Trust trust{.weeks = completedWeeks(question)};
    trust.unusedWeeks = static_cast<std::int64_t>(
        std::erase_if(trust.weeks, [&](const Week& week) { return !(totalOf(question, spanOf(week)) > 0); }));
    for (const Method method : UsageModel::allCases<Method>)
        trust.scores.set(method, scoreOf(question, trust.weeks, method));
    return trust;
}

} // namespace Report
