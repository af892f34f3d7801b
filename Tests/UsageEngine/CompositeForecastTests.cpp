#include "UsageEngine/CompositeForecast.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::ModelBucket;
using UsageModel::ModelClass;
using Edge = CompositeForecast::Edge;

const Calendar utc = Calendar::utc();

/// `perHour` of a class in each hour of four weeks before `sunday`, and of the current one up to its middle.
void spend(Turns& turns, ModelClass modelClass, double perHour) {
    for (double t = -4 * week; t < 0.5 * week; t += hour) turns.push_back(turnAt(sunday + t, perHour, modelClass));
}

std::optional<CompositeForecast> made(const Turns& turns) {
    return CompositeForecast::make({.turns = turns,
                                    .calendar = utc,
                                    .window = {.from = sunday, .to = sunday + week},
                                    .now = sunday + 0.5 * week,
                                    .earliestEvent = {}});
}

TEST(CompositeForecast, WithoutHistoryThereIsNone) {
    EXPECT_FALSE(made({}));
    EXPECT_FALSE(CompositeForecast::make(
        {.turns = {}, .calendar = utc, .window = {.from = sunday, .to = sunday}, .now = sunday, .earliestEvent = {}}));
}

TEST(CompositeForecast, OneBucketIsItsShape) {
    Turns turns;
    spend(turns, ModelClass::opus, 1);
    const auto forecast = made(turns);
    ASSERT_EQ(forecast->components.size(), 1U);
    EXPECT_EQ(forecast->components[0].bucket, ModelBucket::opusClass);
    EXPECT_NEAR(forecast->intensity(), 1, 1e-9);
    EXPECT_NEAR(forecast->typicalTotal(), 168, 1e-9);
    EXPECT_NEAR(forecast->usedNow(), 84, 1e-9);
    EXPECT_NEAR(forecast->expectedSoFar(), 84, 1e-9);
    EXPECT_TRUE(forecast->isMeaningful());
    EXPECT_NEAR(forecast->projected(sunday + week, {}), 168, 1e-9);
}

TEST(CompositeForecast, SumsItsBuckets) {
    Turns turns;
    spend(turns, ModelClass::sonnet, 2);
    spend(turns, ModelClass::opus, 1);
    const auto forecast = made(turns);
    ASSERT_EQ(forecast->components.size(), 2U);
    EXPECT_EQ(forecast->components[1].bucket, ModelBucket::sonnet);
    EXPECT_NEAR(forecast->projected(sunday + week, {}), 3 * 168, 1e-6);
    EXPECT_NEAR(forecast->projected(sunday, {}), 3 * 84, 1e-6) << "nothing is taken back";
    const double high = forecast->projected(sunday + week, {.edge = Edge::high, .kFactor = 1});
    const double low = forecast->projected(sunday + week, {.edge = Edge::low, .kFactor = 1});
    EXPECT_GT(high, 3 * 168);
    EXPECT_LT(low, 3 * 168);
}

TEST(CompositeForecast, CrossesALevelBetweenHours) {
    Turns turns;
    spend(turns, ModelClass::opus, 1);
    const auto forecast = made(turns);
    const Date now = sunday + 0.5 * week;
    EXPECT_EQ(forecast->crossing({.level = 84, .after = now}, {}), now);
    const auto crossing = forecast->crossing({.level = 94.5, .after = now}, {});
    ASSERT_TRUE(crossing);
    EXPECT_NEAR(*crossing - now, 10.5 * hour, 1e-2);
    EXPECT_FALSE(forecast->crossing({.level = 200, .after = now}, {}));
    EXPECT_TRUE(forecast->crossing({.level = 200, .after = now}, {.edge = Edge::likely, .kFactor = 2}));
}

TEST(CompositeForecast, IsAsMeaningfulAsItsLargestPart) {
    CompositeForecast forecast;
    EXPECT_FALSE(forecast.isMeaningful());
    EXPECT_EQ(forecast.intensity(), 1);
    EXPECT_EQ(forecast.projected(sunday, {}), 0);
    EXPECT_FALSE(forecast.crossing({.level = 1, .after = sunday}, {}));
    forecast.components = {{.bucket = ModelBucket::opusClass, .shape = {.typicalTotal = 100, .isMeaningful = true}},
                           {.bucket = ModelBucket::sonnet, .shape = {.typicalTotal = 100, .isMeaningful = false}}};
    EXPECT_TRUE(forecast.isMeaningful()) << "the first of equals";
    forecast.components[1].shape.typicalTotal = 101;
    EXPECT_FALSE(forecast.isMeaningful());
}

} // namespace
} // namespace UsageEngine
