#include "UsageEngine/Backtest.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"
#include "UsageModel/Printing.h"

namespace UsageEngine {
namespace {

using Backtest::percentile;
using Backtest::Result;
using Backtest::Trial;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::ModelClass;

const Calendar utc = Calendar::utc();

/// One log unit at each noon of the eight weeks before `sunday`, then as many as told at those of the week itself.
Turns noons(const std::vector<double>& weekOf, ModelClass modelClass = ModelClass::opus) {
    Turns turns;
    for (double age = 8 * week; age > 0; age -= day) turns.push_back(turnAt(sunday + (12 * hour - age), 1));
    double at = 12 * hour;
    for (const double units : weekOf) {
        turns.push_back(turnAt(sunday + at, units, modelClass));
        at += day;
    }
    return turns;
}

const std::vector<double> twice(7, 2.0);

struct Knobs {
    bool bottomUp = true;
    bool useComposite = false;
    double bottomUpWeight = 1.0;
    double scale = 1.0;
    std::optional<double> recencyHalfLife;
    double shrinkage = 0.0;
};

Result replayed(const Turns& turns, const std::vector<Date>& sampleTimes, const Knobs& knobs = {}) {
    return Backtest::evaluate({.turns = turns,
                               .calendar = utc,
                               .week = {.from = sunday, .to = sunday + week},
                               .sampleTimes = sampleTimes,
                               .recencyHalfLife = knobs.recencyHalfLife,
                               .shrinkage = knobs.shrinkage,
                               .scale = knobs.scale,
                               .bottomUp = knobs.bottomUp,
                               .bottomUpWeight = knobs.bottomUpWeight,
                               .useComposite = knobs.useComposite});
}

double predicted(const Turns& turns, const Knobs& knobs = {}) {
    const Result result = replayed(turns, {sunday + 3 * day}, knobs);
    return result.trials.size() == 1 ? result.trials.front().predictedFinal : -1;
}

TEST(Backtest, WithoutSamplesInTheWeekAllIsNought) {
    EXPECT_EQ(replayed(noons(twice), {}), Result{});
    EXPECT_EQ(replayed(noons(twice), {sunday - 1.0, sunday + week, sunday + 2 * week}), Result{});
}

TEST(Backtest, AWeekWithoutALengthHasNoTrials) {
    const Turns turns = noons(twice);
    const std::vector samples{sunday};
    for (const double length : {0.0, -1.0}) {
        for (const bool bottomUp : {false, true}) {
            EXPECT_EQ(Backtest::evaluate({.turns = turns,
                                          .calendar = utc,
                                          .week = {.from = sunday, .to = sunday + length},
                                          .sampleTimes = samples,
                                          .bottomUp = bottomUp}),
                      Result{});
        }
    }
}

TEST(Backtest, AtTheVeryStartThereIsNothingToGoBy) {
    EXPECT_TRUE(replayed(noons(twice), {sunday}).trials.empty());
    EXPECT_TRUE(replayed(noons(twice), {sunday}, {.bottomUp = false}).trials.empty());
    EXPECT_TRUE(replayed(noons(twice), {sunday}, {.bottomUp = false, .useComposite = true}).trials.empty());
    EXPECT_EQ(replayed(noons(twice), {sunday + 1.0}).trials.size(), 1U);
    EXPECT_EQ(replayed(noons(twice), {sunday + (week - 1.0)}).trials.size(), 1U);
}

TEST(Backtest, WithoutHistoryOnlyTheBottomUpForecastSpeaks) {
    const Turns turns{turnAt(sunday + day, 4)};
    EXPECT_EQ(predicted(turns), 4) << "nothing is usual, so nothing more is expected";
    EXPECT_EQ(predicted(Turns{}), 0);
    EXPECT_EQ(predicted(Turns{}, {.bottomUp = false}), -1);
    EXPECT_EQ(predicted(Turns{}, {.bottomUp = false, .useComposite = true}), -1);
}

TEST(Backtest, BottomUpLetsTheWeeksOwnPaceGrowIn) {
    // Six of three usual: a factor of 2, believed to three sevenths, on four more days.
    EXPECT_NEAR(predicted(noons(twice)), 6 + 4 * (1 + 3.0 / 7), 1e-9);
    EXPECT_NEAR(predicted(noons(twice), {.bottomUpWeight = 0.5}), 6 + 4 * (1 + 1.5 / 7), 1e-9);
    EXPECT_NEAR(predicted(noons(twice), {.bottomUpWeight = 0}), 10, 1e-9);
}

TEST(Backtest, TheShapeStretchesTheTypicalWeek) {
    EXPECT_NEAR(predicted(noons(twice), {.bottomUp = false}), 14, 1e-9);
    EXPECT_NEAR(predicted(noons(twice), {.bottomUp = false, .shrinkage = -0.5}), 10, 1e-9);
    EXPECT_NEAR(predicted(noons(twice), {.bottomUp = false, .useComposite = true}), 14, 1e-9);
    EXPECT_NEAR(predicted(noons(twice), {.bottomUp = false, .useComposite = true, .shrinkage = -0.5}), 10, 1e-9);
}

TEST(Backtest, WhatIsRecentCountsMore) {
    const Turns rising = noons({1, 1, 4, 0, 0, 0, 0});
    for (const bool useComposite : {false, true}) {
        const Knobs plain{.bottomUp = false, .useComposite = useComposite};
        EXPECT_NEAR(predicted(rising, plain), 6 + 2 * 4, 1e-9);
        const Knobs recent{.bottomUp = false, .useComposite = useComposite, .recencyHalfLife = hour};
        EXPECT_NEAR(predicted(rising, recent), 6 + 4 * 4, 1e-6) << "the last noon outweighs the others";
    }
}

TEST(Backtest, TheForecastIsTheOneAskedFor) {
    // Opus on three days and Sonnet on the four that follow; this week Opus twice as much.
    Turns turns;
    for (double age = 8 * week; age >= 0; age -= week) {
        for (double i = 0; i < 7; ++i)
            turns.push_back(turnAt(sunday + (i * day + 12 * hour - age), i < 3 && age == 0 ? 2 : 1,
                                   i < 3 ? ModelClass::opus : ModelClass::sonnet));
    }
    EXPECT_NEAR(predicted(turns, {.bottomUp = false}), 14, 1e-9);
    EXPECT_NEAR(predicted(turns, {.bottomUp = false, .useComposite = true}), 6, 1e-9) << "Sonnet has yet to begin";
    EXPECT_NEAR(predicted(turns, {.bottomUp = true, .useComposite = true}), 6 + 4 * (1 + 3.0 / 7), 1e-9)
        << "from the bottom up wins";
}

TEST(Backtest, OnlyWhatWasKnownByThenCounts) {
    Turns early = noons({2, 2, 2, 0, 0, 0, 0});
    Turns late = noons({2, 2, 2, 50, 60, 70, 80});
    late.push_back(turnAt(sunday + week, 1000));
    for (const Knobs& knobs : {Knobs{}, Knobs{.bottomUp = false}, Knobs{.bottomUp = false, .useComposite = true}})
        EXPECT_EQ(predicted(early, knobs), predicted(late, knobs));
    early.push_back(turnAt(sunday + 3 * day, 1000));
    EXPECT_EQ(predicted(early), predicted(late)) << "a turn at the sample's own instant came too late";
}

TEST(Backtest, TheActualFinalIsTheWeeksOwn) {
    Turns turns = noons(twice);
    turns.push_back(turnAt(sunday, 100));
    turns.push_back(turnAt(sunday - 1.0, 1000));
    turns.push_back(turnAt(sunday + week, 1000));
    EXPECT_EQ(replayed(turns, {sunday + day}).trials.front().actualFinal, 114);
}

TEST(Backtest, TrialsStandByTime) {
    const Result result = replayed(noons(twice), {sunday + 5 * day, sunday + day, sunday + 3 * day, sunday + week});
    ASSERT_EQ(result.trials.size(), 3U);
    EXPECT_EQ(result.trials[0].asOf, sunday + day);
    EXPECT_EQ(result.trials[1].asOf, sunday + 3 * day);
    EXPECT_EQ(result.trials[2].asOf, sunday + 5 * day);
}

TEST(Backtest, AFactorCancelsOut) {
    const std::vector<Date> samples{sunday + day, sunday + 2 * day, sunday + 5 * day};
    for (const Knobs& knobs : {Knobs{}, Knobs{.bottomUp = false}, Knobs{.bottomUp = false, .useComposite = true}}) {
        Knobs scaled = knobs;
        scaled.scale = 1e-3;
        const Result plain = replayed(noons(twice), samples, knobs);
        const Result small = replayed(noons(twice), samples, scaled);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            EXPECT_NEAR(small.trials[i].absoluteErrorPct, plain.trials[i].absoluteErrorPct, 1e-9);
            EXPECT_NEAR(small.trials[i].predictedFinal, plain.trials[i].predictedFinal * 1e-3, 1e-9);
            EXPECT_NEAR(small.trials[i].actualFinal, 0.014, 1e-9);
        }
    }
}

TEST(Backtest, ErrorsAreRatiosOfTheActual) {
    EXPECT_EQ(Backtest::trial(sunday, 15, 10), (Trial{sunday, 15, 10, 0.5}));
    EXPECT_EQ(Backtest::trial(sunday, 5, 10), (Trial{sunday, 5, 10, 0.5}));
    EXPECT_EQ(Backtest::trial(sunday, 10, 10).absoluteErrorPct, 0);
    EXPECT_DOUBLE_EQ(Backtest::trial(sunday, 1, 0).absoluteErrorPct, 1e9);
    EXPECT_DOUBLE_EQ(Backtest::trial(sunday, 1, -1).absoluteErrorPct, 2e9) << "no ratio of what is negative";
}

/// Trials that miss an actual of 10 by these.
Result missedBy(const std::vector<double>& errors) {
    std::vector<Trial> trials;
    for (const double error : errors) trials.push_back(Backtest::trial(sunday, 10 + error, 10));
    return Backtest::summarised(trials);
}

TEST(Backtest, ADeadHitIsNoOverPrediction) {
    EXPECT_EQ(missedBy({0}).shareOverPredicted, 0);
    EXPECT_EQ(missedBy({0}).medianAbsoluteErrorPct, 0);
    EXPECT_EQ(missedBy({3, -3}).shareOverPredicted, 0.5);
    EXPECT_EQ(missedBy({3, 0, 1, 2}).shareOverPredicted, 0.75);
}

TEST(Backtest, FiguresAreOfTheNearestRank) {
    const Result result = missedBy({3, 1, 2});
    EXPECT_DOUBLE_EQ(result.medianAbsoluteErrorPct, 0.2);
    EXPECT_DOUBLE_EQ(result.p90AbsoluteErrorPct, 0.3);
    EXPECT_DOUBLE_EQ(result.medianSignedErrorPct, 0.2);
    EXPECT_EQ(result.trials.size(), 3U);
    EXPECT_EQ(missedBy({-8, -1, 2}).medianSignedErrorPct, -0.1);
    EXPECT_EQ(missedBy({-8, -1, 2}).medianAbsoluteErrorPct, 0.2);
    EXPECT_EQ(missedBy({}), Result{});
}

TEST(Backtest, PercentileIsAPlaceInTheSortedList) {
    EXPECT_EQ(percentile({}, 0.5), 0);
    EXPECT_EQ(percentile({4, 1}, 0.5), 4) << "half of two is the larger";
    EXPECT_EQ(percentile({9, 8, 7, 6, 5, 4, 3, 2, 1, 0}, 0.9), 9);
    EXPECT_EQ(percentile({9, 8, 7, 6, 5, 4, 3, 2, 1, 0}, 0.89), 8);
    EXPECT_EQ(percentile({2, 1}, 0), 1);
    EXPECT_EQ(percentile({2, 1}, -1), 1);
    EXPECT_EQ(percentile({2, 1}, 1), 2);
    EXPECT_EQ(percentile({2, 1}, 5), 2);
}

} // namespace
} // namespace UsageEngine
