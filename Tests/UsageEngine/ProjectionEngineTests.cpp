#include "UsageEngine/ProjectionEngine.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using ProjectionEngine::project;
using ProjectionEngine::Question;
using UsageModel::Date;
using UsageModel::ModelBucket;
using UsageModel::Projection;
using UsageModel::SeriesPoint;
using UsageModel::WindowKind;
using Curve = std::vector<SeriesPoint>;

constexpr double infinity = std::numeric_limits<double>::infinity();
const Date now = sunday;
const Date reset = now + 10 * hour;
/// Half a limit lasts 2048 seconds.
constexpr double rate = 0x1p-12;

Question halfUsed() {
    return {.window = WindowKind::session5h, .used = 0.5, .now = now, .resetsAt = reset, .elapsedFraction = 0.5};
}

Question burning(double recent, double usual, double fast) {
    Question question = halfUsed();
    question.recentRate = recent;
    question.baselineRate = usual;
    question.fastRate = fast;
    return question;
}

TEST(ProjectionByRates, BlendsTheRecentAndTheUsualByHalves) {
    const Projection projection = project(burning(1.5 * rate, 0.5 * rate, 2 * rate));
    EXPECT_EQ(projection.window, WindowKind::session5h);
    EXPECT_EQ(projection.likelyEmpty, now + 2048);
    EXPECT_EQ(projection.earliestEmpty, now + 1024);
    EXPECT_EQ(projection.endFraction, 0.5 + rate * 36000);
    EXPECT_TRUE(projection.willBreachBeforeReset);
    EXPECT_EQ(project(burning(2 * rate, 0, 0)).likelyEmpty, now + 2048);
    EXPECT_EQ(project(burning(0, 2 * rate, 0)).likelyEmpty, now + 2048);
}

TEST(ProjectionByRates, ThePessimistIsNeverSlowerThanTheLikely) {
    for (const double fast : {rate, 0.5 * rate, 0.0, -1.0}) {
        const Projection projection = project(burning(rate, rate, fast));
        EXPECT_EQ(projection.earliestEmpty, now + 2048) << fast;
        EXPECT_EQ(projection.likelyEmpty, now + 2048) << fast;
    }
}

TEST(ProjectionByRates, WithoutABurnTheLimitIsOutOfReach) {
    for (const double burnt : {0.0, -1.0}) {
        const Projection projection = project(burning(burnt, burnt, burnt));
        EXPECT_FALSE(projection.likelyEmpty) << burnt;
        EXPECT_FALSE(projection.earliestEmpty) << burnt;
        EXPECT_EQ(projection.endFraction, 0.5 + 1e-12 * 36000) << burnt;
        EXPECT_FALSE(projection.willBreachBeforeReset) << burnt;
    }
}

TEST(ProjectionByRates, NothingBeyondFourHundredDaysIsTold) {
    constexpr double slow = 0x1p-26;
    constexpr double fourHundredDays = 34560000.0;
    Question question = burning(slow, slow, slow);
    question.used = 1.0 - fourHundredDays * slow;
    EXPECT_FALSE(project(question).likelyEmpty);
    EXPECT_FALSE(project(question).earliestEmpty);
    question.fastRate = 2 * slow;
    EXPECT_FALSE(project(question).likelyEmpty);
    EXPECT_EQ(project(question).earliestEmpty, now + fourHundredDays / 2);
    question.used += 0x1p-40;
    EXPECT_EQ(project(question).likelyEmpty, now + (fourHundredDays - 0x1p-14));
}

TEST(ProjectionByRates, WhatIsUsedUpIsEmptyNow) {
    for (const double used : {1.0, 1.2}) {
        Question question = burning(0, 0, 0);
        question.used = used;
        question.resetsAt = now + hour;
        const Projection projection = project(question);
        EXPECT_EQ(projection.likelyEmpty, now) << used;
        EXPECT_EQ(projection.earliestEmpty, now) << used;
        EXPECT_EQ(projection.endFraction, used + 1e-12 * 3600) << used;
        EXPECT_TRUE(projection.willBreachBeforeReset) << used;
    }
}

TEST(ProjectionByRates, AnEndlessRateEmptiesNow) {
    for (const double endless : {1e300, infinity}) EXPECT_EQ(project(burning(endless, 0, 0)).likelyEmpty, now);
}

TEST(ProjectionByRates, LessThanNothingUsedLastsLonger) {
    Question question = burning(rate, rate, rate);
    question.used = -0.5;
    EXPECT_EQ(project(question).likelyEmpty, now + 3 * 2048);
    EXPECT_EQ(project(question).endFraction, -0.5 + rate * 36000);
}

