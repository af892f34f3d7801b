#include "UsageModel/WhatIfSpace.h"

#include <limits>

#include <gmock/gmock.h>

#include "UsageModel/CategoryWeights.h"
#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Prices = EnumMap<ModelClass, double>;

WhatIfSpace standardSpace() {
    return {.byFamily = {{ModelClass::opus, 1.0}},
            .familyMultiplier = CategoryWeights::pricePriors(),
            .outputShare = 0.3,
            .effortMultiplier = effortOutputPriors()};
}

TEST(WhatIfSpace, CountsTheClassesUnderTheOpusLimit) {
    const WhatIfSpace space{
        .byFamily = {{ModelClass::opus, 0.5}, {ModelClass::fable, 0.25}, {ModelClass::haiku, 0.25}}};
    EXPECT_EQ(space.opusShare(), 0.75);
    EXPECT_EQ(WhatIfSpace{}.opusShare(), 0.0);
}

struct ModelRow : TestSupport::Named {
    Prices byFamily;
    Prices prices;
    std::optional<ModelClass> model;
    double expected;
};

class ModelFactorTest : public testing::TestWithParam<ModelRow> {};

TEST_P(ModelFactorTest, IsTheBurnAtTheOtherPrice) {
    const ModelRow& row = GetParam();
    const WhatIfSpace space{.byFamily = row.byFamily, .familyMultiplier = row.prices};
    EXPECT_DOUBLE_EQ(space.modelFactor(row.model), row.expected);
}

const Prices opusAndSonnet{{ModelClass::opus, 1.0}, {ModelClass::sonnet, 0.6}};

INSTANTIATE_TEST_SUITE_P(
    Moves, ModelFactorTest,
    testing::Values(
        ModelRow{"no model", {{ModelClass::opus, 1}}, opusAndSonnet, std::nullopt, 1.0},
        ModelRow{"all to sonnet", {{ModelClass::opus, 1}}, opusAndSonnet, ModelClass::sonnet, 0.6},
        ModelRow{"all from sonnet to opus", {{ModelClass::sonnet, 1}}, opusAndSonnet, ModelClass::opus, 1 / 0.6},
        ModelRow{"to itself", {{ModelClass::opus, 1}}, opusAndSonnet, ModelClass::opus, 1.0},
        ModelRow{"a mix", {{ModelClass::opus, 0.5}, {ModelClass::sonnet, 0.5}}, opusAndSonnet, ModelClass::sonnet, 0.8},
        ModelRow{"a model without a price", {{ModelClass::opus, 1}}, opusAndSonnet, ModelClass::haiku, 1.0},
        ModelRow{"a model of price zero", {{ModelClass::opus, 1}}, {{ModelClass::haiku, 0}}, ModelClass::haiku, 1.0},
        ModelRow{
            "a model of negative price", {{ModelClass::opus, 1}}, {{ModelClass::haiku, -1}}, ModelClass::haiku, 1.0},
        ModelRow{"a model whose price is no number",
                 {{ModelClass::opus, 1}},
                 {{ModelClass::haiku, notANumber}},
                 ModelClass::haiku,
                 1.0},
        ModelRow{"a share without a price stays",
                 {{ModelClass::opus, 0.5}, {ModelClass::other, 0.5}},
                 opusAndSonnet,
                 ModelClass::sonnet,
                 0.8},
        ModelRow{"a share of price zero stays",
                 {{ModelClass::opus, 0.5}, {ModelClass::other, 0.5}},
                 {{ModelClass::opus, 1.0}, {ModelClass::sonnet, 0.6}, {ModelClass::other, 0}},
                 ModelClass::sonnet,
                 0.8},
        ModelRow{"a share of negative price stays",
                 {{ModelClass::other, 1}},
                 {{ModelClass::sonnet, 0.6}, {ModelClass::other, -3}},
                 ModelClass::sonnet,
                 1.0},
        ModelRow{"no burn at all", {}, opusAndSonnet, ModelClass::sonnet, 0.0},
        ModelRow{"negative shares are held at zero", {{ModelClass::opus, -1}}, opusAndSonnet, ModelClass::sonnet, 0.0},
        ModelRow{"no prices at all", {{ModelClass::opus, 1}}, {}, ModelClass::sonnet, 1.0}),
    TestSupport::rowName);

