#include "UsageEngine/Backtest.h"

#include <algorithm>
#include <cmath>

#include "UsageEngine/Baseline.h"
#include "UsageEngine/BottomUpForecast.h"
#include "UsageEngine/CompositeForecast.h"
#include "UsageEngine/ForecastShape.h"
#include "UsageEngine/Rollups.h"
#include "UsageEngine/WeeklyNormLearning.h"

namespace UsageEngine::Backtest {

namespace {

using UsageModel::Date;

constexpr int weeksOfProfile = 8;
constexpr int windowsOfHabits = 4;

std::optional<Date> earliestOf(WeighedTurns turns) {
    return turns.empty() ? std::nullopt : std::optional(turns.front().ts);
}

double usedBy(Date asOf, const Question& question) {
    return Rollups::weightedUsage(question.turns, {.from = question.week.from, .to = asOf}) * question.scale;
}

std::optional<double> finalByBottomUp(Date asOf, const Question& question) {
    const WeekdayProfile profile = WeekdayProfile::learn({
        .turns = question.turns,
        .calendar = question.calendar,
        .through = asOf,
        .lookbackWeeks = weeksOfProfile,
        .scale = question.scale,
    });
    const auto forecast = BottomUpForecast::make({
        .profile = profile,
        .usedNow = usedBy(asOf, question),
        .window = question.week,
        .now = asOf,
        .calendar = question.calendar,
        .recencyWeight = question.bottomUpWeight,
        .sessionCapCost = {},
    });
    return forecast ? std::optional(forecast->landing()) : std::nullopt;
}

std::optional<double> finalByComposite(Date asOf, const Question& question) {
    const auto forecast = CompositeForecast::make({
        .turns = question.turns,
        .calendar = question.calendar,
        .window = question.week,
        .now = asOf,
        .scale = question.scale,
        .earliestEvent = earliestOf(question.turns),
        .recencyHalfLife = question.recencyHalfLife,
        .shrinkage = question.shrinkage,
    });
    if (!forecast) return std::nullopt;
    return forecast->projected(question.week.to, {.edge = CompositeForecast::Edge::likely, .kFactor = 1.0});
}

std::optional<double> finalByShape(Date asOf, const Question& question) {
    const double span = question.week.to - question.week.from;
    const Baseline baseline = Baseline::learn({
        .turns = question.turns,
        .calendar = question.calendar,
        .from = question.week.from - windowsOfHabits * span,
        .to = question.week.from,
        .filter = {},
    });
    const UsageModel::WeeklyNorm norm = learnWeeklyNorm({
        .turns = question.turns,
        .windowStart = question.week.from,
        .span = span,
        .now = asOf,
        .lookback = windowsOfHabits,
        .filter = {},
        .earliestEvent = earliestOf(question.turns),
    });
    const double used = usedBy(asOf, question);
    const auto shape = ForecastShape::make({
        .baseline = baseline,
        .norm = norm,
        .scale = question.scale,
        .window = question.week,
        .now = asOf,
        .usedNow = used,
        .actualCumulative = Rollups::hourlyCumulative({.turns = question.turns,
                                                       .span = {.from = question.week.from, .to = asOf},
                                                       .scale = question.scale,
                                                       .bucket = {}}),
        .recencyHalfLife = question.recencyHalfLife,
        .shrinkage = question.shrinkage,
    });
    if (!shape) return std::nullopt;
    return shape->projected({.usedNow = used, .sNow = shape->share(asOf), .k = {}}, question.week.to);
}

std::optional<double> predictedFinal(Date asOf, const Question& question) {
    if (question.bottomUp) return finalByBottomUp(asOf, question);
    return question.useComposite ? finalByComposite(asOf, question) : finalByShape(asOf, question);
}

double denominator(double actualFinal) {
    constexpr double smallestTotal = 1e-9;
    return std::max(smallestTotal, actualFinal);
}

template <typename Value>
std::vector<double> valuesOf(const std::vector<Trial>& trials, Value&& value) {
    std::vector<double> values;
    values.reserve(trials.size());
    std::ranges::transform(trials, std::back_inserter(values), value);
    return values;
}

} // namespace

Trial trial(Date asOf, double predictedFinal, double actualFinal) {
    return {
        .asOf = asOf,
        .predictedFinal = predictedFinal,
        .actualFinal = actualFinal,
        .absoluteErrorPct = std::abs(predictedFinal - actualFinal) / denominator(actualFinal),
    };
}

Result summarised(std::vector<Trial> trials) {
    if (trials.empty()) return {};
    const auto absolute = valuesOf(trials, [](const Trial& one) { return one.absoluteErrorPct; });
    const auto signedErrors = valuesOf(
        trials, [](const Trial& one) { return (one.predictedFinal - one.actualFinal) / denominator(one.actualFinal); });
    const auto over =
        std::ranges::count_if(trials, [](const Trial& one) { return one.predictedFinal > one.actualFinal; });
    const double share = static_cast<double>(over) / static_cast<double>(trials.size());
    return {
        .trials = std::move(trials),
        .medianAbsoluteErrorPct = percentile(absolute, 0.5),
        .p90AbsoluteErrorPct = percentile(absolute, 0.9),
        .medianSignedErrorPct = percentile(signedErrors, 0.5),
        .shareOverPredicted = share,
    };
}

Result evaluate(const Question& question) {
    const double actualFinal = Rollups::weightedUsage(question.turns, question.week) * question.scale;
    std::vector<Date> samples{question.sampleTimes.begin(), question.sampleTimes.end()};
    std::ranges::sort(samples);
    std::vector<Trial> trials;
    for (const Date asOf : samples) {
        if (!question.week.contains(asOf)) continue;
        if (const auto predicted = predictedFinal(asOf, question))
            trials.push_back(trial(asOf, *predicted, actualFinal));
    }
    return summarised(std::move(trials));
}

double percentile(std::vector<double> values, double q) {
    if (values.empty()) return 0.0;
    std::ranges::sort(values);
    const double last = static_cast<double>(values.size() - 1);
    const double place = std::clamp(std::floor(q * static_cast<double>(values.size())), 0.0, last);
    return values[static_cast<std::size_t>(place)];
}

} // namespace UsageEngine::Backtest
