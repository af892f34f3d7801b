#include "UsageEngine/WindowComputation.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Scene.h"

namespace UsageEngine {
namespace {

using UsageModel::CategoryWeights;
using UsageModel::Confidence;
using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::WeeklyNorm;
using UsageModel::WindowKind;

constexpr Date now = sunday;

/// The weekly window that began three days ago, read at an instant.
UsageModel::GaugeReading weekRead(Date captured, std::optional<double> percent) {
    return reading(captured, {{"seven_day", told(percent, now + 4 * day)}});
}

/// The session that began `elapsed` seconds ago, read at an instant.
UsageModel::GaugeReading sessionRead(double elapsed, Date captured, std::optional<double> percent) {
    return reading(captured, {{"five_hour", told(percent, now - elapsed + 5 * hour)}});
}

WindowCompute weekly(const Scene& scene) {
    return scene.window(WindowKind::weeklyAll);
}

TEST(WindowComputation, LogsAddToWhatTheGaugeSaid) {
    const WindowCompute compute = weekly({
        .events = {spent(now - 2.5 * day, 10), spent(now - day, 5)},
        .gauge = weekRead(now - 2 * day, 40),
    });
    EXPECT_DOUBLE_EQ(compute.scale, 0.04);
    EXPECT_DOUBLE_EQ(compute.state.used, 0.6);
    EXPECT_EQ(compute.state.confidence.anchored, true);
    EXPECT_EQ(compute.state.confidence.secondsSinceAnchor, 2 * day);
    EXPECT_DOUBLE_EQ(compute.state.confidence.estimatedError, 0.11);
    EXPECT_EQ(compute.state.kind, WindowKind::weeklyAll);
    EXPECT_EQ(compute.state.windowStart, now - 3 * day);
    EXPECT_EQ(compute.state.resetsAt, now + 4 * day);
    EXPECT_EQ(compute.bounds, (WindowBounds{now - 3 * day, now + 4 * day, false}));
}

TEST(WindowComputation, AGaugeAtZeroLeavesLogUnits) {
    const WindowCompute compute = weekly({
        .events = {spent(now - 2.5 * day, 10), spent(now - day, 1)},
        .gauge = weekRead(now - 2 * day, 0),
    });
    EXPECT_EQ(compute.scale, 1);
    EXPECT_EQ(compute.state.used, 1);
    EXPECT_TRUE(compute.state.confidence.anchored);
}

TEST(WindowComputation, AGaugeWithoutLogsBeforeItLeavesLogUnits) {
    const WindowCompute compute = weekly({.events = {spent(now - day, 1)}, .gauge = weekRead(now - 2 * day, 25)});
    EXPECT_EQ(compute.scale, 1);
    EXPECT_EQ(compute.state.used, 1.25);
}

TEST(WindowComputation, LogsOfABillionthAreTooLittleToScaleBy) {
    Scene scene{.events = {spent(now - 2.5 * day, 1)}, .gauge = weekRead(now - 2 * day, 40)};
    scene.weights.input = 1e-9;
    EXPECT_EQ(weekly(scene).scale, 1);
    scene.weights.input = 2e-9;
    EXPECT_DOUBLE_EQ(weekly(scene).scale, 0.4 / 2e-9);
}

TEST(WindowComputation, ARatioThatIsNoFactorLeavesLogUnits) {
    for (const double percent : {-40.0, 1e300}) {
        const Scene scene{.events = {spent(now - 2.5 * day, 10)}, .gauge = weekRead(now - 2 * day, percent)};
        EXPECT_EQ(weekly(scene).scale, 1) << percent;
    }
}

struct CaptureRow {
    const char* name;
    double captured;
    bool anchored;
};

class Capture : public testing::TestWithParam<CaptureRow> {};

TEST_P(Capture, AnchorsOnlyWithinTheWindowSoFar) {
    const auto& row = GetParam();
    const WindowCompute compute = weekly({.events = {spent(now - day, 1)}, .gauge = weekRead(now + row.captured, 25)});
    EXPECT_EQ(compute.state.confidence.anchored, row.anchored);
    EXPECT_EQ(compute.state.used, row.anchored ? (row.captured < -day ? 1.25 : 0.25) : 1);
    if (!row.anchored) {
        EXPECT_EQ(compute.state.confidence, Confidence::unknown());
        EXPECT_EQ(compute.state.confidence.estimatedError, 0.5);
        EXPECT_EQ(compute.scale, 1);
    }
    EXPECT_EQ(compute.state.resetsAt, now + 4 * day) << "the reset counts in any case";
}

INSTANTIATE_TEST_SUITE_P(Instants, Capture,
                         testing::Values(CaptureRow{"before the start", -3 * day - 1, false},
                                         CaptureRow{"at the start", -3 * day, true}, CaptureRow{"now", 0, true},
                                         CaptureRow{"ahead", 1, false}));

TEST(WindowComputation, AWindowWithoutAPercentageIsNotAnchored) {
    EXPECT_EQ(weekly({.gauge = weekRead(now - hour, {})}).state.confidence, Confidence::unknown());
    EXPECT_EQ(weekly({.gauge = reading(now, {{"five_hour", told(50, {})}})}).state.confidence, Confidence::unknown());
    EXPECT_EQ(weekly({}).state.confidence, Confidence::unknown());
}

TEST(WindowComputation, TheErrorGrowsTenPointsInTwoDays) {
    const auto errorAfter = [](double seconds) {
        return weekly({.gauge = reading(now - seconds, {{"seven_day", told(25, now + day)}})})
            .state.confidence.estimatedError;
    };
    EXPECT_DOUBLE_EQ(errorAfter(0), 0.01);
    EXPECT_DOUBLE_EQ(errorAfter(hour), 0.01 + 1.0 / 480);
    EXPECT_DOUBLE_EQ(errorAfter(4.7 * day), 0.245);
    EXPECT_DOUBLE_EQ(errorAfter(4.8 * day), 0.25);
    EXPECT_EQ(errorAfter(5.5 * day), 0.25) << "and stops at 25";
}

TEST(WindowComputation, UseIsHeldBetweenZeroAndOneAndAHalf) {
    const auto used = [](std::int64_t units, double percent) {
        return weekly({.events = {spent(now - hour, units)}, .gauge = weekRead(now - day, percent)}).state.used;
    };
    EXPECT_EQ(used(1, 50), 1.5);
    EXPECT_EQ(used(1, 49), 1.49);
    EXPECT_EQ(used(2, 50), 1.5);
    EXPECT_EQ(used(0, 151), 1.5);
    EXPECT_EQ(used(0, -1), 0);
    EXPECT_EQ(used(-7, 50), 0.5) << "a damaged log takes nothing back";
    EXPECT_EQ(weekly({.events = {spent(now - hour, 100)}}).state.used, 1.5);
    EXPECT_EQ(weekly({.events = {spent(now - hour, -100)}}).state.used, 0);
}

TEST(WindowComputation, LogsCountFromTheStartUpToNow) {
    const Scene scene{
        .events = {spent(now - 3 * day, 1), spent(now - 3 * day - 1.0, 2), spent(now, 4), spent(now + 1.0, 8)},
        .gauge = weekRead(now - 4 * day, {}),
    };
    EXPECT_EQ(weekly(scene).state.used, 1);
}

TEST(WindowComputation, ATurnAtTheVeryCaptureCameAfterIt) {
    const WindowCompute compute = weekly({
        .events = {spent(now - day - 1.0, 2), spent(now - day, 1)},
        .gauge = weekRead(now - day, 50),
    });
    EXPECT_EQ(compute.scale, 0.25);
    EXPECT_EQ(compute.state.used, 0.75);
}

TEST(WindowComputation, ALearntCapBeatsTheGaugesRatio) {
    const Scene scene{.events = {spent(now - 2 * hour, 50), spent(now - hour, 1)},
                      .gauge = sessionRead(3 * hour, now - 1.5 * hour, 50)};
    const WindowCompute compute = scene.window(WindowKind::session5h, capOf(4.0));
    EXPECT_EQ(compute.scale, 0.25);
    EXPECT_EQ(compute.state.used, 0.75);
    for (const std::optional<double> cap : {std::optional<double>{}, std::optional(0.0), std::optional(-4.0),
                                            std::optional(std::numeric_limits<double>::infinity())}) {
        EXPECT_EQ(scene.window(WindowKind::session5h, capOf(cap)).scale, 0.01) << cap.value_or(-1);
    }
    EXPECT_EQ(scene.window(WindowKind::weeklyAll, capOf(4.0)).scale, 1) << "it is a session's";
}

TEST(WindowComputation, WithoutAReadingTheCapScalesTheLogs) {
    const Scene scene{.events = {spent(now - hour, 1)}};
    EXPECT_EQ(scene.window(WindowKind::session5h, capOf(4.0)).state.used, 0.25);
    EXPECT_EQ(scene.window(WindowKind::session5h, capOf(4.0)).state.confidence, Confidence::unknown());
    EXPECT_EQ(scene.window(WindowKind::session5h).state.used, 1);
}

TEST(WindowComputation, OnlyOpusCountsAgainstTheOpusWeek) {
    const Scene scene{
        .events = {spent(now - 2 * day, 4), spent(now - 2 * day, 4, ModelClass::fable),
                   spent(now - 2 * day, 100, ModelClass::sonnet), spent(now - hour, 1, ModelClass::fable),
                   spent(now - hour, 100, ModelClass::haiku), spent(now - hour, 100, ModelClass::other)},
        .gauge = reading(now - day, {{"seven_day_opus", told(50, now + 4 * day)}}),
    };
    const WindowCompute compute = scene.window(WindowKind::weeklyOpus);
    EXPECT_EQ(compute.scale, 0.0625);
    EXPECT_EQ(compute.state.used, 0.5625);
}

TEST(WindowComputation, AnOpusWeekWithoutOpusIsEmpty) {
    const WindowCompute compute =
        Scene{.events = {spent(now - day, 3, ModelClass::sonnet, EffortLevel::low)}}.window(WindowKind::weeklyOpus);
    EXPECT_EQ(compute.state.used, 0);
    EXPECT_TRUE(compute.whatIf.byFamily.empty());
    EXPECT_EQ(compute.whatIf.outputShare, 0);
    EXPECT_EQ(compute.whatIf.currentEffort, EffortLevel::low) << "efforts are those of all models";
}

TEST(WindowComputation, ElapsedIsHeldToTheWindow) {
    const auto elapsed = [](Date reset) {
        return weekly({.gauge = reading(now, {{"seven_day", told({}, reset)}})}).state.elapsedFraction;
    };
    EXPECT_EQ(elapsed(now + 3.5 * day), 0.5);
    EXPECT_EQ(elapsed(now), 0);
    EXPECT_EQ(elapsed(now + 30 * day), 0) << "a window that is yet to begin";
    EXPECT_EQ(weekly({}).state.elapsedFraction, 1) << "a trailing window";
}

// Rates: a session's likely rate is half its own average and half that of the last hour; the fast one that of the last
// quarter. Seen through where the session ends, and when it is empty.

struct Rates {
    double likely = 0.0;
    double fast = 0.0;
};

/// A session of 100 log units that is to run for a million seconds more, so that both rates reach the limit.
Rates ratesOf(double elapsed, const std::vector<UsageModel::UsageEvent>& events) {
    const Scene scene{.events = events, .gauge = sessionRead(elapsed, now, {})};
    const WindowCompute compute = scene.window(WindowKind::session5h, capOf(100.0));
    const double left = 1 - compute.state.used;
    return {.likely = (compute.projection.endFraction - compute.state.used) / (5 * hour - elapsed),
            .fast = left / (*compute.projection.earliestEmpty - now)};
}

TEST(WindowComputation, RatesAreNotDilutedByTheTimeBeforeTheWindow) {
    const Rates rates = ratesOf(600, {spent(now - 300.0, 6), spent(now - 601.0, 50)});
    EXPECT_NEAR(rates.likely, 0.06 / 600, 1e-12);
    EXPECT_NEAR(rates.fast, 0.06 / 600, 1e-9);
}

TEST(WindowComputation, RatesLookBackAnHourAndAQuarter) {
    const Rates rates = ratesOf(2 * hour, {spent(now - 1.5 * hour, 18), spent(now - hour, 6), spent(now - 900.0, 12)});
    EXPECT_NEAR(rates.likely, 0.5 * (0.36 / 7200) + 0.5 * (0.18 / 3600), 1e-12) << "the ends of an hour belong to it";
    EXPECT_NEAR(rates.fast, 0.12 / 900, 1e-9);
}

TEST(WindowComputation, ATurnOfThisInstantCountsInTheRatesAlone) {
    const Rates rates = ratesOf(2 * hour, {spent(now, 18)});
    EXPECT_NEAR(rates.likely, 0.5 * 0.18 / 3600, 1e-12);
    EXPECT_NEAR(rates.fast, 0.18 / 900, 1e-9);
}

TEST(WindowComputation, AWindowOfASecondHasTheRateOfASecond) {
    const Rates rates = ratesOf(0.5, {spent(now - 0.25, 1)});
    EXPECT_NEAR(rates.likely, 0.5 * (0.01 / 0.5) + 0.5 * 0.01, 1e-9);
}

TEST(WindowComputation, ASessionThatBeginsNowHasNoPaceYet) {
    const WindowCompute compute =
        Scene{.events = {spent(now, 18)}, .gauge = sessionRead(0, now, 10)}.window(WindowKind::session5h, capOf(100.0));
    EXPECT_NEAR(compute.projection.endFraction, 0.1 + 0.5 * 0.18 * 18000, 1e-9);
    EXPECT_EQ(compute.state.baselineFraction, 0);
    EXPECT_DOUBLE_EQ(compute.state.paceVsBaseline, 0.1 / 1e-6);
}

TEST(WindowComputation, ASessionIsComparedWithTheClock) {
    const WindowCompute compute =
        Scene{.events = {spent(now - day, 1000)}, .gauge = sessionRead(2 * hour, now, 60)}.window(
            WindowKind::session5h);
    EXPECT_DOUBLE_EQ(compute.state.baselineFraction, 0.4);
    EXPECT_DOUBLE_EQ(compute.state.paceVsBaseline, 1.5);
    EXPECT_EQ(compute.norm, WeeklyNorm::empty());
    EXPECT_FALSE(compute.bottomUp || compute.composite || compute.shape || compute.profile);
    EXPECT_EQ(compute.shareNow, 0);
}

TEST(WindowComputation, WithoutAResetNothingIsProjected) {
    std::vector<UsageModel::UsageEvent> events;
    for (int i = 1; i < 9; ++i) {
        events.push_back(spent(now - i * week, 4));
        events.push_back(spent(now - i * 60.0, 4));
    }
    for (const WindowKind kind : UsageModel::allCases<WindowKind>) {
        const WindowCompute compute = Scene{.events = events}.window(kind, capOf(40.0));
        EXPECT_EQ(compute.projection, (UsageModel::Projection{.window = kind,
                                                              .earliestEmpty = {},
                                                              .likelyEmpty = {},
                                                              .endFraction = compute.state.used,
                                                              .willBreachBeforeReset = false}));
        EXPECT_FALSE(compute.bottomUp || compute.profile);
        EXPECT_TRUE(compute.bounds.estimated);
        EXPECT_GT(compute.state.used, 0);
    }
}

TEST(WindowComputation, ATrailingWeekIsComparedWithTheHoursOfTheWeek) {
    const WindowCompute compute = weekly({.events = {spent(now - day, 1)}});
    EXPECT_NEAR(compute.state.baselineFraction, 1, 1e-9) << "all hours of the week have passed";
    EXPECT_NEAR(compute.state.paceVsBaseline, 1, 1e-9);
}

/// What a week that begins this instant is expected to burn over an hour, by the hours of the four weeks before.
double usualRate(WindowKind kind, const std::vector<UsageModel::UsageEvent>& events) {
    const UsageModel::GaugeWindow window = told({}, now);
    const Scene scene{.events = events, .gauge = reading(now, {{"seven_day", window}, {"seven_day_opus", window}})};
    const WindowCompute compute = scene.window(kind);
    EXPECT_FALSE(compute.bottomUp) << "there is nothing to go by yet";
    return compute.projection.endFraction / week * 2 * hour;
}

TEST(WindowComputation, AWeekThatBeginsNowGoesByTheHoursOfFourWeeks) {
    const auto rate = [](double age, ModelClass modelClass = ModelClass::opus,
                         WindowKind kind = WindowKind::weeklyAll) {
        return usualRate(kind, {spent(now - 2 * week, 4), spent(now - age, 4, modelClass)});
    };
    EXPECT_NEAR(rate(4 * week), 1.0 / 3, 1e-9) << "one hour of three bears it all";
    EXPECT_NEAR(rate(2.5 * week), 1.0 / 6, 1e-9) << "half falls into another hour";
    EXPECT_NEAR(rate(4.5 * week), 1.0 / 3, 1e-9) << "too long ago";
    EXPECT_NEAR(rate(4 * week + 1800.0), 1.0 / 3, 1e-9) << "too long ago by half an hour";
    EXPECT_NEAR(rate(2.5 * week, ModelClass::sonnet, WindowKind::weeklyOpus), 1.0 / 3, 1e-9)
        << "Sonnet has no say in the Opus week";
}

TEST(WindowComputation, TheNormIsOfFourWeeksAndOfTheModelsThatCount) {
    std::vector<UsageModel::UsageEvent> events;
    for (int i = 1; i <= 6; ++i) {
        events.push_back(spent(now - 3 * day - i * week, i));
        events.push_back(spent(now - 3 * day - i * week, 10, ModelClass::sonnet));
    }
    const UsageModel::GaugeWindow window = told({}, now + 4 * day);
    const Scene scene{.events = events, .gauge = reading(now, {{"seven_day", window}, {"seven_day_opus", window}})};
    EXPECT_EQ(scene.window(WindowKind::weeklyAll).norm.samples, (std::vector<double>{11, 12, 13, 14}));
    EXPECT_EQ(scene.window(WindowKind::weeklyOpus).norm.samples, (std::vector<double>{1, 2, 3, 4}));
}

TEST(WindowComputation, TheNormNeedsWeeksThatTheLogsCoverWhole) {
    const Date start = now - 3 * day;
    const Scene scene{.events = {spent(start - 1.5 * week, 4), spent(start - 1.0, 8)}, .gauge = weekRead(now, {})};
    EXPECT_EQ(weekly(scene).norm.samples, (std::vector<double>{8}));
}

/// Nine weeks of one log unit at each noon, up to yesterday.
std::vector<UsageModel::UsageEvent> steadyNoons(ModelClass modelClass = ModelClass::opus) {
    std::vector<UsageModel::UsageEvent> events;
    for (double age = 63 * day; age > 0; age -= day) events.push_back(spent(now - age + 12 * hour, 1, modelClass));
    return events;
}

TEST(WindowComputation, AWeekWithAResetIsForecastFromTheBottomUp) {
    const Scene scene{.events = steadyNoons(), .gauge = weekRead(now - 4 * day, {})};
    const WindowCompute compute = weekly(scene);
    ASSERT_TRUE(compute.bottomUp);
    ASSERT_TRUE(compute.profile);
    EXPECT_FALSE(compute.composite || compute.shape);
    EXPECT_EQ(compute.profile->sampleCount, std::vector<std::int64_t>(7, 8)) << "eight weeks are looked at";
    EXPECT_EQ(compute.bottomUp->usedNow, compute.state.used);
    EXPECT_EQ(compute.bottomUp->now, now);
    EXPECT_EQ(compute.bottomUp->curve.back().t, now + 4 * day);
    EXPECT_NEAR(compute.bottomUp->intensity, 0.5, 1e-9) << "1.5, as use is held, over three days of one";
    EXPECT_EQ(compute.state.paceVsBaseline, compute.bottomUp->intensity);
    EXPECT_EQ(compute.state.baselineFraction, 1.5) << "and so is what is usual";
}

TEST(WindowComputation, WhatIsUsualIsInTheWindowsUnit) {
    const Scene scene{.events = steadyNoons(), .gauge = weekRead(now, 30)};
    const WindowCompute compute = weekly(scene);
    EXPECT_DOUBLE_EQ(compute.scale, 0.1);
    EXPECT_NEAR(compute.state.baselineFraction, 0.3, 1e-9);
    EXPECT_NEAR(compute.state.paceVsBaseline, 1, 1e-9);
    EXPECT_NEAR(compute.projection.endFraction, 0.7, 1e-9);
    EXPECT_NEAR(compute.bottomUp->typicalWeekTotal, 0.7, 1e-9);
}

TEST(WindowComputation, AWeekWithoutUseHasNoUsualFraction) {
    std::vector<UsageModel::UsageEvent> events = steadyNoons();
    std::erase_if(events, [](const auto& event) { return event.ts >= now - 3 * day; });
    const WindowCompute compute = weekly({.events = events, .gauge = weekRead(now - hour, 0)});
    EXPECT_EQ(compute.state.paceVsBaseline, 0);
    EXPECT_EQ(compute.state.baselineFraction, 0) << "nothing over a billionth";
}

TEST(WindowComputation, TheOpusWeekBorrowsTheRhythmOfAllModels) {
    const Scene scene{.events = steadyNoons(ModelClass::sonnet),
                      .gauge = reading(now - hour, {{"seven_day_opus", told(30, now + 4 * day)}})};
    const WindowCompute compute = scene.window(WindowKind::weeklyOpus);
    ASSERT_TRUE(compute.bottomUp);
    EXPECT_EQ(compute.bottomUp->typicalWeekTotal, 7);
    EXPECT_TRUE(compute.bottomUp->isMeaningful);
}

TEST(WindowComputation, BreachIsToldByTheForecast) {
    const Scene scene{.events = steadyNoons(), .gauge = weekRead(now, 60)};
    const WindowCompute compute = weekly(scene);
    EXPECT_NEAR(compute.projection.endFraction, 1.4, 1e-9);
    EXPECT_TRUE(compute.projection.willBreachBeforeReset);
    EXPECT_EQ(compute.projection.window, WindowKind::weeklyAll);
    EXPECT_GT(*compute.projection.likelyEmpty, now + 36 * hour);
    EXPECT_LT(*compute.projection.likelyEmpty, now + 37.01 * hour) << "at the second noon to come";
}

TEST(WindowComputation, WhatTheWindowWasSpentOn) {
    Scene scene{.events = {{.ts = now - hour, .modelClass = ModelClass::opus, .input = 4, .output = 2},
                           {.ts = now - hour, .modelClass = ModelClass::haiku, .output = 4, .effort = EffortLevel::low},
                           {.ts = now, .modelClass = ModelClass::fable, .output = 100, .effort = EffortLevel::max},
                           {.ts = now - 3 * day - 1.0, .modelClass = ModelClass::fable, .output = 100}},
                .gauge = weekRead(now - hour, {})};
    scene.weights.output = 2;
    scene.weights.classMultiplier = {{ModelClass::haiku, 0.5}, {ModelClass::fable, 2.0}};
    const UsageModel::WhatIfSpace space = weekly(scene).whatIf;
    EXPECT_EQ(space.byFamily,
              (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 8.0 / 12}, {ModelClass::haiku, 4.0 / 12}}));
    EXPECT_DOUBLE_EQ(space.outputShare, 8.0 / 12);
    EXPECT_EQ(space.effortMix, (UsageModel::EnumMap<EffortLevel, double>{{EffortLevel::low, 1.0}}));
    EXPECT_EQ(space.currentEffort, EffortLevel::low);
    EXPECT_EQ(space.effortMultiplier, UsageModel::effortOutputPriors());
    EXPECT_EQ(space.familyMultiplier, (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 1.0},
                                                                               {ModelClass::fable, 2.0},
                                                                               {ModelClass::sonnet, 1.0},
                                                                               {ModelClass::haiku, 0.5},
                                                                               {ModelClass::other, 1.0}}));
}