TEST(EffortFactor, MovesOnlyTheOutputShare) {
    EXPECT_DOUBLE_EQ(standardSpace().effortFactor(EffortLevel::low), 0.865);
    EXPECT_DOUBLE_EQ(standardSpace().effortFactor(EffortLevel::high), 1.0);
    EXPECT_DOUBLE_EQ(standardSpace().effortFactor(EffortLevel::max), 1 + 0.6 * 0.3);
}

TEST(EffortFactor, IsRelativeToTheCurrentEffort) {
    WhatIfSpace space = standardSpace();
    space.currentEffort = EffortLevel::max;
    EXPECT_DOUBLE_EQ(space.effortFactor(EffortLevel::max), 1.0);
    EXPECT_DOUBLE_EQ(space.effortFactor(EffortLevel::high), 1 - (1 - 1.0 / 1.6) * 0.3);
}

TEST(EffortFactor, IsOneWithoutAnEffort) {
    EXPECT_EQ(standardSpace().effortFactor(std::nullopt), 1.0);
}

TEST(EffortFactor, IsOneWhereAMultiplierIsMissingOrNotAboveZero) {
    WhatIfSpace space = standardSpace();
    space.effortMultiplier = {{EffortLevel::low, 0.55}};
    EXPECT_EQ(space.effortFactor(EffortLevel::low), 1.0) << "no multiplier of the anchor";

    space.effortMultiplier = {{EffortLevel::high, 1.0}};
    EXPECT_EQ(space.effortFactor(EffortLevel::low), 1.0) << "no multiplier of the effort";

    for (const double anchor : {0.0, -1.0, notANumber}) {
        space.effortMultiplier = {{EffortLevel::low, 0.55}, {EffortLevel::high, anchor}};
        EXPECT_EQ(space.effortFactor(EffortLevel::low), 1.0) << anchor;
    }
}

TEST(EffortFactor, AnEffortOfMultiplierZeroIsNotMissing) {
    WhatIfSpace space = standardSpace();
    space.effortMultiplier = {{EffortLevel::low, 0.0}, {EffortLevel::high, 1.0}};
    EXPECT_DOUBLE_EQ(space.effortFactor(EffortLevel::low), 0.7);
}

TEST(EffortFactor, IsHeldAtZero) {
    WhatIfSpace space = standardSpace();
    space.outputShare = 5.0;
    EXPECT_EQ(space.effortFactor(EffortLevel::low), 0.0);
}

TEST(WhatIfSpace, AnchorsAtTheCurrentEffortOrHigh) {
    EXPECT_EQ(WhatIfSpace{}.anchorEffort(), EffortLevel::high);
    EXPECT_EQ(WhatIfSpace{.currentEffort = EffortLevel::low}.anchorEffort(), EffortLevel::low);
}

TEST(WhatIfSpace, FactorIsTheProductOfBoth) {
    const WhatIfSpace space = standardSpace();
    EXPECT_EQ(space.factor({}), 1.0);
    EXPECT_DOUBLE_EQ(space.factor({.model = ModelClass::sonnet, .effort = EffortLevel::low}), 0.6 * 0.865);
    EXPECT_DOUBLE_EQ(space.factor({.model = ModelClass::sonnet}), 0.6);
    EXPECT_DOUBLE_EQ(space.factor({.effort = EffortLevel::low}), 0.865);
}

struct AppliesRow : TestSupport::Named {
    ModelAndEffort change;
    double sonnetPrice;
    double outputShare;
    bool expected;
};

class AppliesTest : public testing::TestWithParam<AppliesRow> {};

