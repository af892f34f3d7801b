#include "UsageEngine/Rollups.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::Calendar;
using UsageModel::EffortLevel;
using UsageModel::ModelBucket;
using UsageModel::ModelClass;
using UsageModel::SeriesPoint;
using Points = std::vector<SeriesPoint>;

TEST(Rollups, WeightedUsageTakesTheStartAndNotTheEnd) {
    const Turns turns{turnAt(sunday, 1), turnAt(sunday + 10.0, 2, ModelClass::sonnet), turnAt(sunday + 20.0, 4)};
    const TimeSpan span{.from = sunday, .to = sunday + 20.0};
    EXPECT_EQ(Rollups::weightedUsage(turns, span), 3);
    EXPECT_EQ(Rollups::weightedUsage(turns, span, {.opusOnly = true, .bucket = {}}), 1);
    EXPECT_EQ(Rollups::weightedUsage(turns, span, {.opusOnly = false, .bucket = ModelBucket::sonnet}), 2);
    EXPECT_EQ(Rollups::weightedUsage({}, span), 0);
}

TEST(Rollups, HourlyCumulativeOfAnEmptySpanIsItsStart) {
    const Turns turns{turnAt(sunday, 1)};
    EXPECT_EQ(Rollups::hourlyCumulative({.turns = turns, .span = {.from = sunday, .to = sunday}, .bucket = {}}),
              (Points{{sunday, 0.0}}));
}

TEST(Rollups, HourlyCumulativeStepsFromTheStart) {
    const Turns turns{turnAt(sunday + 2.5 * hour, 8), turnAt(sunday + hour, 2), turnAt(sunday, 1),
                      turnAt(sunday - 1.0, 16)};
    EXPECT_EQ(Rollups::hourlyCumulative(
                  {.turns = turns, .span = {.from = sunday, .to = sunday + 2.5 * hour}, .scale = 10, .bucket = {}}),
              (Points{{sunday, 0.0}, {sunday + hour, 10.0}, {sunday + 2 * hour, 30.0}, {sunday + 2.5 * hour, 30.0}}))
        << "a turn at the very end adds nothing";
}

TEST(Rollups, HourlyCumulativeStepsOverOtherBuckets) {
    const Turns turns{turnAt(sunday, 1, ModelClass::haiku), turnAt(sunday + 1.0, 2, ModelClass::sonnet),
                      turnAt(sunday + 2.0, 4), turnAt(sunday + hour, 8, ModelClass::sonnet)};
    EXPECT_EQ(Rollups::hourlyCumulative(
                  {.turns = turns, .span = {.from = sunday, .to = sunday + 2 * hour}, .bucket = ModelBucket::sonnet}),
              (Points{{sunday, 0.0}, {sunday + hour, 2.0}, {sunday + 2 * hour, 10.0}}));
}

TEST(Rollups, ByModelClassHasNoKeyForAnAbsentClass) {
    const Turns turns{turnAt(sunday, 1), turnAt(sunday + 1.0, 2), turnAt(sunday + 2.0, 4, ModelClass::haiku)};
    EXPECT_EQ(Rollups::byModelClass(turns, {.from = sunday, .to = sunday + 2.0}).byClass,
              (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 3.0}}));
}

TEST(Rollups, ByEffortCountsOnlyKnownEfforts) {
    const TimeSpan span{.from = sunday, .to = sunday + day};
    const Turns unknown{turnAt(sunday, 5)};
    EXPECT_EQ(Rollups::byEffort(unknown, span), EffortMix{});

    const Turns turns{turnAt(sunday, 5), turnAt(sunday, 3, ModelClass::opus, EffortLevel::high),
                      turnAt(sunday, 1, ModelClass::opus, EffortLevel::max)};
    const EffortMix mix = Rollups::byEffort(turns, span);
    EXPECT_EQ(mix.mix, (UsageModel::EnumMap<EffortLevel, double>{{EffortLevel::high, 0.75}, {EffortLevel::max, 0.25}}));
    EXPECT_EQ(mix.dominant, EffortLevel::high);
}

TEST(Rollups, OfEqualEffortsTheLowerIsDominant) {
    const Turns turns{turnAt(sunday, 2, ModelClass::opus, EffortLevel::high),
                      turnAt(sunday, 2, ModelClass::opus, EffortLevel::low)};
    EXPECT_EQ(Rollups::byEffort(turns, {.from = sunday, .to = sunday + 1.0}).dominant, EffortLevel::low);
}

TEST(Rollups, DailyCalendarRanksDaysByTheBusiest) {
    const std::vector<double> totals{0.0, 14.0, 15.0, 40.0, 69.0, 70.0, 100.0, -5.0};
    const std::vector<std::int64_t> levels{0, 1, 2, 3, 3, 4, 4, 0};
    Turns turns;
    for (std::size_t i = 0; i < totals.size(); ++i)
        turns.push_back(turnAt(sunday + static_cast<double>(i) * day + 5.0, totals[i]));
    const auto cells = Rollups::dailyCalendar(turns, Calendar::utc());
    ASSERT_EQ(cells.size(), totals.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        EXPECT_EQ(cells[i].day, sunday + static_cast<double>(i) * day);
        EXPECT_EQ(cells[i].weighted, totals[i]);
        EXPECT_EQ(cells[i].level, levels[i]) << i;
    }
    EXPECT_TRUE(Rollups::dailyCalendar({}, Calendar::utc()).empty());
}

TEST(Rollups, DailyCalendarGoesByLocalDays) {
    const Turns turns{turnAt(sunday + 22.9 * hour, 1), turnAt(sunday + 23.1 * hour, 2)};
    EXPECT_EQ(Rollups::dailyCalendar(turns, Calendar::utc()).size(), 1U);
    EXPECT_EQ(Rollups::dailyCalendar(turns, *Calendar::inZone("Europe/Berlin")).size(), 2U);
}

TEST(Rollups, TrailingWeeklyIsAWeekWhateverTheKind) {
    const Turns turns{turnAt(sunday - week, 1), turnAt(sunday - 1.0, 2, ModelClass::sonnet), turnAt(sunday, 4)};
    const Rollup session = Rollups::trailingWeekly(
        {.turns = turns, .now = sunday, .kind = UsageModel::WindowKind::session5h, .resetsAt = {}});
    EXPECT_EQ(session.used, 3);
    EXPECT_EQ(session.windowStart, sunday - week);
    const Rollup opus = Rollups::trailingWeekly(
        {.turns = turns, .now = sunday, .kind = UsageModel::WindowKind::weeklyOpus, .resetsAt = sunday + 1.0});
    EXPECT_EQ(opus.used, 4);
    EXPECT_EQ(opus.windowEnd, sunday + 1.0);
}

} // namespace
} // namespace UsageEngine
