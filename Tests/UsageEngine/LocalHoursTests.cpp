#include "UsageEngine/LocalHours.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using UsageModel::Calendar;
using UsageModel::Date;

constexpr double minute = 60.0;

Date utc(absl::CivilSecond clock) {
    return Calendar::utc().instant(clock);
}

/// What tells one hour of the local clock from every other.
auto identity(const LocalHour& hour) {
    return std::tuple(hour.day, hour.hour, hour.weekday);
}

/// A stretch that was visited.
struct Stretch {
    LocalHour hour;
    WeighedTurns turns;
};

std::vector<Stretch> stretchesOf(WeighedTurns turns, const Calendar& calendar) {
    std::vector<Stretch> stretches;
    forEachLocalHour(turns, calendar, [&](const LocalHour& hour, WeighedTurns inHour) {
        stretches.push_back({hour, inHour});
    });
    return stretches;
}

struct ClockRow : TestSupport::Named {
    std::string_view zone;
    absl::CivilSecond at;
    absl::CivilSecond day;
    int hour;
    int weekday;
};

class LocalHourTest : public testing::TestWithParam<ClockRow> {};

TEST_P(LocalHourTest, IsThatOfTheLocalClock) {
    const LocalHour hour = localHour(*Calendar::inZone(GetParam().zone), utc(GetParam().at));
    EXPECT_EQ(hour.day, utc(GetParam().day));
    EXPECT_EQ(hour.hour, GetParam().hour);
    EXPECT_EQ(hour.weekday, GetParam().weekday);
}

using Clock = absl::CivilSecond;

INSTANTIATE_TEST_SUITE_P(
    Clocks, LocalHourTest,
    testing::Values(
        ClockRow{"UTC", "UTC", Clock(2026, 3, 1, 0, 0, 0), Clock(2026, 3, 1), 0, 1},
        ClockRow{"the last hour of a week", "UTC", Clock(2026, 2, 28, 23, 59, 59), Clock(2026, 2, 28), 23, 7},
        ClockRow{"tomorrow there", "Pacific/Auckland", Clock(2026, 3, 1, 12), Clock(2026, 3, 1, 11), 1, 2},
        ClockRow{"yesterday there", "America/New_York", Clock(2026, 3, 1, 3), Clock(2026, 2, 28, 5), 22, 7},
        ClockRow{"half an hour off", "Asia/Kolkata", Clock(2026, 3, 1, 18, 29), Clock(2026, 2, 28, 18, 30), 23, 1},
        ClockRow{"three quarters off", "Asia/Kathmandu", Clock(2026, 3, 1, 0, 14), Clock(2026, 2, 28, 18, 15), 5, 1},
        ClockRow{"a day of 23 hours", "Europe/Berlin", Clock(2026, 3, 29, 21, 30), Clock(2026, 3, 28, 23), 23, 1},
        ClockRow{"a day of 25 hours", "Europe/Berlin", Clock(2026, 10, 25, 22, 30), Clock(2026, 10, 24, 22), 23, 1},
        ClockRow{"no midnight", "America/Havana", Clock(2025, 3, 9, 5), Clock(2025, 3, 9, 5), 1, 1},
        ClockRow{"midnight twice", "America/Havana", Clock(2025, 11, 2, 5, 30), Clock(2025, 11, 2, 4), 0, 1},
        ClockRow{"the evening twice", "Asia/Beirut", Clock(2025, 10, 25, 21, 30), Clock(2025, 10, 24, 21), 23, 7},
        ClockRow{"before the day that was none", "Pacific/Apia", Clock(2011, 12, 30, 9, 59, 59),
                 Clock(2011, 12, 29, 10), 23, 5},
        ClockRow{"after the day that was none", "Pacific/Apia", Clock(2011, 12, 30, 10), Clock(2011, 12, 30, 10), 0, 7},
        ClockRow{"a second before 1970", "UTC", Clock(1969, 12, 31, 23, 59, 59), Clock(1969, 12, 31), 23, 4},
        ClockRow{"local mean time", "America/New_York", Clock(1883, 11, 1, 4, 56, 2), Clock(1883, 11, 1, 4, 56, 2), 0,
                 5},
        ClockRow{"summer after 2037", "Europe/Berlin", Clock(2050, 7, 1, 22), Clock(2050, 7, 1, 22), 0, 7},
        ClockRow{"winter after 2037", "Europe/Berlin", Clock(2050, 12, 1, 22), Clock(2050, 11, 30, 23), 23, 5}),
    TestSupport::rowName);