TEST_P(AppliesTest, WhereTheChangeMovesSomething) {
    const AppliesRow& row = GetParam();
    WhatIfSpace space = standardSpace();
    space.familyMultiplier.set(ModelClass::sonnet, row.sonnetPrice);
    space.outputShare = row.outputShare;
    EXPECT_EQ(space.applies(row.change), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, AppliesTest,
    testing::Values(
        AppliesRow{"nothing", {}, 0.6, 0.3, false},
        AppliesRow{"a cheaper model", {.model = ModelClass::sonnet}, 0.6, 0.3, true},
        AppliesRow{"a dearer model", {.model = ModelClass::fable}, 0.6, 0.3, true},
        AppliesRow{"the same model", {.model = ModelClass::opus}, 0.6, 0.3, false},
        AppliesRow{"a price that differs by rounding", {.model = ModelClass::sonnet}, 1 - 0.9e-6, 0.3, false},
        AppliesRow{"a price that differs by a little more", {.model = ModelClass::sonnet}, 1 - 1.1e-6, 0.3, true},
        AppliesRow{"a price above by a little more", {.model = ModelClass::sonnet}, 1 + 1.1e-6, 0.3, true},
        AppliesRow{"another effort", {.effort = EffortLevel::low}, 0.6, 0.3, true},
        AppliesRow{"the anchor's effort", {.effort = EffortLevel::high}, 0.6, 0.3, false},
        AppliesRow{"another effort with hardly any output", {.effort = EffortLevel::low}, 0.6, 0.001, false},
        AppliesRow{"another effort with a little output", {.effort = EffortLevel::low}, 0.6, 0.0011, true},
        AppliesRow{"the same model at another effort", {ModelClass::opus, EffortLevel::low}, 0.6, 0.3, true},
        AppliesRow{"the same model at the anchor's effort", {ModelClass::opus, EffortLevel::high}, 0.6, 0.3, false},
        AppliesRow{"another model at the anchor's effort", {ModelClass::sonnet, EffortLevel::high}, 0.6, 0.3, true},
        AppliesRow{"another model without output", {ModelClass::sonnet, EffortLevel::low}, 0.6, 0.0, true}),
    TestSupport::rowName);

TEST(IsEstimate, WhereTheEffortIsNotTheAnchor) {
    WhatIfSpace space = standardSpace();
    EXPECT_FALSE(space.isEstimate(std::nullopt));
    EXPECT_FALSE(space.isEstimate(EffortLevel::high));
    EXPECT_TRUE(space.isEstimate(EffortLevel::low));

    space.currentEffort = EffortLevel::low;
    EXPECT_FALSE(space.isEstimate(EffortLevel::low));
    EXPECT_TRUE(space.isEstimate(EffortLevel::high));
}

struct CheapestRow : TestSupport::Named {
    Prices prices;
    ModelAndEffort expected;
};

class CheapestTest : public testing::TestWithParam<CheapestRow> {};

TEST_P(CheapestTest, IsTheSmallestPriceAtItsLowestEffort) {
    EXPECT_EQ(WhatIfSpace{.familyMultiplier = GetParam().prices}.cheapestCombination(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Prices, CheapestTest,
    testing::Values(
        CheapestRow{"haiku has no effort", CategoryWeights::pricePriors(), {.model = ModelClass::haiku}},
        CheapestRow{"any other class at low", opusAndSonnet, {ModelClass::sonnet, EffortLevel::low}},
        CheapestRow{"no price", {}, {.effort = EffortLevel::low}},
        CheapestRow{
            "no price above zero", {{ModelClass::haiku, 0}, {ModelClass::opus, -1}}, {.effort = EffortLevel::low}},
        CheapestRow{"no price that is a number", {{ModelClass::haiku, notANumber}}, {.effort = EffortLevel::low}},
        CheapestRow{"zero and negative prices are passed over",
                    {{ModelClass::haiku, 0}, {ModelClass::other, -1}, {ModelClass::fable, 2}, {ModelClass::opus, 3}},
                    {ModelClass::fable, EffortLevel::low}},
        CheapestRow{"a price that is no number is passed over",
                    {{ModelClass::opus, notANumber}, {ModelClass::fable, 2}},
                    {ModelClass::fable, EffortLevel::low}},
        CheapestRow{"a tie goes by the alphabet and not by the order",
                    {{ModelClass::opus, 1}, {ModelClass::fable, 1}},
                    {ModelClass::fable, EffortLevel::low}},
        CheapestRow{"other before sonnet",
                    {{ModelClass::sonnet, 0.6}, {ModelClass::other, 0.6}},
                    {ModelClass::other, EffortLevel::low}},
        CheapestRow{
            "an endless price is a price", {{ModelClass::sonnet, infinity}}, {ModelClass::sonnet, EffortLevel::low}}),
    TestSupport::rowName);

} // namespace
} // namespace UsageModel
