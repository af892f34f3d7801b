#include "UsageModel/LiveModel.h"

#include <limits>

#include <gmock/gmock.h>

#include "UsageModel/CategoryWeights.h"
#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using testing::Optional;
using testing::Pair;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

LiveModel running() {
    LiveModel live;
    live.byClass = {{ModelClass::opus, 0.95}, {ModelClass::haiku, 0.05}};
    live.byEffort = {{EffortLevel::high, 0.92}, {EffortLevel::low, 0.08}};
    live.outputShare = 0.4;
    live.weight = 0.01;
    live.turns = 3;
    live.lastTurn = Date{1790000000};
    return live;
}

TEST(LiveModel, LooksBackThreeQuartersOfAnHourAndSettlesAtNineTenths) {
    EXPECT_EQ(LiveModel::defaultLookback, 2700.0);
    EXPECT_EQ(LiveModel::consensus, 0.9);
    EXPECT_EQ(LiveModel{}.lookback, 2700.0);
}

TEST(LiveModel, IsLiveWithATurnAndAWeight) {
    EXPECT_TRUE(running().isLive());
    EXPECT_FALSE(LiveModel{}.isLive());

    LiveModel live = running();
    live.lastTurn.reset();
    EXPECT_FALSE(live.isLive());
    for (const double weight : {0.0, -1.0, notANumber}) {
        live = running();
        live.weight = weight;
        EXPECT_FALSE(live.isLive()) << weight;
    }
}

TEST(LiveModel, IsWellConditionedAboveTwoTurns) {
    LiveModel live = running();
    EXPECT_TRUE(live.isWellConditioned());
    live.turns = 2;
    EXPECT_FALSE(live.isWellConditioned());
    live.turns = 3;
    live.weight = 0;
    EXPECT_FALSE(live.isWellConditioned());
}

TEST(LiveModel, IsConcurrentFromTwoSessions) {
    LiveModel live;
    EXPECT_FALSE(live.isConcurrent());
    live.sessions.resize(1);
    EXPECT_FALSE(live.isConcurrent());
    live.sessions.resize(2);
    EXPECT_TRUE(live.isConcurrent());
    live.sessions.resize(3);
    EXPECT_TRUE(live.isConcurrent());
}

TEST(TopShare, IsTheEntryOfTheLargestValue) {
    EXPECT_THAT(topShare<ModelClass>({{ModelClass::opus, 0.2}, {ModelClass::haiku, 0.8}}),
                Optional(Pair(ModelClass::haiku, 0.8)));
    EXPECT_THAT(topShare<ModelClass>({{ModelClass::other, -1.0}}), Optional(Pair(ModelClass::other, -1.0)));
}

TEST(TopShare, OfNothingIsAbsent) {
    EXPECT_EQ(topShare(EnumMap<ModelClass, double>{}), std::nullopt);
}

TEST(TopShare, OfEqualsIsTheFirstOfTheAlphabet) {
    EXPECT_THAT(topShare<ModelClass>({{ModelClass::opus, 0.5}, {ModelClass::sonnet, 0.5}}),
                Optional(Pair(ModelClass::opus, 0.5)));
    EXPECT_THAT(topShare<EffortLevel>({{EffortLevel::low, 0.5}, {EffortLevel::high, 0.5}}),
                Optional(Pair(EffortLevel::high, 0.5)));
    EXPECT_THAT(topShare<ModelClass>({{ModelClass::opus, 0.5}, {ModelClass::fable, 0.5}}),
                Optional(Pair(ModelClass::fable, 0.5)));
    EXPECT_THAT(topShare<EffortLevel>({{EffortLevel::xhigh, 0.3}, {EffortLevel::max, 0.3}, {EffortLevel::medium, 0.3}}),
                Optional(Pair(EffortLevel::max, 0.3)));
}

struct ClassRow : TestSupport::Named {
    EnumMap<ModelClass, double> byClass;
    double share;
    std::optional<ModelClass> expected;
};

class SettledClassTest : public testing::TestWithParam<ClassRow> {};

