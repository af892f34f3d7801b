#include "UsageEngine/ForecastShape.h"

#include <cmath>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::Date;
using UsageModel::SeriesPoint;
using UsageModel::WeeklyNorm;
using Curve = std::vector<SeriesPoint>;

const Baseline flat({}, UsageModel::Calendar::utc());
const WeeklyNorm hundred{.rawTypicalTotal = 100, .samples = {100}, .basis = WeeklyNorm::Basis::single};
const WeeklyNorm nothing = WeeklyNorm::empty();

/// A flat week of typically 100 in which a share has passed and three times as much was used.
ForecastShape::MakeQuestion at(double share) {
    return {.baseline = flat,
            .norm = hundred,
            .scale = 1.0,
            .window = {.from = sunday, .to = sunday + week},
            .now = sunday + share * week,
            .usedNow = 3 * share * 100,
            .actualCumulative = {},
            .recencyHalfLife = {},
            .shrinkage = 0.0};
}

/// Rises from 0 to 1 over ten hours, with a stop from the fourth to the sixth.
ForecastShape tenHours() {
    ForecastShape shape{.cumulativeShare = {{sunday, 0.0},
                                            {sunday + 4 * hour, 0.5},
                                            {sunday + 6 * hour, 0.5},
                                            {sunday + 10 * hour, 1.0}},
                        .typicalTotal = 100,
                        .intensity = 1};
    return shape;
}

TEST(ForecastShape, WithoutABasisThereIsNone) {
    auto question = at(0.5);
    EXPECT_TRUE(ForecastShape::make(question));
    question.window.to = sunday;
    EXPECT_FALSE(ForecastShape::make(question));
    EXPECT_FALSE(ForecastShape::make(at(0.0)));
    EXPECT_FALSE(ForecastShape::make({.baseline = flat,
                                      .norm = nothing,
                                      .window = {.from = sunday, .to = sunday + week},
                                      .now = sunday + day,
                                      .usedNow = 1,
                                      .actualCumulative = {}}));
}

TEST(ForecastShape, EarlyInTheWindowItStaysOnTheTypicalWeek) {
    const auto early = ForecastShape::make(at(0.01));
    EXPECT_NEAR(early->rawIntensity, 3, 1e-9);
    EXPECT_NEAR(early->intensity, 1.4, 1e-9);
    EXPECT_FALSE(early->isMeaningful);
    const auto later = ForecastShape::make(at(0.06));
    EXPECT_EQ(later->intensity, later->rawIntensity);
    EXPECT_TRUE(later->isMeaningful);
}

TEST(ForecastShape, ShrinkageHoldsTheGateOrDiscounts) {
    auto question = at(0.25);
    question.shrinkage = 0.5;
    EXPECT_NEAR(ForecastShape::make(question)->intensity, 3 * 0.5 + 0.5, 1e-9);
    EXPECT_FALSE(ForecastShape::make(question)->isMeaningful);
    question.shrinkage = -0.25;
    EXPECT_NEAR(ForecastShape::make(question)->intensity, 0.75 * 3, 1e-9);
    EXPECT_TRUE(ForecastShape::make(question)->isMeaningful);
}

TEST(ForecastShape, WhatIsRecentCountsMore) {
    auto question = at(0.5);
    question.recencyHalfLife = day;
    question.actualCumulative = Curve{{sunday, 0.0}, {sunday + 2.5 * day, 0.0}, {sunday + 3.5 * day, 150.0}};
    const double old = std::exp(-1.0);
    const double expected = 150.0 / (100 * (2.5 / 7 * old + 1.0 / 7));
    EXPECT_NEAR(ForecastShape::make(question)->rawIntensity, expected, 1e-9);

    question.actualCumulative = Curve{{sunday, 0.0}};
    EXPECT_NEAR(ForecastShape::make(question)->rawIntensity, 3, 1e-9) << "a single point tells nothing";
    question.actualCumulative = Curve{{sunday, 0.0}, {sunday, 5.0}};
    EXPECT_NEAR(ForecastShape::make(question)->rawIntensity, 3, 1e-9) << "nothing was expected in between";
    question.actualCumulative = Curve{{sunday + 4 * day, 0.0}, {sunday + 5 * day, 100.0 / 7}};
    EXPECT_NEAR(ForecastShape::make(question)->rawIntensity, 1, 1e-9) << "what is yet to come counts once";
}

TEST(ForecastShape, ShareIsInterpolatedAndHeldAtTheEnds) {
    const ForecastShape shape = tenHours();
    EXPECT_EQ(shape.share(sunday - 1.0), 0);
    EXPECT_EQ(shape.share(sunday + 2 * hour), 0.25);
    EXPECT_EQ(shape.share(sunday + 5 * hour), 0.5);
    EXPECT_EQ(shape.share(sunday + 11 * hour), 1);
    EXPECT_EQ(valueOn({}, sunday), 0);
    EXPECT_EQ(
        valueOn(Curve{{sunday, 1.0}, {sunday + 1.0, 2.0}, {sunday + 1.0, 4.0}, {sunday + 2.0, 5.0}}, sunday + 1.0), 2)
        << "of two points at one instant the first";
}

TEST(ForecastShape, ProjectsFromWhatIsUsed) {
    const ForecastShape shape = tenHours();
    EXPECT_EQ(shape.projected({.usedNow = 60, .sNow = 0.5, .k = {}}, sunday + 10 * hour), 110);
    EXPECT_EQ(shape.projected({.usedNow = 60, .sNow = 0.5, .k = 2.0}, sunday + 10 * hour), 160);
    EXPECT_EQ(shape.projected({.usedNow = 60, .sNow = 0.5, .k = {}}, sunday), 60);
}

TEST(ForecastShape, CrossesALevelOnceInTheWindow) {
    const ForecastShape shape = tenHours();
    const ForecastShape::Standing start{.usedNow = 0, .sNow = 0, .k = {}};
    EXPECT_EQ(shape.crossing(start, {.level = 25, .after = sunday}), sunday + 2 * hour);
    EXPECT_EQ(shape.crossing(start, {.level = 75, .after = sunday}), sunday + 8 * hour);
    EXPECT_EQ(shape.crossing(start, {.level = 100, .after = sunday}), sunday + 10 * hour);
    EXPECT_FALSE(shape.crossing(start, {.level = 100.5, .after = sunday}));
    EXPECT_EQ(shape.crossing(start, {.level = 25, .after = sunday + 3 * hour}), sunday + 3 * hour);
}

TEST(ForecastShape, ALevelThatIsReachedIsReachedNow) {
    const ForecastShape shape = tenHours();
    EXPECT_EQ(shape.crossing({.usedNow = 30, .sNow = 0, .k = 0.0}, {.level = 30, .after = sunday}), sunday);
    EXPECT_FALSE(shape.crossing({.usedNow = 29, .sNow = 0, .k = 0.0}, {.level = 30, .after = sunday}));
    EXPECT_FALSE(ForecastShape{}.crossing({.usedNow = 0, .sNow = 0, .k = 1.0}, {.level = 1, .after = sunday}));
}

} // namespace
} // namespace UsageEngine
