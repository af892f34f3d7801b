#include "UsageEngine/Baseline.h"

#include <numeric>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using UsageModel::Calendar;
using UsageModel::WindowKind;

constexpr double flatHour = 1.0 / 168.0;
const std::vector<double> flat(Baseline::hoursOfWeek, flatHour);

/// Hour h weighs h.
Baseline rising() {
    std::vector<double> week(Baseline::hoursOfWeek);
    std::iota(week.begin(), week.end(), 0.0);
    return {week, Calendar::utc()};
}

Baseline learnt(const Turns& turns, const Baseline::LearnQuestion& rest) {
    Baseline::LearnQuestion question = rest;
    question.turns = turns;
    return Baseline::learn(question);
}

const Calendar utc = Calendar::utc();
const Baseline::LearnQuestion all{.turns = {}, .calendar = utc, .from = {}, .to = {}, .filter = {}};

TEST(Baseline, AListOfAnotherLengthIsTheFlatWeek) {
    EXPECT_EQ(Baseline(std::vector<double>(167, 9.0), utc).week(), flat);
    EXPECT_EQ(Baseline(std::vector<double>(168, 9.0), utc).week(), std::vector<double>(168, 9.0));
}

TEST(Baseline, LearnsSharesOfHours) {
    const auto hours =
        learnt({turnAt(sunday, 1), turnAt(sunday + week, 2), turnAt(sunday + 167.5 * hour, 1)}, all).week();
    EXPECT_EQ(hours[0], 0.75);
    EXPECT_EQ(hours[167], 0.25);
    EXPECT_EQ(hours[1], 0.0);
}

TEST(Baseline, LearnsNothingOfTurnsThatDoNotCount) {
    EXPECT_EQ(learnt({}, all).week(), flat);
    EXPECT_EQ(learnt({turnAt(sunday, -1)}, all).week(), flat);
    Baseline::LearnQuestion bounded{.turns = {}, .calendar = utc, .from = sunday, .to = sunday + hour, .filter = {}};
    EXPECT_EQ(learnt({turnAt(sunday + hour, 1), turnAt(sunday - 1.0, 1)}, bounded).week(), flat);
    EXPECT_EQ(learnt({turnAt(sunday, 1)}, bounded).week()[0], 1.0);
    bounded.filter.opusOnly = true;
    EXPECT_EQ(learnt({turnAt(sunday, 1, UsageModel::ModelClass::haiku)}, bounded).week(), flat);
}

TEST(Baseline, CountsHoursInItsZone) {
    const Calendar kathmandu = *Calendar::inZone("Asia/Kathmandu"); // 5 h 45 min ahead
    const Baseline::LearnQuestion there{.turns = {}, .calendar = kathmandu, .from = {}, .to = {}, .filter = {}};
    EXPECT_EQ(learnt({turnAt(sunday, 1)}, there).week()[5], 1.0);
}

TEST(Baseline, RateSmoothsOverTheEndOfTheWeek) {
    EXPECT_DOUBLE_EQ(rising().rate(sunday, WindowKind::weeklyAll), (167.0 + 0.0 + 1.0) / 3 / 3600);
    EXPECT_DOUBLE_EQ(rising().rate(sunday + 167 * hour, WindowKind::weeklyOpus), (166.0 + 167.0 + 0.0) / 3 / 3600);
    EXPECT_EQ(rising().rate(sunday, WindowKind::session5h), 1.0 / 18000);
}

TEST(Baseline, ASessionRunsEvenly) {
    const auto share = [](double seconds) {
        return rising().expectedElapsedShare({.from = sunday, .to = sunday + seconds}, WindowKind::session5h);
    };
    EXPECT_EQ(share(-5), 0);
    EXPECT_EQ(share(9000), 0.5);
    EXPECT_EQ(share(18000), 1);
    EXPECT_EQ(share(90000), 1);
}

TEST(Baseline, AWeekGoesByItsHours) {
    const Baseline even(flat, utc);
    const auto share = [&](double seconds) {
        return even.expectedElapsedShare({.from = sunday, .to = sunday + seconds}, WindowKind::weeklyAll);
    };
    EXPECT_EQ(share(0), 0);
    EXPECT_EQ(share(-hour), 0);
    EXPECT_NEAR(share(84 * hour), 0.5, 1e-12);
    EXPECT_NEAR(share(0.5 * hour), flatHour / 2, 1e-12);
    EXPECT_EQ(share(2 * week), 1);
}

TEST(Baseline, AStepTakesTheHourItBeginsIn) {
    std::vector<double> week(Baseline::hoursOfWeek, 0.0);
    week[0] = 0.25;
    const Baseline onlyTheFirst(week, utc);
    const TimeSpan span{.from = sunday + 0.5 * hour, .to = sunday + 1.5 * hour};
    EXPECT_EQ(onlyTheFirst.expectedElapsedShare(span, WindowKind::weeklyAll), 0.25);
}

TEST(Baseline, TheCurveOfNoSpanOrStepIsEmpty) {
    const Baseline even(flat, utc);
    EXPECT_TRUE(even.cumulativeShareCurve({.from = sunday, .to = sunday}, hour).empty());
    EXPECT_TRUE(even.cumulativeShareCurve({.from = sunday, .to = sunday + week}, 0).empty());
    const auto curve = even.cumulativeShareCurve({.from = sunday, .to = sunday + 2.5 * hour}, hour);
    ASSERT_EQ(curve.size(), 4U);
    EXPECT_EQ(curve.back().t, sunday + 2.5 * hour);
    EXPECT_NEAR(curve.back().used, 2.5 * flatHour, 1e-12);
}

} // namespace
} // namespace UsageEngine