TEST_P(SettledClassTest, IsTheLeaderWithEnoughShare) {
    LiveModel live = running();
    live.byClass = GetParam().byClass;
    EXPECT_EQ(live.settledClass(GetParam().share), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Shares, SettledClassTest,
    testing::Values(
        ClassRow{"enough", {{ModelClass::opus, 0.95}}, 0.9, ModelClass::opus},
        ClassRow{"just enough", {{ModelClass::opus, 0.9}}, 0.9, ModelClass::opus},
        ClassRow{"not quite", {{ModelClass::opus, 0.8999}}, 0.9, std::nullopt},
        ClassRow{"no class", {}, 0.0, std::nullopt},
        ClassRow{"other leads in full", {{ModelClass::other, 1.0}}, 0.9, std::nullopt},
        ClassRow{
            "other leads before an equal", {{ModelClass::other, 0.5}, {ModelClass::sonnet, 0.5}}, 0.5, std::nullopt},
        ClassRow{"other follows an equal", {{ModelClass::other, 0.5}, {ModelClass::opus, 0.5}}, 0.5, ModelClass::opus},
        ClassRow{"a share that is no number", {{ModelClass::opus, notANumber}}, 0.9, std::nullopt}),
    TestSupport::rowName);

TEST(SettledClass, IsAbsentWhileNothingIsLive) {
    LiveModel live = running();
    live.lastTurn.reset();
    EXPECT_EQ(live.settledClass(0.9), std::nullopt);
    EXPECT_EQ(live.settledEffort(0.9), std::nullopt);
}

TEST(SettledClass, NeedsNoNumberOfTurns) {
    LiveModel live = running();
    live.turns = 1;
    EXPECT_EQ(live.settledClass(0.9), ModelClass::opus);
}

TEST(SettledEffort, IsTheLeaderWithEnoughShare) {
    LiveModel live = running();
    EXPECT_EQ(live.settledEffort(0.9), EffortLevel::high);
    EXPECT_EQ(live.settledEffort(0.92), EffortLevel::high);
    EXPECT_EQ(live.settledEffort(0.93), std::nullopt);
    live.byEffort = {};
    EXPECT_EQ(live.settledEffort(0.0), std::nullopt);
}

WhatIfSpace prices() {
    return {.byFamily = {{ModelClass::fable, 1.0}},
            .familyMultiplier = CategoryWeights::pricePriors(),
            .outputShare = 0.9,
            .effortMix = {{EffortLevel::max, 1.0}},
            .currentEffort = EffortLevel::xhigh,
            .effortMultiplier = effortOutputPriors()};
}

TEST(LiveSpace, TakesTheBurnFromWhatRunsAndThePricesFromTheBase) {
    const WhatIfSpace expected{.byFamily = running().byClass,
                               .familyMultiplier = CategoryWeights::pricePriors(),
                               .outputShare = 0.4,
                               .effortMix = running().byEffort,
                               .currentEffort = EffortLevel::high,
                               .effortMultiplier = effortOutputPriors()};
    EXPECT_EQ(running().space(prices()), expected);
}

TEST(LiveSpace, WithoutEffortsTakesThatOfTheBase) {
    LiveModel live = running();
    live.byEffort = {};
    EXPECT_EQ(live.space(prices())->currentEffort, EffortLevel::xhigh);
    EXPECT_TRUE(live.space(prices())->effortMix.empty());

    WhatIfSpace base = prices();
    base.currentEffort.reset();
    EXPECT_EQ(live.space(base)->currentEffort, std::nullopt);
}

TEST(LiveSpace, IsAbsentBelowThreeTurns) {
    LiveModel live = running();
    live.turns = 2;
    EXPECT_EQ(live.space(prices()), std::nullopt);
}

TEST(LiveSpace, IsAbsentWhileNothingIsLive) {
    LiveModel live = running();
    live.weight = 0;
    EXPECT_EQ(live.space(prices()), std::nullopt);
}

} // namespace
} // namespace UsageModel
