#include "UsageEngine/BottomUpForecast.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::SeriesPoint;
using Curve = std::vector<SeriesPoint>;

const Calendar utc = Calendar::utc();

/// Every day costs 24, one an hour; dear days twice, cheap days half of it.
WeekdayProfile even() {
    WeekdayProfile profile = WeekdayProfile::empty();
    profile.dayLevel.assign(7, 24);
    profile.dayHigh.assign(7, 48);
    profile.dayLow.assign(7, 12);
    profile.sampleCount.assign(7, 2);
    return profile;
}

struct Wish {
    double fraction = 0.5;
    double usedNow = 84;
    double recencyWeight = 1.0;
    std::optional<double> sessionCapCost;
};

std::optional<BottomUpForecast> made(const Wish& wish, const WeekdayProfile& profile = even()) {
    return BottomUpForecast::make({.profile = profile,
                                   .usedNow = wish.usedNow,
                                   .window = {.from = sunday, .to = sunday + week},
                                   .now = sunday + wish.fraction * week,
                                   .calendar = utc,
                                   .recencyWeight = wish.recencyWeight,
                                   .sessionCapCost = wish.sessionCapCost});
}

TEST(BottomUpForecast, NeedsAWindowThatIsBegunAndNotOver) {
    EXPECT_FALSE(made({.fraction = 0, .sessionCapCost = {}}));
    EXPECT_FALSE(made({.fraction = 1, .sessionCapCost = {}}));
    EXPECT_TRUE(made({.fraction = -0.1, .sessionCapCost = {}})) << "one that is yet to begin is not refused";
}

TEST(BottomUpForecast, CostsWhatIsUsualFromNowOn) {
    const auto forecast = made({.sessionCapCost = {}});
    EXPECT_EQ(forecast->curve.front(), (SeriesPoint{sunday + 0.5 * week, 84.0}));
    EXPECT_NEAR(forecast->landing(), 168, 1e-9);
    EXPECT_NEAR(forecast->high.back().used, 84 + 168, 1e-9);
    EXPECT_NEAR(forecast->low.back().used, 84 + 42, 1e-9);
    EXPECT_NEAR(forecast->intensity, 1, 1e-12);
    EXPECT_TRUE(forecast->isMeaningful);
    EXPECT_EQ(forecast->typicalWeekTotal, 168);
}

TEST(BottomUpForecast, TheWindowsOwnPaceCountsAsItPasses) {
    EXPECT_NEAR(made({.usedNow = 3 * 84, .sessionCapCost = {}})->landing(), 3 * 84 + 2 * 84, 1e-9);
    EXPECT_NEAR(made({.usedNow = 3 * 84, .sessionCapCost = {}})->intensity, 3, 1e-12);
    EXPECT_NEAR(made({.usedNow = 0, .recencyWeight = 3, .sessionCapCost = {}})->landing(), 0, 1e-9)
        << "growth is never negative";
}

TEST(BottomUpForecast, WithoutAProfileNothingGrows) {
    const auto forecast = made({.usedNow = 7, .sessionCapCost = {}}, WeekdayProfile::empty());
    EXPECT_EQ(forecast->intensity, 1);
    EXPECT_EQ(forecast->landing(), 7);
    EXPECT_FALSE(forecast->isMeaningful);
}

TEST(BottomUpForecast, ASessionCostsNoMoreThanItsCap) {
    const auto forecast = made({.sessionCapCost = 2.5});
    EXPECT_NEAR(forecast->landing(), 84 + 84 / 5.0 * 2.5, 1e-9);
    EXPECT_NEAR(made({.sessionCapCost = 0.0})->landing(), 168, 1e-9) << "none at all is no bound";
}

TEST(BottomUpForecast, ValueRunsAlongTheChordFromTheStart) {
    const Curve curve{{sunday, 0.0}, {sunday + hour, 10.0}, {sunday + 2 * hour, 10.0}, {sunday + 3 * hour, 40.0}};
    EXPECT_NEAR(BottomUpForecast::value(curve, sunday + 2.5 * hour, 9), 40 * 2.5 / 3, 1e-12);
    EXPECT_EQ(BottomUpForecast::value(curve, sunday - hour, 9), 0);
    EXPECT_EQ(BottomUpForecast::value(curve, sunday + 4 * hour, 9), 40);
    EXPECT_EQ(BottomUpForecast::value({}, sunday, 9), 9);
}

TEST(BottomUpForecast, CrossesBetweenPoints) {
    const auto forecast = made({.sessionCapCost = {}});
    const Date now = forecast->now;
    EXPECT_EQ(forecast->crossing({.level = 80, .after = now}), now);
    const auto crossing = forecast->crossing({.level = 94.5, .after = now});
    ASSERT_TRUE(crossing);
    EXPECT_NEAR(*crossing - now, 10.5 * hour, 1e-3);
    EXPECT_FALSE(forecast->crossing({.level = 169, .after = now}));
    EXPECT_TRUE(forecast->crossing({.level = 169, .after = now, .kFactor = 2}));
    EXPECT_FALSE(forecast->crossing({.level = 85, .after = now, .kFactor = 0}));
    EXPECT_EQ(forecast->crossing({.level = 90, .after = now + 20 * hour}), now + 20 * hour)
        << "what comes before is passed over";
    EXPECT_FALSE(BottomUpForecast{}.crossing({.level = 0, .after = now}));
}

TEST(BottomUpForecast, AFactorScalesTheGrowth) {
    const auto forecast = made({.sessionCapCost = {}});
    EXPECT_NEAR(forecast->projected(sunday + week, 0.5), 84 + 42, 1e-9);
    EXPECT_EQ(BottomUpForecast{.usedNow = 3}.projected(sunday), 3);
}

TEST(BottomUpForecast, HoursThatGiveBackNeverLowerACurve) {
    WeekdayProfile profile;
    profile.dayLevel.assign(7, 24);
    profile.dayHigh = profile.dayLow = profile.dayLevel;
    profile.hourShare[2] = -0.5;
    const auto forecast = BottomUpForecast::make({.profile = profile,
                                                  .usedNow = 3,
                                                  .window = {.from = sunday - 1.0, .to = sunday + 6 * hour},
                                                  .now = sunday,
                                                  .calendar = UsageModel::Calendar::utc(),
                                                  .recencyWeight = 0,
                                                  .sessionCapCost = {}});
    ASSERT_EQ(forecast->curve.size(), 7U);
    for (std::size_t i = 1; i < forecast->curve.size(); ++i)
        EXPECT_GE(forecast->curve[i].used, forecast->curve[i - 1].used) << i;
    EXPECT_NEAR(forecast->landing(), 5, 1e-9) << "the two hours before the damage";
}

} // namespace
} // namespace UsageEngine