struct AlarmRow : TestSupport::Named {
    double used;
    double elapsedFraction;
    /// Seconds from now; at the rate in force a full limit lasts 4096.
    std::optional<double> resetsIn;
    bool breaches;
};

class RateAlarmTest : public testing::TestWithParam<AlarmRow> {};

TEST_P(RateAlarmTest, IsRaisedOnlyWhereRatesTellSomething) {
    const AlarmRow& row = GetParam();
    Question question = burning(rate, rate, rate);
    question.used = row.used;
    question.elapsedFraction = row.elapsedFraction;
    question.resetsAt = row.resetsIn ? std::optional(now + *row.resetsIn) : std::nullopt;
    const Projection projection = project(question);
    EXPECT_EQ(projection.willBreachBeforeReset, row.breaches);
    EXPECT_EQ(projection.likelyEmpty, now + std::max(1.0 - row.used, 0.0) / rate) << "it is told all the same";
}

INSTANTIATE_TEST_SUITE_P(
    Alarms, RateAlarmTest,
    testing::Values(
        AlarmRow{"a twentieth of the time and a tenth of the limit", 0.1, 0.05, 9000, true},
        AlarmRow{"less than a tenth", std::nextafter(0.1, 0), 0.05, 9000, false},
        AlarmRow{"hardly anything used", 0.05, 0.5, 9000, false},
        AlarmRow{"less than a twentieth", 0.1, std::nextafter(0.05, 0), 9000, false},
        AlarmRow{"early and much used", 0.9, 0.04, 9000, false}, AlarmRow{"early and all used", 1.0, 0.04, 9000, false},
        AlarmRow{"all used", 1.0, 0.05, 9000, true}, AlarmRow{"more than all", 1.5, 1.0, 9000, true},
        AlarmRow{"all used at the reset", 1.0, 1.0, 0, false}, AlarmRow{"empty as it resets", 0.5, 0.5, 2048, false},
        AlarmRow{"empty just before it resets", 0.5, 0.5, 2048.001, true},
        AlarmRow{"empty after it resets", 0.5, 0.5, 2047, false},
        AlarmRow{"a reset that has passed", 1.0, 1.0, -1, false}, AlarmRow{"no reset", 0.5, 0.5, std::nullopt, false},
        AlarmRow{"no reset and all used", 1.0, 1.0, std::nullopt, false}),
    TestSupport::rowName);

TEST(ProjectionByRates, WithoutAResetItEndsWhereItIs) {
    Question question = burning(rate, rate, rate);
    question.resetsAt = std::nullopt;
    EXPECT_EQ(project(question).endFraction, 0.5);
}

TEST(ProjectionByRates, BackFromAResetThatHasPassed) {
    Question question = burning(rate, rate, rate);
    question.resetsAt = now - 1024;
    EXPECT_EQ(project(question).endFraction, 0.25);
}

/// Used up after 7.5 hours, at the dear edge after five.
BottomUpForecast risingToMore() {
    return {.usedNow = 0.5,
            .now = now,
            .curve = {{now, 0.5}, {now + 5 * hour, 0.75}, {now + 10 * hour, 1.25}},
            .high = {{now, 0.5}, {now + 5 * hour, 1.0}, {now + 10 * hour, 2.0}}};
}

Projection bottomUp(const BottomUpForecast& forecast, std::optional<Date> resetsAt = reset) {
    return project({.used = 0.0, .now = now, .resetsAt = resetsAt, .bottomUp = &forecast});
}

TEST(ProjectionBottomUp, ReadsTheLimitOffItsCurves) {
    const Projection projection = bottomUp(risingToMore());
    EXPECT_EQ(projection.likelyEmpty, now + 7.5 * hour);
    EXPECT_EQ(projection.earliestEmpty, now + 5 * hour);
    EXPECT_EQ(projection.endFraction, 1.25);
    EXPECT_TRUE(projection.willBreachBeforeReset) << "however early, and however little is used";
}

TEST(ProjectionBottomUp, EndsWhereTheChordDoes) {
    EXPECT_EQ(bottomUp(risingToMore(), now + 7.5 * hour).endFraction, 0.5 + 0.75 * 0.75);
    EXPECT_EQ(bottomUp(risingToMore(), now + 30 * hour).endFraction, 1.25);
    EXPECT_EQ(bottomUp(risingToMore(), std::nullopt).endFraction, 0.5);
}

TEST(ProjectionBottomUp, BreachesOnlyBeforeTheReset) {
    EXPECT_TRUE(bottomUp(risingToMore(), now + 7.5 * hour + 0.001).willBreachBeforeReset);
    EXPECT_FALSE(bottomUp(risingToMore(), now + 7.5 * hour).willBreachBeforeReset);
    EXPECT_FALSE(bottomUp(risingToMore(), std::nullopt).willBreachBeforeReset);
}

