#include "UsageModel/Calendar.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "UsageModel/Printing.h"
#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using namespace std::string_view_literals;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Date utc(absl::CivilSecond clock) {
    return Calendar::utc().instant(clock);
}

Calendar zone(std::string_view name) {
    const auto calendar = Calendar::inZone(name);
    if (!calendar) throw std::runtime_error("the system has no zone " + std::string(name));
    return *calendar;
}

struct NameRow : TestSupport::Named {
    std::string_view zone;
    bool known;
};

class ZoneNameTest : public testing::TestWithParam<NameRow> {};

TEST_P(ZoneNameTest, IsKnownOnlyWhenPlain) {
    const auto calendar = Calendar::inZone(GetParam().zone);
    EXPECT_EQ(calendar.has_value(), GetParam().known);
    EXPECT_EQ(calendar ? calendar->zoneName() : "", GetParam().known ? GetParam().zone : "");
}

INSTANTIATE_TEST_SUITE_P(
    Names, ZoneNameTest,
    testing::Values(
        NameRow{"a city", "Europe/Berlin", true}, NameRow{"three parts", "America/Argentina/Ushuaia", true},
        NameRow{"an underscore", "America/New_York", true}, NameRow{"a hyphen", "America/Port-au-Prince", true},
        NameRow{"a plus", "Etc/GMT+5", true}, NameRow{"UTC", "UTC", true}, NameRow{"empty", "", false},
        NameRow{"unknown", "Mars/Base", false}, NameRow{"an absolute path", "/etc/passwd", false},
        NameRow{"an absolute path of a zone file", "/usr/share/zoneinfo/Europe/Berlin", false},
        NameRow{"climbing out", "../x", false}, NameRow{"climbing out and in again", "Europe/../Europe/Berlin", false},
        NameRow{"a dot", "./UTC", false}, NameRow{"a fixed offset", "Fixed/UTC+01:00:00", false},
        NameRow{"a folder", "Europe", false}, NameRow{"a trailing slash", "Europe/Berlin/", false},
        NameRow{"a table of zones", "zone1970.tab", false}, NameRow{"the local link", "localtime", false},
        NameRow{"with a NUL", "UTC\0x"sv, false}, NameRow{"cut by a NUL", "UTC\0"sv, false},
        NameRow{"a blank before", " UTC", false}, NameRow{"a blank behind", "UTC ", false},
        NameRow{"a line feed", "UTC\n", false}, NameRow{"a colon", ":UTC", false},
        NameRow{"a scheme", "libc:UTC", false}, NameRow{"a backslash", "Europe\\Berlin", false},
        NameRow{"no ASCII", "Europe/Zürich", false}, NameRow{"an abbreviation that is none", "CEST", false}),
    TestSupport::rowName);

