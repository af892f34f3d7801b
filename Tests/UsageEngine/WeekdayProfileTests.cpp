#include "UsageEngine/WeekdayProfile.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using Quantile = WeekdayProfile::Quantile;

const Calendar utc = Calendar::utc();

WeekdayProfile learnt(const Turns& turns, Date through, double scale = 1.0) {
    return WeekdayProfile::learn(
        {.turns = turns, .calendar = utc, .through = through, .lookbackWeeks = 8, .scale = scale});
}

/// Every day at 24, each hour of the day at its own share.
WeekdayProfile known() {
    WeekdayProfile profile = WeekdayProfile::empty();
    profile.dayLevel = {10, 20, 30, 40, 50, 60, 70};
    profile.dayLow = {1, 2, 3, 4, 5, 6, 7};
    for (std::size_t i = 0; i < WeekdayProfile::hoursOfDay; ++i) profile.hourShare[i] = static_cast<double>(i) / 276.0;
    return profile;
}

double burn(double from, double to, Quantile quantile = Quantile::typical) {
    return known().expectedBurn(
        {.span = {.from = sunday + from, .to = sunday + to}, .quantile = quantile, .calendar = utc});
}

TEST(WeekdayProfile, WithoutTurnsIsEmpty) {
    EXPECT_EQ(learnt({}, sunday), WeekdayProfile::empty());
    EXPECT_FALSE(WeekdayProfile::empty().isUsable());
    EXPECT_EQ(WeekdayProfile::empty().typicalWeekTotal(), 0);
}

TEST(WeekdayProfile, ADayInProgressIsNoSample) {
    const WeekdayProfile today = learnt({turnAt(sunday + hour, 5)}, sunday + 2 * hour);
    EXPECT_EQ(today, WeekdayProfile::empty());
    const WeekdayProfile over = learnt({turnAt(sunday + hour, 5)}, sunday + day);
    EXPECT_EQ(over.sampleCount, (std::vector<std::int64_t>{1, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(over.dayLevel[0], 5);
    EXPECT_EQ(over.hourShare[1], 1);
    EXPECT_FALSE(over.isUsable());
}

TEST(WeekdayProfile, IdleDaysAreSamplesOfNothing) {
    const WeekdayProfile profile =
        learnt({turnAt(sunday, 0), turnAt(sunday + 3 * week, 50)}, sunday + 3 * week + day, 2);
    EXPECT_EQ(profile.sampleCount[0], 4);
    EXPECT_EQ(profile.dayLevel[0], 0);
    EXPECT_EQ(profile.dayLow[0], 0);
    EXPECT_EQ(profile.dayHigh[0], 25);
    EXPECT_TRUE(profile.isUsable());
}

TEST(WeekdayProfile, LooksBackNoFurtherThanTold) {
    const WeekdayProfile profile = learnt({turnAt(sunday - 20 * week, 99), turnAt(sunday - day, 1)}, sunday);
    EXPECT_EQ(profile.sampleCount, std::vector<std::int64_t>(7, 8));
    EXPECT_EQ(profile.hourShare[0], 1) << "what came before the horizon shapes nothing";
}

TEST(WeekdayProfile, AnHourThatIsBegunInsideCountsWhole) {
    EXPECT_DOUBLE_EQ(burn(10 * hour, 10.5 * hour), 10 * (10 / 276.0) / 2);
    EXPECT_DOUBLE_EQ(burn(10.5 * hour, 11.5 * hour), 10 * (10 / 276.0));
    EXPECT_DOUBLE_EQ(burn(10.5 * hour, 13 * hour), 10 * (10 / 276.0 + 12 / 276.0));
}

TEST(WeekdayProfile, EachSideOfMidnightHasItsOwnLevel) {
    EXPECT_DOUBLE_EQ(burn(23 * hour, 26 * hour), 10 * (23 / 276.0) + 20 * (1 / 276.0));
    EXPECT_DOUBLE_EQ(burn(23 * hour, 26 * hour, Quantile::low), 1 * (23 / 276.0) + 2 * (1 / 276.0));
    EXPECT_EQ(burn(23 * hour, 26 * hour, Quantile::high), 0);
    EXPECT_EQ(burn(5, 5), 0);
    EXPECT_EQ(burn(5, 4), 0);
    EXPECT_NEAR(burn(0, week), known().typicalWeekTotal(), 1e-9);
}

TEST(WeekdayProfile, TheCurveStepsByHours) {
    const auto curve = known().cumulative(
        {.span = {.from = sunday, .to = sunday + 1.5 * hour}, .quantile = Quantile::typical, .calendar = utc});
    ASSERT_EQ(curve.size(), 3U);
    EXPECT_EQ(curve[0], (UsageModel::SeriesPoint{sunday, 0.0}));
    EXPECT_DOUBLE_EQ(curve[2].used, 10 * (1 / 276.0) / 2);
    EXPECT_EQ(known()
                  .cumulative({.span = {.from = sunday, .to = sunday}, .quantile = Quantile::typical, .calendar = utc})
                  .size(),
              1U);
}

TEST(WeekdayProfile, ASkippedDayHoldsNothingUp) {
    // Samoa went from 29 to 31 December 2011.
    const Calendar apia = *Calendar::inZone("Pacific/Apia");
    const Date before{1325000000};
    const Turns turns{turnAt(before, 1), turnAt(before + week, 1)};
    const WeekdayProfile profile = WeekdayProfile::learn(
        {.turns = turns, .calendar = apia, .through = before + 2 * week, .lookbackWeeks = 8, .scale = 1.0});
    std::int64_t days = 0;
    for (const std::int64_t count : profile.sampleCount) days += count;
    EXPECT_EQ(days, 14) << "two weeks of time, a day of it skipped by the calendar and one begun";
}

} // namespace
} // namespace UsageEngine