TEST(ProjectionBottomUp, OnlyDearDaysReachTheLimit) {
    BottomUpForecast forecast = risingToMore();
    forecast.curve.back().used = std::nextafter(1.0, 0.0);
    const Projection projection = bottomUp(forecast);
    EXPECT_EQ(projection.earliestEmpty, now + 5 * hour);
    EXPECT_FALSE(projection.likelyEmpty);
    EXPECT_FALSE(projection.willBreachBeforeReset);
}

TEST(ProjectionBottomUp, TheLikelyStandsInWhereDearDaysDoNotReachIt) {
    BottomUpForecast forecast = risingToMore();
    forecast.high.clear();
    EXPECT_EQ(bottomUp(forecast).earliestEmpty, now + 7.5 * hour);
}

TEST(ProjectionBottomUp, LooksFromNowOnAndNotFromWhenItWasMade) {
    BottomUpForecast forecast = risingToMore();
    forecast.now = now - 5 * hour;
    forecast.curve.insert(forecast.curve.begin(), {now - 5 * hour, 3.0});
    forecast.high = forecast.curve;
    EXPECT_EQ(bottomUp(forecast).likelyEmpty, now + 7.5 * hour);
    EXPECT_EQ(bottomUp(forecast).earliestEmpty, now + 7.5 * hour);
}

TEST(ProjectionBottomUp, WhatIsUsedUpIsEmptyNow) {
    BottomUpForecast forecast = risingToMore();
    forecast.usedNow = 1.0;
    forecast.curve.front().used = 1.0;
    forecast.high.front().used = 1.0;
    EXPECT_EQ(bottomUp(forecast).likelyEmpty, now);
    EXPECT_EQ(bottomUp(forecast).earliestEmpty, now);
}

TEST(ProjectionBottomUp, WithoutCurvesNothingIsTold) {
    const Projection projection = bottomUp({.usedNow = 0.75, .now = now});
    EXPECT_FALSE(projection.earliestEmpty);
    EXPECT_FALSE(projection.likelyEmpty);
    EXPECT_EQ(projection.endFraction, 0.75);
}

/// A limit's worth, evenly over ten hours; twice that at the dear edge.
ForecastShape even() {
    return {.cumulativeShare = {{now, 0.0}, {reset, 1.0}},
            .typicalTotal = 1.0,
            .intensity = 1.0,
            .coneHigh = 2.0,
            .coneLow = 0.25};
}

Projection shaped(const ForecastShape& shape, double used = 0.5, std::optional<Date> resetsAt = reset) {
    return project({.window = WindowKind::weeklyOpus, .used = used, .now = now, .resetsAt = resetsAt, .shape = &shape});
}

TEST(ProjectionShaped, ReadsTheLimitOffTheCurve) {
    const Projection projection = shaped(even());
    EXPECT_EQ(projection.window, WindowKind::weeklyOpus);
    EXPECT_EQ(projection.likelyEmpty, now + 5 * hour);
    EXPECT_EQ(projection.earliestEmpty, now + 2.5 * hour);
    EXPECT_EQ(projection.endFraction, 1.5);
    EXPECT_TRUE(projection.willBreachBeforeReset);
    EXPECT_TRUE(shaped(even(), 0.05).willBreachBeforeReset) << "however early, and however little is used";
}

TEST(ProjectionShaped, TheConeIsOnTopOfTheIntensity) {
    ForecastShape shape = even();
    shape.intensity = 2.0;
    EXPECT_EQ(shaped(shape).likelyEmpty, now + 2.5 * hour);
    EXPECT_EQ(shaped(shape).earliestEmpty, now + 1.25 * hour);
    EXPECT_EQ(shaped(shape).endFraction, 2.5);
}

TEST(ProjectionShaped, GoesOnFromTheShareOfNow) {
    const ForecastShape shape = even();
    const Projection projection =
        project({.used = 0.5, .now = now, .resetsAt = reset, .shape = &shape, .shareNow = 0.25});
    EXPECT_EQ(projection.likelyEmpty, now + 7.5 * hour);
    EXPECT_EQ(projection.earliestEmpty, now + 5 * hour);
    EXPECT_EQ(projection.endFraction, 1.25);
}

TEST(ProjectionShaped, NothingStandsInForADearEdgeBelowTheLimit) {
    ForecastShape shape = even();
    shape.coneHigh = 0.25;
    EXPECT_FALSE(shaped(shape).earliestEmpty);
    EXPECT_TRUE(shaped(shape).likelyEmpty);
}