TEST(ZoneName, ThatIsVeryLongIsUnknown) {
    EXPECT_FALSE(Calendar::inZone(std::string(100'000, 'A')));
    std::string deep = "A";
    for (int i = 0; i < 10'000; ++i) deep += "/A";
    EXPECT_FALSE(Calendar::inZone(deep));
}

TEST(Calendar, UtcIsCalledSo) {
    EXPECT_EQ(Calendar::utc().zoneName(), "UTC");
}

TEST(Calendar, LocalIsTakenFromTheEnvironment) {
    EXPECT_FALSE(Calendar::local().zoneName().empty());
}

struct DayRow : TestSupport::Named {
    std::string_view zone;
    absl::CivilSecond at;
    absl::CivilSecond startOfDay;
    absl::CivilSecond startOfNextDay;
};

class DayTest : public testing::TestWithParam<DayRow> {};

TEST_P(DayTest, BeginsWithItsFirstInstant) {
    const DayRow& row = GetParam();
    const Calendar calendar = zone(row.zone);
    const Date start = utc(row.startOfDay);
    EXPECT_EQ(calendar.startOfDay(utc(row.at)), start);
    EXPECT_EQ(calendar.startOfDay(utc(row.at) + 0.75), start) << "with a fraction";
    EXPECT_EQ(calendar.startOfDay(start), start) << "of its own first instant";
    EXPECT_LT(calendar.startOfDay(start - 1.0), start) << "of the second before";
    EXPECT_EQ(calendar.startOfDay(utc(row.startOfNextDay)), utc(row.startOfNextDay));
    EXPECT_EQ(calendar.startOfDay(utc(row.startOfNextDay) - 1.0), start) << "of its own last second";
}

TEST_P(DayTest, WalkOfDaysVisitsTheNextOne) {
    const DayRow& row = GetParam();
    const Calendar calendar = zone(row.zone);
    EXPECT_EQ(calendar.startOfDay(calendar.addDays(utc(row.startOfDay), 1)), utc(row.startOfNextDay));
}

using Civil = absl::CivilSecond;

INSTANTIATE_TEST_SUITE_P(
    Days, DayTest,
    testing::Values(
        DayRow{"UTC", "UTC", Civil(2026, 3, 10, 15, 30), Civil(2026, 3, 10), Civil(2026, 3, 11)},
        DayRow{"half an hour off", "Asia/Kolkata", Civil(2026, 3, 10, 15), Civil(2026, 3, 9, 18, 30),
               Civil(2026, 3, 10, 18, 30)},
        DayRow{"three quarters off", "Asia/Kathmandu", Civil(2026, 3, 10, 15), Civil(2026, 3, 9, 18, 15),
               Civil(2026, 3, 10, 18, 15)},
        DayRow{"23 hours", "Europe/Berlin", Civil(2026, 3, 29, 12), Civil(2026, 3, 28, 23), Civil(2026, 3, 29, 22)},
        DayRow{"25 hours", "Europe/Berlin", Civil(2026, 10, 25, 12), Civil(2026, 10, 24, 22), Civil(2026, 10, 25, 23)},
        DayRow{"half an hour shorter", "Australia/Lord_Howe", Civil(2024, 10, 6, 0), Civil(2024, 10, 5, 13, 30),
               Civil(2024, 10, 6, 13)},
        DayRow{"half an hour longer", "Australia/Lord_Howe", Civil(2024, 4, 7, 0), Civil(2024, 4, 6, 13),
               Civil(2024, 4, 7, 13, 30)},
        DayRow{"before a skipped midnight", "America/Sao_Paulo", Civil(2018, 11, 3, 12), Civil(2018, 11, 3, 3),
               Civil(2018, 11, 4, 3)},
        DayRow{"its midnight is skipped in Brazil", "America/Sao_Paulo", Civil(2018, 11, 4, 12), Civil(2018, 11, 4, 3),
               Civil(2018, 11, 5, 2)},
        DayRow{"its midnight is skipped in Egypt", "Africa/Cairo", Civil(2023, 4, 28, 12), Civil(2023, 4, 27, 22),
               Civil(2023, 4, 28, 21)},
        DayRow{"its midnight is repeated", "America/Havana", Civil(2021, 11, 7, 5, 30), Civil(2021, 11, 7, 4),
               Civil(2021, 11, 8, 5)},
        DayRow{"its last hour is repeated", "America/Sao_Paulo", Civil(2018, 2, 18, 2, 30), Civil(2018, 2, 17, 2),
               Civil(2018, 2, 18, 3)},
        DayRow{"the next day is skipped", "Pacific/Apia", Civil(2011, 12, 29, 20), Civil(2011, 12, 29, 10),
               Civil(2011, 12, 30, 10)},
        DayRow{"the day before was skipped", "Pacific/Apia", Civil(2011, 12, 30, 20), Civil(2011, 12, 30, 10),
               Civil(2011, 12, 31, 10)},
        DayRow{"beyond the zone file's table", "Europe/Berlin", Civil(2050, 7, 1, 12), Civil(2050, 6, 30, 22),
               Civil(2050, 7, 1, 22)},
        DayRow{"a change beyond the zone file's table", "Europe/Berlin", Civil(2050, 3, 27, 12), Civil(2050, 3, 26, 23),
               Civil(2050, 3, 27, 22)},
        DayRow{"before 1970", "America/New_York", Civil(1969, 7, 20, 20), Civil(1969, 7, 20, 4), Civil(1969, 7, 21, 4)},
        DayRow{"long before 1970", "Europe/Berlin", Civil(1916, 6, 1, 12), Civil(1916, 5, 31, 22),
               Civil(1916, 6, 1, 22)},
        DayRow{"an offset with seconds", "Africa/Monrovia", Civil(1960, 1, 1, 12), Civil(1960, 1, 1, 0, 44, 30),
               Civil(1960, 1, 2, 0, 44, 30)}),
    TestSupport::rowName);

TEST(StartOfDay, IsTheFirstOfTwoMidnightsAlsoWhereTheClockFallsBackBehindThem) {
    // At 00:01 the clock went back to 23:01: the day began, was left again, and came back.
    const Calendar calendar = zone("America/St_Johns");
    const Date firstMidnight = utc(Civil(2006, 10, 29, 2, 30));
    EXPECT_EQ(calendar.startOfDay(firstMidnight + 30.0), firstMidnight);
    EXPECT_EQ(calendar.startOfDay(utc(Civil(2006, 10, 29, 3, 0))), utc(Civil(2006, 10, 28, 2, 30)))
        << "23:30 of the day before, the second time";
    EXPECT_EQ(calendar.startOfDay(utc(Civil(2006, 10, 29, 15))), firstMidnight);
}

struct AddDaysRow : TestSupport::Named {
    std::string_view zone;
    Civil from;
    int days;
    Civil expected;
};

class AddDaysTest : public testing::TestWithParam<AddDaysRow> {};

TEST_P(AddDaysTest, KeepsTheClockTime) {
    const AddDaysRow& row = GetParam();
    const Calendar calendar = zone(row.zone);
    EXPECT_EQ(calendar.addDays(utc(row.from), row.days), utc(row.expected));
    EXPECT_EQ(calendar.addDays(utc(row.from) + 0.25, row.days), utc(row.expected) + 0.25) << "with a fraction";
}

INSTANTIATE_TEST_SUITE_P(
    Moves, AddDaysTest,
    testing::Values(
        AddDaysRow{"none", "Europe/Berlin", Civil(2026, 3, 10, 12, 34, 56), 0, Civil(2026, 3, 10, 12, 34, 56)},
        AddDaysRow{"one", "UTC", Civil(2026, 3, 10, 12, 34, 56), 1, Civil(2026, 3, 11, 12, 34, 56)},
        AddDaysRow{"back over the end of a month", "UTC", Civil(2026, 3, 1, 12), -1, Civil(2026, 2, 28, 12)},
        AddDaysRow{"to a leap day", "UTC", Civil(2024, 2, 28, 12), 1, Civil(2024, 2, 29, 12)},
        AddDaysRow{"over a year", "UTC", Civil(2026, 3, 10), 365, Civil(2027, 3, 10)},
        AddDaysRow{"from before 1970 across it", "UTC", Civil(1969, 12, 31, 23, 59, 59), 1,
                   Civil(1970, 1, 1, 23, 59, 59)},
        AddDaysRow{"over the clock forward", "Europe/Berlin", Civil(2026, 3, 28, 11), 1, Civil(2026, 3, 29, 10)},
        AddDaysRow{"over the clock back", "Europe/Berlin", Civil(2026, 10, 24, 10), 1, Civil(2026, 10, 25, 11)},
        AddDaysRow{"backwards over the clock back", "Europe/Berlin", Civil(2026, 10, 25, 11), -1,
                   Civil(2026, 10, 24, 10)},
        AddDaysRow{"a week over the clock forward", "America/New_York", Civil(2026, 3, 5, 17), 7,
                   Civil(2026, 3, 12, 16)},
        AddDaysRow{"a skipped time moves forward by the gap", "Europe/Berlin", Civil(2026, 3, 28, 1, 30), 1,
                   Civil(2026, 3, 29, 1, 30)},
        AddDaysRow{"a skipped time also backwards", "Europe/Berlin", Civil(2026, 3, 30, 0, 30), -1,
                   Civil(2026, 3, 29, 1, 30)},
        AddDaysRow{"a repeated time takes the first", "Europe/Berlin", Civil(2026, 10, 24, 0, 30), 1,
                   Civil(2026, 10, 25, 0, 30)},
        AddDaysRow{"a repeated time also backwards", "Europe/Berlin", Civil(2026, 10, 26, 1, 30), -1,
                   Civil(2026, 10, 25, 0, 30)},
        AddDaysRow{"half an hour skipped", "Australia/Lord_Howe", Civil(2024, 10, 4, 15, 45), 1,
                   Civil(2024, 10, 5, 15, 45)},
        AddDaysRow{"half an hour repeated", "Australia/Lord_Howe", Civil(2024, 4, 5, 14, 45), 1,
                   Civil(2024, 4, 6, 14, 45)},
        AddDaysRow{"to a skipped midnight", "America/Sao_Paulo", Civil(2018, 11, 3, 3), 1, Civil(2018, 11, 4, 3)},
        AddDaysRow{"to a skipped midnight in Egypt", "Africa/Cairo", Civil(2023, 4, 26, 22), 1, Civil(2023, 4, 27, 22)},
        AddDaysRow{"into a skipped day", "Pacific/Apia", Civil(2011, 12, 29, 20), 1, Civil(2011, 12, 30, 20)},
        AddDaysRow{"across a skipped day", "Pacific/Apia", Civil(2011, 12, 29, 20), 2, Civil(2011, 12, 30, 20)},
        AddDaysRow{"beyond the zone file's table", "Europe/Berlin", Civil(2050, 3, 26, 11), 1, Civil(2050, 3, 27, 10)},
        AddDaysRow{"an offset with seconds", "Africa/Monrovia", Civil(1960, 1, 1, 0, 44, 30), 1,
                   Civil(1960, 1, 2, 0, 44, 30)}),
    TestSupport::rowName);

TEST(AddDays, KeepsTheFractionBefore1970) {
    const Date before = Date{-0.25};
    EXPECT_EQ(Calendar::utc().addDays(before, 1), Date{86399.75});
    EXPECT_EQ(Calendar::utc().addDays(before, -1), Date{-86400.25});
}

TEST(AddHours, CountsSecondsAndNotTheClock) {
    const Calendar berlin = zone("Europe/Berlin");
    EXPECT_EQ(berlin.addHours(utc(Civil(2026, 3, 29, 0, 30)), 1), utc(Civil(2026, 3, 29, 1, 30)));
    EXPECT_EQ(berlin.addHours(utc(Civil(2026, 10, 25, 0, 30)), 2), utc(Civil(2026, 10, 25, 2, 30)));
    EXPECT_EQ(berlin.addHours(Date{0.5}, -1), Date{-3599.5});
    EXPECT_EQ(berlin.addHours(Date{5}, 0), Date{5});
}

struct ClockRow : TestSupport::Named {
    std::string_view zone;
    Civil at;
    int hour;
    int weekday;
};

class ClockTest : public testing::TestWithParam<ClockRow> {};

TEST_P(ClockTest, ShowsTheLocalHourAndWeekday) {
    const Calendar calendar = zone(GetParam().zone);
    EXPECT_EQ(calendar.hour(utc(GetParam().at)), GetParam().hour);
    EXPECT_EQ(calendar.weekday(utc(GetParam().at)), GetParam().weekday);
}

INSTANTIATE_TEST_SUITE_P(
    Clocks, ClockTest,
    testing::Values(ClockRow{"a Thursday", "UTC", Civil(1970, 1, 1), 0, 5},
                    ClockRow{"the second before", "UTC", Civil(1969, 12, 31, 23, 59, 59), 23, 4},
                    ClockRow{"a Sunday is the first day", "UTC", Civil(2026, 3, 29), 0, 1},
                    ClockRow{"a Monday", "UTC", Civil(2026, 3, 30), 0, 2},
                    ClockRow{"a Tuesday", "UTC", Civil(2026, 3, 31), 0, 3},
                    ClockRow{"a Friday", "UTC", Civil(2026, 4, 3), 0, 6},
                    ClockRow{"a Saturday is the last day", "UTC", Civil(2026, 4, 4), 0, 7},
                    ClockRow{"the next day already", "Asia/Kolkata", Civil(2026, 3, 28, 18, 30), 0, 1},
                    ClockRow{"the day before still", "America/New_York", Civil(2026, 3, 29, 3, 59, 59), 23, 7},
                    ClockRow{"before the clock forward", "Europe/Berlin", Civil(2026, 3, 29, 0, 59, 59), 1, 1},
                    ClockRow{"behind the clock forward", "Europe/Berlin", Civil(2026, 3, 29, 1), 3, 1},
                    ClockRow{"the hour for the first time", "Europe/Berlin", Civil(2026, 10, 25, 0, 30), 2, 1},
                    ClockRow{"the hour for the second time", "Europe/Berlin", Civil(2026, 10, 25, 1, 30), 2, 1},
                    ClockRow{"behind a skipped midnight", "America/Sao_Paulo", Civil(2018, 11, 4, 3), 1, 1},
                    ClockRow{"behind a skipped Friday", "Pacific/Apia", Civil(2011, 12, 30, 10), 0, 7},
                    ClockRow{"summer beyond the zone file's table", "Europe/Berlin", Civil(2050, 7, 1, 12), 14, 6},
                    ClockRow{"winter beyond the zone file's table", "Europe/Berlin", Civil(2050, 1, 1, 12), 13, 7}),
    TestSupport::rowName);

TEST(Hour, OfAFractionBefore1970IsThatOfTheSecondItLiesIn) {
    EXPECT_EQ(Calendar::utc().hour(Date{-0.25}), 23);
    EXPECT_EQ(Calendar::utc().weekday(Date{-0.25}), 4);
}

struct MinuteRow : TestSupport::Named {
    std::string_view zone;
    Civil at;
    Civil expected;
};

class MinuteToZeroTest : public testing::TestWithParam<MinuteRow> {};

TEST_P(MinuteToZeroTest, LeavesAFullHourAndMovesAnyOtherToTheNext) {
    EXPECT_EQ(zone(GetParam().zone).settingMinuteToZero(utc(GetParam().at)), utc(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    Clocks, MinuteToZeroTest,
    testing::Values(
        MinuteRow{"a full hour", "UTC", Civil(2026, 3, 10, 10), Civil(2026, 3, 10, 10)},
        MinuteRow{"seconds stay in the first minute", "UTC", Civil(2026, 3, 10, 10, 0, 59),
                  Civil(2026, 3, 10, 10, 0, 59)},
        MinuteRow{"the second minute", "UTC", Civil(2026, 3, 10, 10, 1), Civil(2026, 3, 10, 11)},
        MinuteRow{"half past", "UTC", Civil(2026, 3, 10, 10, 30), Civil(2026, 3, 10, 11)},
        MinuteRow{"the last second", "UTC", Civil(2026, 3, 10, 10, 59, 59), Civil(2026, 3, 10, 11)},
        MinuteRow{"over midnight", "UTC", Civil(2026, 12, 31, 23, 30), Civil(2027, 1, 1)},
        MinuteRow{"before 1970", "UTC", Civil(1969, 12, 31, 23, 30), Civil(1970, 1, 1)},
        MinuteRow{"a local full hour", "Asia/Kolkata", Civil(2026, 3, 10, 10, 30), Civil(2026, 3, 10, 10, 30)},
        MinuteRow{"a full hour of UTC that is none here", "Asia/Kolkata", Civil(2026, 3, 10, 10),
                  Civil(2026, 3, 10, 10, 30)},
        MinuteRow{"before the clock forward", "Europe/Berlin", Civil(2026, 3, 29, 0, 30), Civil(2026, 3, 29, 1)},
        MinuteRow{"before the clock back", "Europe/Berlin", Civil(2026, 10, 25, 0, 30), Civil(2026, 10, 25, 1)},
        MinuteRow{"into a gap of half an hour", "Australia/Lord_Howe", Civil(2024, 10, 5, 15, 15),
                  Civil(2024, 10, 5, 16)},
        MinuteRow{"behind a gap of half an hour", "Australia/Lord_Howe", Civil(2024, 10, 5, 15, 30),
                  Civil(2024, 10, 5, 16)},
        MinuteRow{"before half an hour is repeated", "Australia/Lord_Howe", Civil(2024, 4, 6, 14, 45),
                  Civil(2024, 4, 6, 15, 30)}),
    TestSupport::rowName);

TEST(MinuteToZero, KeepsOrDropsTheFractionWithTheSeconds) {
    EXPECT_EQ(Calendar::utc().settingMinuteToZero(Date{36015.5}), Date{36015.5});
    EXPECT_EQ(Calendar::utc().settingMinuteToZero(Date{36061.1}), Date{39600});
    EXPECT_EQ(Calendar::utc().settingMinuteToZero(Date{1790000061.1}), Date{1790002800});
    EXPECT_EQ(Calendar::utc().settingMinuteToZero(Date{-61.1}), Date{0});
}

TEST(MinuteToZero, LeavesADateThatIsHeldAtTheEdgeOfTheCalendar) {
    for (const char* name : {"UTC", "Australia/Lord_Howe"}) {
        EXPECT_EQ(zone(name).settingMinuteToZero(Date{1e13 + 90}), Date{1e13 + 90});
        EXPECT_EQ(zone(name).settingMinuteToZero(Date{1e300}), Date{1e300});
    }
}

TEST(IsSameSecond, ComparesWholeSeconds) {
    EXPECT_TRUE(Calendar::isSameSecond(Date{1}, Date{1}));
    EXPECT_TRUE(Calendar::isSameSecond(Date{1}, Date{1.999}));
    EXPECT_TRUE(Calendar::isSameSecond(Date{1.999}, Date{1}));
    EXPECT_FALSE(Calendar::isSameSecond(Date{0.999}, Date{1}));
    EXPECT_TRUE(Calendar::isSameSecond(Date{-0.9}, Date{-0.1}));
    EXPECT_FALSE(Calendar::isSameSecond(Date{-0.1}, Date{0.1}));
    EXPECT_FALSE(Calendar::isSameSecond(Date{notANumber}, Date{notANumber}));
}

TEST(Calendar, InstantOfALocalTimeMovesForwardByAGapAndTakesTheFirstOfTwo) {
    const Calendar berlin = zone("Europe/Berlin");
    EXPECT_EQ(berlin.instant(Civil(2026, 7, 1, 12)), utc(Civil(2026, 7, 1, 10)));
    EXPECT_EQ(berlin.instant(Civil(2026, 3, 29, 2, 30)), utc(Civil(2026, 3, 29, 1, 30)));
    EXPECT_EQ(berlin.instant(Civil(2026, 10, 25, 2, 30)), utc(Civil(2026, 10, 25, 0, 30)));
}

TEST(Calendar, CivilIsTheClockOfTheSecondTheInstantLiesIn) {
    EXPECT_EQ(zone("Europe/Berlin").civil(utc(Civil(2026, 7, 1, 10)) + 0.9), Civil(2026, 7, 1, 12));
    EXPECT_EQ(Calendar::utc().civil(Date{-0.1}), Civil(1969, 12, 31, 23, 59, 59));
}

class HostileDateTest : public testing::TestWithParam<double> {};

TEST_P(HostileDateTest, IsAnsweredWithinTheCalendar) {
    const Date date{GetParam()};
    for (const std::string_view name : {"UTC", "Europe/Berlin", "Pacific/Apia"}) {
        const Calendar calendar = zone(name);
        EXPECT_TRUE(std::isfinite(calendar.startOfDay(date).secondsSince1970));
        EXPECT_TRUE(std::isfinite(calendar.addDays(date, 1).secondsSince1970));
        EXPECT_TRUE(std::isfinite(calendar.addDays(date, std::numeric_limits<int>::max()).secondsSince1970));
        EXPECT_TRUE(std::isfinite(calendar.addDays(date, std::numeric_limits<int>::min()).secondsSince1970));
        const int hour = calendar.hour(date);
        EXPECT_TRUE(hour >= 0 && hour <= 23) << hour;
        const int weekday = calendar.weekday(date);
        EXPECT_TRUE(weekday >= 1 && weekday <= 7) << weekday;
    }
}

INSTANTIATE_TEST_SUITE_P(Dates, HostileDateTest,
                         testing::Values(notANumber, infinity, -infinity, 1e300, -1e300, 9.3e18, -9.3e18, 4e12, -4e12));

TEST(Calendar, ADateThatIsNoNumberCountsAs1970) {
    EXPECT_EQ(Calendar::utc().startOfDay(Date{notANumber}), Date{0});
    EXPECT_EQ(Calendar::utc().hour(Date{notANumber}), 0);
    EXPECT_EQ(Calendar::utc().civil(Date{notANumber}), Civil(1970, 1, 1));
}

TEST(Calendar, DatesBeyondItsEndsAreHeldThere) {
    EXPECT_EQ(Calendar::utc().startOfDay(Date{infinity}), Calendar::utc().startOfDay(Date{1e200}));
    EXPECT_EQ(Calendar::utc().startOfDay(Date{-infinity}), Calendar::utc().startOfDay(Date{-1e200}));
    EXPECT_GT(Calendar::utc().civil(Date{infinity}).year(), 90'000);
    EXPECT_LT(Calendar::utc().civil(Date{-infinity}).year(), -90'000);
}

} // namespace
} // namespace UsageModel