struct EvenRow : TestSupport::Named {
    std::string_view zone;
    absl::CivilSecond at;
    absl::CivilSecond from;
    double length;
};

class EvenHourTest : public testing::TestWithParam<EvenRow> {};

TEST_P(EvenHourTest, IsTheWholeHourOrNothing) {
    const Date at = utc(GetParam().at);
    const TimeSpan span = evenHourAround(*Calendar::inZone(GetParam().zone), at);
    EXPECT_EQ(span.from, utc(GetParam().from));
    EXPECT_EQ(span.to - span.from, GetParam().length);
    if (GetParam().length == 0) {
        EXPECT_EQ(span.from, at) << "nothing, at the date itself";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Hours, EvenHourTest,
    testing::Values(
        EvenRow{"from its first instant", "UTC", Clock(2026, 3, 1, 7), Clock(2026, 3, 1, 7), hour},
        EvenRow{"to its last second", "UTC", Clock(2026, 3, 1, 7, 59, 59), Clock(2026, 3, 1, 7), hour},
        EvenRow{"half an hour off", "Asia/Kolkata", Clock(2026, 3, 1, 7, 29), Clock(2026, 3, 1, 6, 30), hour},
        EvenRow{"before 1970", "UTC", Clock(1969, 12, 31, 23, 30), Clock(1969, 12, 31, 23), hour},
        EvenRow{"local mean time", "America/New_York", Clock(1883, 11, 1, 5), Clock(1883, 11, 1, 4, 56, 2), hour},
        EvenRow{"up to a jump ahead", "Europe/Berlin", Clock(2026, 3, 29, 0, 59, 59), Clock(2026, 3, 29), hour},
        EvenRow{"from a jump ahead", "Europe/Berlin", Clock(2026, 3, 29, 1), Clock(2026, 3, 29, 1), hour},
        EvenRow{"first time round", "Europe/Berlin", Clock(2026, 10, 25, 0, 30), Clock(2026, 10, 25, 0), hour},
        EvenRow{"second time round", "Europe/Berlin", Clock(2026, 10, 25, 1, 30), Clock(2026, 10, 25, 1), hour},
        EvenRow{"a jump over midnight", "America/Havana", Clock(2025, 3, 9, 5, 30), Clock(2025, 3, 9, 5), hour},
        EvenRow{"midnight for the second time", "America/Havana", Clock(2025, 11, 2, 5), Clock(2025, 11, 2, 5), hour},
        EvenRow{"the hour before a lost day", "Pacific/Apia", Clock(2011, 12, 30, 9, 30), Clock(2011, 12, 30, 9), hour},
        EvenRow{"the hour after a lost day", "Pacific/Apia", Clock(2011, 12, 30, 10, 30), Clock(2011, 12, 30, 10),
                hour},
        EvenRow{"after 2037", "Europe/Berlin", Clock(2050, 3, 27, 1, 10), Clock(2050, 3, 27, 1), hour},
        EvenRow{"half an hour ahead, before", "Australia/Lord_Howe", Clock(2025, 10, 4, 15, 29, 59),
                Clock(2025, 10, 4, 14, 30), hour},
        EvenRow{"half an hour ahead, in the short hour", "Australia/Lord_Howe", Clock(2025, 10, 4, 15, 45),
                Clock(2025, 10, 4, 15, 45), 0},
        EvenRow{"half an hour ahead, after", "Australia/Lord_Howe", Clock(2025, 10, 4, 16), Clock(2025, 10, 4, 16),
                hour},
        EvenRow{"half an hour back, first time", "Australia/Lord_Howe", Clock(2025, 4, 5, 14, 45),
                Clock(2025, 4, 5, 14), hour},
        EvenRow{"half an hour back, again", "Australia/Lord_Howe", Clock(2025, 4, 5, 15, 15), Clock(2025, 4, 5, 15, 15),
                0},
        EvenRow{"half an hour back, after", "Australia/Lord_Howe", Clock(2025, 4, 5, 15, 30), Clock(2025, 4, 5, 15, 30),
                hour},
        EvenRow{"back to the full hour, before", "Asia/Colombo", Clock(1996, 10, 25, 17, 40),
                Clock(1996, 10, 25, 17, 40), 0},
        EvenRow{"back to the full hour, after", "Asia/Colombo", Clock(1996, 10, 25, 18, 10), Clock(1996, 10, 25, 18),
                hour},
        EvenRow{"ahead within the hour, before", "Africa/Monrovia", Clock(1972, 1, 7, 0, 44, 29),
                Clock(1972, 1, 6, 23, 44, 30), hour},
        EvenRow{"ahead within the hour, after", "Africa/Monrovia", Clock(1972, 1, 7, 0, 50), Clock(1972, 1, 7, 0, 50),
                0}),
    TestSupport::rowName);

TEST(EvenHour, KeepsToWholeSecondsOnEitherSideOf1970) {
    const Calendar calendar = Calendar::utc();
    EXPECT_EQ(evenHourAround(calendar, Date{3599.999}).from, Date{0});
    EXPECT_EQ(evenHourAround(calendar, Date{-0.001}).from, Date{-3600});
    EXPECT_EQ(evenHourAround(calendar, Date{-3600}).from, Date{-3600});
    EXPECT_EQ(evenHourAround(calendar, Date{-3600.001}).from, Date{-7200});
}

TEST(LocalHours, NoTurnsNoVisit) {
    EXPECT_TRUE(stretchesOf({}, Calendar::utc()).empty());
}

TEST(LocalHours, TurnsOfOneHourComeTogether) {
    const Turns turns{turnAt(sunday, 1),        turnAt(sunday, 32),       turnAt(sunday + hour - 0.001, 2),
                      turnAt(sunday + hour, 4), turnAt(sunday + hour, 8), turnAt(sunday + day, 16)};
    const auto stretches = stretchesOf(turns, Calendar::utc());
    ASSERT_EQ(stretches.size(), 3U);
    EXPECT_EQ(sumOf(stretches[0].turns), 35);
    EXPECT_EQ(sumOf(stretches[1].turns), 12);
    EXPECT_EQ(sumOf(stretches[2].turns), 16);
    EXPECT_EQ(stretches[1].hour.hour, 1);
    EXPECT_EQ(stretches[2].hour.day, sunday + day);
}

TEST(LocalHours, TheSameHourOfAnotherDayIsAnother) {
    const Turns turns{turnAt(sunday, 1), turnAt(sunday + day, 2), turnAt(sunday + week, 4)};
    EXPECT_EQ(stretchesOf(turns, Calendar::utc()).size(), 3U);
}

TEST(LocalHours, InstantsBeyondEveryCalendarAreVisitedOnceEach) {
    const double infinity = std::numeric_limits<double>::infinity();
    const Turns turns{turnAt(Date{-infinity}, 1), turnAt(Date{-1e300}, 2), turnAt(Date{-1e300}, 4),
                      turnAt(Date{-4e12}, 8),     turnAt(Date{4e12}, 16),  turnAt(Date{1e300}, 32),
                      turnAt(Date{infinity}, 64)};
    for (const char* zone : {"UTC", "Europe/Berlin", "Australia/Lord_Howe"}) {
        double sum = 0;
        for (const auto& [hour, visited] : stretchesOf(turns, *Calendar::inZone(zone))) sum += sumOf(visited);
        EXPECT_EQ(sum, 127) << zone;
    }
}

struct ChangeRow : TestSupport::Named {
    std::string_view zone;
    /// In UTC.
    absl::CivilSecond change;
};

class ClockChangeTest : public testing::TestWithParam<ChangeRow> {
protected:
    /// Every minute and, beside the change, every tenth of a second, for 30 hours before and after it.
    Turns turns() const {
        const Date change = utc(GetParam().change);
        std::vector<WeighedTurn> turns;
        for (double t = -30 * hour; t <= 30 * hour; t += minute) turns.push_back(turnAt(change + t, 1));
        for (double t = -2; t <= 2; t += 0.1) turns.push_back(turnAt(change + t, 1));
        return turns;
    }
    Calendar calendar() const { return *Calendar::inZone(GetParam().zone); }
};

TEST_P(ClockChangeTest, NoStretchLeavesItsHour) {
    const Turns all = turns();
    for (const auto& [hour, inHour] : stretchesOf(all, calendar())) {
        ASSERT_FALSE(inHour.empty());
        for (const WeighedTurn& turn : inHour)
            ASSERT_EQ(identity(localHour(calendar(), turn.ts)), identity(hour)) << turn.ts.secondsSince1970;
    }
}

TEST_P(ClockChangeTest, EveryTurnIsVisitedOnceAndInOrder) {
    const Turns all = turns();
    const WeighedTurns expected = all;
    const WeighedTurn* next = expected.data();
    for (const auto& [hour, inHour] : stretchesOf(all, calendar())) {
        ASSERT_EQ(inHour.data(), next);
        next += inHour.size();
    }
    EXPECT_EQ(next, expected.data() + expected.size());
}

TEST_P(ClockChangeTest, AnEvenHourRunsEvenly) {
    const Turns all = turns();
    for (const WeighedTurn& turn : WeighedTurns(all)) {
        const TimeSpan span = evenHourAround(calendar(), turn.ts);
        if (span.to == span.from) continue;
        ASSERT_TRUE(span.contains(turn.ts));
        ASSERT_EQ(span.to - span.from, hour);
        for (double t = 0; t < hour; t += minute)
            ASSERT_EQ(calendar().civil(span.from + t).minute(), static_cast<int>(t / minute));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ClockChangeTest,
    testing::Values(
        ChangeRow{"none at all", "UTC", Clock(2026, 3, 1)},
        ChangeRow{"none, half an hour off", "Asia/Kolkata", Clock(2026, 3, 1)},
        ChangeRow{"none, three quarters off", "Asia/Kathmandu", Clock(2026, 3, 1)},
        ChangeRow{"an hour ahead", "Europe/Berlin", Clock(2026, 3, 29, 1)},
        ChangeRow{"an hour back", "Europe/Berlin", Clock(2026, 10, 25, 1)},
        ChangeRow{"an hour ahead in a zone half an hour off", "Australia/Adelaide", Clock(2025, 10, 4, 16, 30)},
        ChangeRow{"an hour back in a zone half an hour off", "Australia/Adelaide", Clock(2025, 4, 5, 16, 30)},
        ChangeRow{"half an hour ahead", "Australia/Lord_Howe", Clock(2025, 10, 4, 15, 30)},
        ChangeRow{"half an hour back", "Australia/Lord_Howe", Clock(2025, 4, 5, 15)},
        ChangeRow{"half an hour back to the full hour", "Asia/Colombo", Clock(1996, 10, 25, 18)},
        ChangeRow{"half an hour back over midnight", "Asia/Pyongyang", Clock(2015, 8, 14, 15)},
        ChangeRow{"a quarter ahead over midnight", "Asia/Kathmandu", Clock(1985, 12, 31, 18, 30)},
        ChangeRow{"two hours ahead", "Antarctica/Troll", Clock(2025, 3, 30, 1)},
        ChangeRow{"midnight skipped", "America/Havana", Clock(2025, 3, 9, 5)},
        ChangeRow{"midnight again", "America/Havana", Clock(2025, 11, 2, 5)},
        ChangeRow{"back over midnight", "Asia/Beirut", Clock(2025, 10, 25, 21)},
        ChangeRow{"a day skipped", "Pacific/Apia", Clock(2011, 12, 30, 10)},
        ChangeRow{"a day again", "Pacific/Kwajalein", Clock(1969, 9, 30, 13)},
        ChangeRow{"local mean time left", "America/New_York", Clock(1883, 11, 18, 17)},
        ChangeRow{"three quarters and half a minute ahead", "Africa/Monrovia", Clock(1972, 1, 7, 0, 44, 30)},
        ChangeRow{"ahead after 2037", "Europe/Berlin", Clock(2050, 3, 27, 1)},
        ChangeRow{"back after 2037", "Europe/Berlin", Clock(2050, 10, 30, 1)}),
    TestSupport::rowName);

} // namespace
} // namespace UsageEngine