TEST(WindowComputation, TurnsThatWeighNothingTogetherWereSpentOnNothing) {
    const WindowCompute compute = weekly({.events = {spent(now - hour, 5), spent(now - hour, -5, ModelClass::haiku)}});
    EXPECT_TRUE(compute.whatIf.byFamily.empty());
    EXPECT_EQ(compute.whatIf.outputShare, 0);
    EXPECT_EQ(compute.whatIf.currentEffort, std::nullopt);
    EXPECT_EQ(compute.whatIf.familyMultiplier.size(), 5U);
}

TEST(WindowComputation, WithoutAnythingAllIsAtRest) {
    for (const WindowKind kind : UsageModel::allCases<WindowKind>) {
        const WindowCompute compute = Scene{}.window(kind);
        EXPECT_EQ(compute.state.used, 0);
        EXPECT_EQ(compute.scale, 1);
        EXPECT_EQ(compute.norm, WeeklyNorm::empty());
        EXPECT_EQ(compute.state.paceVsBaseline, 0);
    }
}

// What a block is worth.

constexpr Date blockStart = sunday;

UsageModel::SessionBlock block() {
    return {.start = blockStart, .end = blockStart + 5 * hour, .usedFraction = 10, .byModelClass = {}};
}

BlockScale scaleBy(const std::vector<UsageModel::Anchor>& anchors, std::optional<double> cap = 4.0) {
    const Turns turns{turnAt(blockStart, 4), turnAt(blockStart + hour, 4), turnAt(blockStart + 2 * hour, 2)};
    return blockScale(block(), SessionAnchors(anchors), turns, capOf(cap));
}

