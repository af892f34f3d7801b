#include "UsageModel/CategoryWeights.h"

#include <limits>

#include <gmock/gmock.h>

namespace UsageModel {
namespace {

using testing::ElementsAre;

constexpr CategoryWeights plainWeights() {
    return {.input = 1, .output = 10, .cacheCreation = 100, .cacheRead = 1000};
}

UsageEvent turn(ModelClass modelClass) {
    return {.modelClass = modelClass, .input = 1, .output = 2, .cacheCreation = 3, .cacheRead = 4};
}

TEST(TokenCategory, HasItsTextsInItsOrder) {
    EXPECT_THAT(EnumNames<TokenCategory>::names, ElementsAre("input", "output", "cacheCreation", "cacheRead"));
    EXPECT_THAT(allCases<TokenCategory>, ElementsAre(TokenCategory::input, TokenCategory::output,
                                                     TokenCategory::cacheCreation, TokenCategory::cacheRead));
}

TEST(CategoryWeights, PricesEveryClassRelativeToOpus) {
    const EnumMap<ModelClass, double> expected{{ModelClass::opus, 1.0},
                                               {ModelClass::fable, 2.0},
                                               {ModelClass::sonnet, 0.6},
                                               {ModelClass::haiku, 0.2},
                                               {ModelClass::other, 0.6}};
    EXPECT_EQ(CategoryWeights::pricePriors(), expected);
}

TEST(CategoryWeights, StandardWeightsFollowTheScale) {
    const CategoryWeights weights = CategoryWeights::priors(2.0);
    EXPECT_DOUBLE_EQ(weights.input, 2.0);
    EXPECT_DOUBLE_EQ(weights.output, 10.0);
    EXPECT_DOUBLE_EQ(weights.cacheCreation, 2.5);
    EXPECT_DOUBLE_EQ(weights.cacheRead, 0.2);
    EXPECT_EQ(weights.classMultiplier, CategoryWeights::pricePriors());
}

TEST(CategoryWeights, OfScaleZeroWeighNothing) {
    EXPECT_EQ(CategoryWeights::priors(0).effective(turn(ModelClass::fable)), 0.0);
}

TEST(CategoryWeights, AMillionOpusInputTokensWeighATenth) {
    const UsageEvent event{.modelClass = ModelClass::opus, .input = 1'000'000};
    EXPECT_DOUBLE_EQ(CategoryWeights::priors(liveWeightScale).effective(event), 0.1);
}

TEST(CategoryWeights, WeightOfACategoryIsItsField) {
    const CategoryWeights weights = plainWeights();
    EXPECT_EQ(weights.weight(TokenCategory::input), 1);
    EXPECT_EQ(weights.weight(TokenCategory::output), 10);
    EXPECT_EQ(weights.weight(TokenCategory::cacheCreation), 100);
    EXPECT_EQ(weights.weight(TokenCategory::cacheRead), 1000);
}

TEST(CategoryWeights, AClassThatIsAbsentCountsOnce) {
    for (const ModelClass modelClass : allCases<ModelClass>) {
        EXPECT_EQ(plainWeights().multiplier(modelClass), 1.0);
        EXPECT_EQ(plainWeights().effective(turn(modelClass)), 4321.0);
    }
}

TEST(CategoryWeights, AClassOfFactorZeroIsNotAbsent) {
    CategoryWeights weights = plainWeights();
    weights.classMultiplier.set(ModelClass::haiku, 0.0);
    EXPECT_EQ(weights.multiplier(ModelClass::haiku), 0.0);
    EXPECT_EQ(weights.effective(turn(ModelClass::haiku)), 0.0);
    EXPECT_EQ(weights.effective(turn(ModelClass::opus)), 4321.0);
}

TEST(CategoryWeights, TheFactorOfTheClassMultipliesTheWholeTurn) {
    CategoryWeights weights = plainWeights();
    weights.classMultiplier = {{ModelClass::sonnet, 0.5}, {ModelClass::fable, 2.0}};
    EXPECT_EQ(weights.effective(turn(ModelClass::sonnet)), 2160.5);
    EXPECT_EQ(weights.effective(turn(ModelClass::fable)), 8642.0);
}

TEST(CategoryWeights, TheFactorFollowsTheClassAndNotTheName) {
    UsageEvent event = turn(ModelClass::sonnet);
    event.model = "claude-opus-4-5";
    EXPECT_DOUBLE_EQ(CategoryWeights::priors(1).effective(event), (1 + 10 + 3.75 + 0.4) * 0.6);
}

TEST(CategoryWeights, NegativeCountsGiveANegativeWeight) {
    EXPECT_EQ(plainWeights().effective({.input = -7}), -7.0);
}

TEST(CategoryWeights, TheEffortOfATurnDoesNotWeigh) {
    UsageEvent event = turn(ModelClass::opus);
    const double without = plainWeights().effective(event);
    event.effort = EffortLevel::max;
    EXPECT_EQ(plainWeights().effective(event), without);
}

TEST(CategoryWeights, TheLargestCountsDoNotOverflow) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    const UsageEvent event{.input = most, .output = most, .cacheCreation = most, .cacheRead = most};
    EXPECT_DOUBLE_EQ(plainWeights().effective(event), 1111.0 * 9223372036854775807.0);
}

} // namespace
} // namespace UsageModel