TEST(ProjectionShaped, BreachesOnlyBeforeTheReset) {
    EXPECT_TRUE(shaped(even(), 0.5, now + 5 * hour + 0.001).willBreachBeforeReset);
    EXPECT_FALSE(shaped(even(), 0.5, now + 5 * hour).willBreachBeforeReset);
    EXPECT_FALSE(shaped(even(), 0.5, std::nullopt).willBreachBeforeReset);
    EXPECT_EQ(shaped(even(), 0.5, std::nullopt).endFraction, 0.5);
}

TEST(ProjectionShaped, WhatIsUsedUpIsEmptyNowEvenAtRest) {
    ForecastShape shape = even();
    EXPECT_EQ(shaped(shape, 1.0).likelyEmpty, now);
    EXPECT_EQ(shaped(shape, 1.25).earliestEmpty, now);
    shape.intensity = 0.0;
    EXPECT_EQ(shaped(shape, 1.0).likelyEmpty, now);
    EXPECT_EQ(shaped(shape, 1.0).earliestEmpty, now);
    EXPECT_FALSE(shaped(shape, 0.5).likelyEmpty);
    EXPECT_FALSE(shaped(shape, 0.5).earliestEmpty);
    EXPECT_EQ(shaped(shape, 0.5).endFraction, 0.5);
}

/// Two buckets, each half of an even limit, with a quarter used of each.
CompositeForecast halves() {
    CompositeForecast forecast;
    for (const ModelBucket bucket : {ModelBucket::opusClass, ModelBucket::sonnet}) {
        ForecastShape shape = even();
        shape.typicalTotal = 0.5;
        forecast.components.push_back({.bucket = bucket, .shape = shape, .usedNow = 0.25, .sNow = 0.0});
    }
    return forecast;
}

Projection composed(const CompositeForecast& forecast, std::optional<Date> resetsAt = reset) {
    return project({.used = 0.0, .now = now, .resetsAt = resetsAt, .composite = &forecast, .shareNow = 0.5});
}

TEST(ProjectionComposed, ReadsTheLimitOffTheSum) {
    const Projection projection = composed(halves());
    EXPECT_EQ(projection.likelyEmpty, now + 5 * hour);
    EXPECT_EQ(projection.earliestEmpty, now + 2.5 * hour);
    EXPECT_EQ(projection.endFraction, 1.5);
    EXPECT_TRUE(projection.willBreachBeforeReset) << "however early, and however little is used";
}

TEST(ProjectionComposed, NothingStandsInForADearEdgeBelowTheLimit) {
    CompositeForecast forecast = halves();
    for (auto& component : forecast.components) component.shape.coneHigh = 0.25;
    EXPECT_FALSE(composed(forecast).earliestEmpty);
    EXPECT_EQ(composed(forecast).likelyEmpty, now + 5 * hour);
}

TEST(ProjectionComposed, BreachesOnlyBeforeTheReset) {
    EXPECT_TRUE(composed(halves(), now + 5 * hour + 0.001).willBreachBeforeReset);
    EXPECT_FALSE(composed(halves(), now + 5 * hour).willBreachBeforeReset);
    EXPECT_FALSE(composed(halves(), std::nullopt).willBreachBeforeReset);
    EXPECT_EQ(composed(halves(), std::nullopt).endFraction, 0.5);
}

TEST(ProjectionComposed, WhatIsUsedUpIsEmptyNow) {
    CompositeForecast forecast = halves();
    forecast.components.front().usedNow = 0.75;
    EXPECT_EQ(composed(forecast).likelyEmpty, now);
    EXPECT_EQ(composed(forecast).earliestEmpty, now);
}

TEST(Projection, TheBestForecastDecides) {
    const BottomUpForecast bottomUpForecast = risingToMore();
    const CompositeForecast composite{.components = {{.shape = even(), .usedNow = 0.75, .sNow = 0.0}}};
    ForecastShape shape = even();
    shape.typicalTotal = 4.0;
    Question question = burning(rate, rate, rate);
    question.bottomUp = &bottomUpForecast;
    question.composite = &composite;
    question.shape = &shape;
    EXPECT_EQ(project(question).endFraction, 1.25);
    question.bottomUp = nullptr;
    EXPECT_EQ(project(question).endFraction, 1.75);
    question.composite = nullptr;
    EXPECT_EQ(project(question).endFraction, 4.5);
    question.shape = nullptr;
    EXPECT_EQ(project(question).endFraction, 0.5 + rate * 36000);
}

} // namespace
} // namespace UsageEngine
