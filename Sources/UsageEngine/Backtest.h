#pragma once

#include <optional>
#include <span>
#include <vector>

#include "UsageEngine/ForecastTuning.h"
#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/Fields.h"

/// How good the forecasts would have been: a week that is over is replayed, and what was forecast at each of a set of
/// instants, from what was known by then, is held against what the week became. Errors are ratios: 0.1 is 10 %.
namespace UsageEngine::Backtest {

struct Trial {
    UsageModel::Date asOf;
    double predictedFinal = 0.0;
    double actualFinal = 0.0;
    double absoluteErrorPct = 0.0;

    friend bool operator==(const Trial&, const Trial&) = default;
};

struct Result {
    /// By `asOf`.
    std::vector<Trial> trials;
    double medianAbsoluteErrorPct = 0.0;
    double p90AbsoluteErrorPct = 0.0;
    /// Above 0 where the forecast says too much.
    double medianSignedErrorPct = 0.0;
    double shareOverPredicted = 0.0;

    friend bool operator==(const Result&, const Result&) = default;
};

struct Question {
    /// The whole history, also what came after the week.
    WeighedTurns turns;
    const UsageModel::Calendar& calendar;
    /// The completed week.
    TimeSpan week;
    /// In any order; those outside the week give no trial.
    std::span<const UsageModel::Date> sampleTimes;
    std::optional<double> recencyHalfLife = ForecastTuning::defaultRecencyHalfLife;
    double shrinkage = ForecastTuning::defaultIntensityShrinkage;
    /// From log units to the caller's.
    double scale = 1.0;
    /// Which forecast: from the bottom up wins over the composite; without both the shape.
    bool bottomUp = ForecastTuning::useBottomUpForecast;
    double bottomUpWeight = ForecastTuning::defaultRecencyWeight;
    bool useComposite = false;
};

/// An instant at which no forecast can be made gives no trial; without trials all figures are 0.
[[nodiscard]] Result evaluate(const Question& question);

/// The figures of trials, in the order given.
[[nodiscard]] Result summarised(std::vector<Trial> trials);

[[nodiscard]] Trial trial(UsageModel::Date asOf, double predictedFinal, double actualFinal);

/// The nearest rank, not interpolated: the value at place `q` times their number, 0 of none. Half of two values is the
/// larger.
[[nodiscard]] double percentile(std::vector<double> values, double q);

template <UsageModel::FieldsOf<Trial> Self>
void visitFields(Self& self, auto&& visit) {
    visit("asOf", self.asOf);
    visit("predictedFinal", self.predictedFinal);
    visit("actualFinal", self.actualFinal);
    visit("absoluteErrorPct", self.absoluteErrorPct);
}

template <UsageModel::FieldsOf<Result> Self>
void visitFields(Self& self, auto&& visit) {
    visit("trials", self.trials);
    visit("medianAbsoluteErrorPct", self.medianAbsoluteErrorPct);
    visit("p90AbsoluteErrorPct", self.p90AbsoluteErrorPct);
    visit("medianSignedErrorPct", self.medianSignedErrorPct);
    visit("shareOverPredicted", self.shareOverPredicted);
}

} // namespace UsageEngine::Backtest