constexpr BlockScale learnt{.scale = 0.25, .basis = UsageModel::SessionCapBasis::learnedScale};

BlockScale own(double scale) {
    return {.scale = scale, .basis = UsageModel::SessionCapBasis::ownCeiling};
}

TEST(BlockScale, ACeilingMakesWhatWasSpentByThenAFullSession) {
    EXPECT_EQ(scaleBy({sessionFull(blockStart + 1.5 * hour)}), own(0.125));
    EXPECT_EQ(scaleBy({sessionFull(blockStart + hour)}), own(0.25)) << "a turn of that instant came after it";
}

TEST(BlockScale, APercentageIsWorthItsFraction) {
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, 0.5)}), own(0.0625));
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, {})}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, 0.0)}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, -1.0)}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 1.5 * hour, 1e300)}), learnt);
}

TEST(BlockScale, ARatioOfExactlyOneCountsAsNone) {
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 0.5 * hour, 4.0)}), learnt);
    EXPECT_EQ(scaleBy({sessionAt(blockStart + 0.5 * hour, 4.0)}, {}), BlockScale{});
}

TEST(BlockScale, AnAnchorBelongsToABlockAfterItsStartUpToItsEnd) {
    EXPECT_EQ(scaleBy({sessionFull(blockStart)}), learnt);
    EXPECT_EQ(scaleBy({sessionFull(blockStart + 1.0)}), own(0.25));
    EXPECT_EQ(scaleBy({sessionFull(blockStart + 5 * hour)}), own(0.1));
    EXPECT_EQ(scaleBy({sessionFull(blockStart + (5 * hour + 1))}), learnt);
    EXPECT_EQ(scaleBy({resetTold(WindowKind::weeklyAll, blockStart + hour, {})}), learnt);
}

