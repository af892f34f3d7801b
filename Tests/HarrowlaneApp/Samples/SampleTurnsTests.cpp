#include "HarrowlaneApp/Samples/SampleTurns.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "UsageModel/CategoryWeights.h"
#include "UsageModel/Printing.h"

namespace {

using namespace HarrowlaneApp;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;

constexpr double day = 86400.0;
constexpr Date monday{1772470800};

TurnPlan plan() {
    return {.windowStart = monday,
            .now = monday + 3 * day,
            .priorTotals = {0.9, 0.7},
            .soFar = 0.4,
            .mix = {{ModelClass::opus, 0.75}, {ModelClass::sonnet, 0.25}}};
}

double weightBetween(const std::vector<UsageEvent>& turns, Date from, Date to) {
    const auto weights = UsageModel::CategoryWeights::priors(UsageModel::liveWeightScale);
    double sum = 0.0;
    for (const UsageEvent& turn : turns) sum += turn.ts >= from && turn.ts < to ? weights.effective(turn) : 0.0;
    return sum;
}

TEST(SampleTurns, AreTheSameTwice) {
    EXPECT_EQ(turnsOf(plan(), Calendar::utc()), turnsOf(plan(), Calendar::utc()));
}

TEST(SampleTurns, AddUpToWhatEachWeekIsToCost) {
    const auto turns = turnsOf(plan(), Calendar::utc());
    EXPECT_NEAR(weightBetween(turns, monday, monday + 3 * day), 0.4, 0.01);
    EXPECT_NEAR(weightBetween(turns, monday - 7 * day, monday), 0.9, 0.01);
    EXPECT_NEAR(weightBetween(turns, monday - 14 * day, monday - 7 * day), 0.7, 0.01);
    EXPECT_EQ(weightBetween(turns, monday - 100 * day, monday - 14 * day), 0.0);
}

TEST(SampleTurns, ComeByTimeAndEndWithThePresent) {
    const auto turns = turnsOf(plan(), Calendar::utc());
    EXPECT_TRUE(std::ranges::is_sorted(turns, {}, &UsageEvent::ts));
    EXPECT_LT(turns.back().ts, monday + 3 * day);
    EXPECT_GE(turns.front().ts, monday - 14 * day);
}

TEST(SampleTurns, KeepTheMixOfClasses) {
    const auto turns = turnsOf(plan(), Calendar::utc());
    std::vector<UsageEvent> opus;
    std::ranges::copy_if(turns, std::back_inserter(opus),
                         [](auto& turn) { return turn.modelClass == ModelClass::opus; });
    const double all = weightBetween(turns, monday - 14 * day, monday + 3 * day);
    EXPECT_NEAR(weightBetween(opus, monday - 14 * day, monday + 3 * day) / all, 0.75, 0.08);
}

TEST(SampleTurns, FallIntoWorkingHoursOfTheCalendar) {
    const Calendar tokyo = *Calendar::inZone("Asia/Tokyo");
    for (const UsageEvent& turn : turnsOf(plan(), tokyo)) {
        EXPECT_GE(tokyo.hour(turn.ts), 8);
        EXPECT_LT(tokyo.hour(turn.ts), 19);
    }
}

TEST(SampleTurns, AreNoneInAWeekThatHasJustBegun) {
    TurnPlan fresh = plan();
    fresh.now = fresh.windowStart;
    fresh.priorTotals.clear();
    EXPECT_TRUE(turnsOf(fresh, Calendar::utc()).empty());
}

} // namespace
