#include "Report/Trust.h"

#include <cmath>

#include <gmock/gmock.h>

#include "UsageEngine/Backtest.h"

namespace Report {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UsageEngine::WeighedTurn;
using UsageModel::Calendar;
using UsageModel::Date;

constexpr double hour = 3600;
constexpr double week = 604800;
constexpr Date weekStart{1771977600};

/// A turn an hour, each of weight 1, from so many weeks before the running one to its third day.
std::vector<WeighedTurn> steadyTurns(double weeks) {
    std::vector<WeighedTurn> turns;
    for (Date ts = weekStart - weeks * week; ts < weekStart + 72 * hour; ts = ts + hour)
        turns.push_back({.ts = ts, .weight = 1});
    return turns;
}

Trust trustIn(const std::vector<WeighedTurn>& turns) {
    const Calendar utc = Calendar::utc();
    return trustOf({.turns = turns, .calendar = utc, .weekStart = weekStart});
}

TEST(Trust, EachWeekWithAWeekBeforeItIsReplayed) {
    EXPECT_THAT(trustIn(steadyTurns(3)).weeks,
                ElementsAre(Week{weekStart - 2 * week, weekStart - week}, Week{weekStart - week, weekStart}));
    EXPECT_THAT(trustIn(steadyTurns(2.99)).weeks, ElementsAre(Week{weekStart - week, weekStart}));
    EXPECT_THAT(trustIn(steadyTurns(1.99)).weeks, IsEmpty());
}

TEST(Trust, WithoutHistoryEveryMethodHasNoTrials) {
    const Trust trust = trustIn({});
    EXPECT_THAT(trust.weeks, IsEmpty());
    EXPECT_EQ(trust.scores.size(), 5U);
    for (const auto& [method, score] : trust.scores) EXPECT_EQ(score, Score{});
}

TEST(Trust, TheRunningWeekIsNoneThatIsOver) {
    std::vector<WeighedTurn> turns = steadyTurns(3);
    const Trust before = trustIn(turns);
    turns.push_back({.ts = weekStart + 80 * hour, .weight = 1e6});
    EXPECT_EQ(trustIn(turns), before);
}

TEST(Trust, TwelveInstantsAWeekArePooled) {
    const Trust trust = trustIn(steadyTurns(3));
    for (const auto& [method, score] : trust.scores) EXPECT_EQ(score.trials, 24);
}

TEST(Trust, ASteadyUserIsEasilyForeseen) {
    const Trust trust = trustIn(steadyTurns(10));
    for (const auto& [method, score] : trust.scores) {
        EXPECT_LT(score.medianAbsoluteError, 0.03) << UsageModel::text(method);
        EXPECT_LT(score.p90AbsoluteError, 0.2) << UsageModel::text(method);
    }
    EXPECT_EQ(trust.scores.valueOr(Method::lastWeek, {}).p90AbsoluteError, 0);
}

TEST(Trust, TheNaiveMethodsAreWhatTheySay) {
    // All of a week's use comes in its first instant: a straight line says too much by 1 / share - 1.
    std::vector<WeighedTurn> turns{{.ts = weekStart - 2 * week, .weight = 2}, {.ts = weekStart - week, .weight = 1}};
    const Trust trust = trustIn(turns);
    const Score line = trust.scores.valueOr(Method::straightLine, {});
    EXPECT_EQ(line.shareOverPredicted, 1);
    // The seventh of twelve errors, the middle of the sixth part of the week: 5.5 / 12 is gone.
    EXPECT_NEAR(line.medianAbsoluteError, 12 / 5.5 - 1, 1e-9);
    EXPECT_NEAR(line.p90AbsoluteError, 12 / 1.5 - 1, 1e-9);
    const Score last = trust.scores.valueOr(Method::lastWeek, {});
    EXPECT_EQ(last.medianAbsoluteError, 1);
    EXPECT_EQ(last.medianSignedError, 1);
}

TEST(Trust, AForecastIsTheEnginesOwn) {
    const std::vector<WeighedTurn> turns = steadyTurns(2);
    const Calendar utc = Calendar::utc();
    std::vector<Date> instants;
    for (int i = 0; i < 12; ++i) instants.push_back(weekStart - week + (i + 0.5) * week / 12);
    const auto result = UsageEngine::Backtest::evaluate({.turns = turns,
                                                         .calendar = utc,
                                                         .week = {.from = weekStart - week, .to = weekStart},
                                                         .sampleTimes = instants,
                                                         .bottomUp = false,
                                                         .useComposite = true});
    const Score composite = trustIn(turns).scores.valueOr(Method::composite, {});
    EXPECT_EQ(composite.trials, static_cast<std::int64_t>(result.trials.size()));
    EXPECT_EQ(composite.medianAbsoluteError, result.medianAbsoluteErrorPct);
    EXPECT_EQ(composite.p90AbsoluteError, result.p90AbsoluteErrorPct);
    EXPECT_EQ(composite.medianSignedError, result.medianSignedErrorPct);
    EXPECT_EQ(composite.shareOverPredicted, result.shareOverPredicted);
}

TEST(Trust, AWeekWithoutUseIsLeftOut) {
    std::vector<WeighedTurn> turns = steadyTurns(4);
    std::erase_if(
        turns, [](const WeighedTurn& turn) { return turn.ts >= weekStart - 2 * week && turn.ts < weekStart - week; });
    const Trust trust = trustIn(turns);
    EXPECT_EQ(trust.unusedWeeks, 1);
    EXPECT_THAT(trust.weeks,
                ElementsAre(Week{weekStart - 3 * week, weekStart - 2 * week}, Week{weekStart - week, weekStart}));
}

TEST(Trust, NoMoreThanAYearIsReplayed) {
    std::vector<WeighedTurn> turns{{.ts = weekStart - 400 * week, .weight = 1}};
    for (int i = 60; i > 0; --i) turns.push_back({.ts = weekStart - i * week, .weight = 1});
    EXPECT_EQ(trustIn(turns).weeks.size(), 52U);
}

} // namespace
} // namespace Report