TEST(BlockScale, TheLatestAnchorDecidesAndOfEqualsTheFirst) {
    const Date early = blockStart + 0.5 * hour;
    const Date late = blockStart + 1.5 * hour;
    EXPECT_EQ(scaleBy({sessionFull(late), sessionFull(early)}), own(0.125));
    EXPECT_EQ(scaleBy({sessionAt(late, 0.5), sessionFull(late)}), own(0.0625));
    EXPECT_EQ(scaleBy({sessionFull(late), sessionAt(late, 0.5)}), own(0.125));
    EXPECT_EQ(scaleBy({sessionFull(early), sessionAt(late, {})}), learnt)
        << "a latest that tells nothing is not passed over";
}

TEST(BlockScale, WithoutLogsBeforeItAnAnchorTellsNothing) {
    const Turns late{turnAt(blockStart + 2 * hour, 2)};
    EXPECT_EQ(blockScale(block(), SessionAnchors(std::vector{sessionFull(blockStart + hour)}), late, capOf(4.0)),
              learnt);
}

TEST(BlockScale, WithoutAnchorAndSoundCapALogUnitIsWorthOne) {
    EXPECT_EQ(scaleBy({}), learnt);
    for (const std::optional<double> cap :
         {std::optional<double>{}, std::optional(0.0), std::optional(-1.0), std::optional(1e-320),
          std::optional(std::numeric_limits<double>::infinity())})
        EXPECT_EQ(scaleBy({}, cap), BlockScale{}) << cap.value_or(7);
}

} // namespace
} // namespace UsageEngine
