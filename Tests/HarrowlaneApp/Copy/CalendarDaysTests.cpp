#include "HarrowlaneApp/Copy/CalendarDays.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using CalendarGrid::Day;
using CalendarGrid::days;
using CalendarGrid::Month;
using CalendarGrid::months;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::utc;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::DayCell;

/// A Sunday, 2026-03-01 00:00 UTC.
constexpr Date sunday{1772323200};

DayCell cell(int dayOfMonth, double weighted, std::int64_t level) {
    return {.day = sunday + (dayOfMonth - 1) * TestSupport::day, .weighted = weighted, .level = level};
}

TEST(CalendarDays, OfNothingAreNone) {
    EXPECT_THAT(days({}, utc()), IsEmpty());
    EXPECT_THAT(months({}, utc()), IsEmpty());
}

TEST(CalendarDays, TellDateAndShareOfTheBusiest) {
    const std::vector<DayCell> cells{cell(2, 3.0, 2), cell(4, 8.0, 4)};
    EXPECT_THAT(days(cells, utc()),
                ElementsAre(Day{.column = 0, .row = 0, .level = 0, .text = "Sunday, March 1, 2026 — no use"},
                            Day{0, 1, 2, "Monday, March 2, 2026 — 38% of your busiest day"},
                            Day{0, 2, 0, "Tuesday, March 3, 2026 — no use"},
                            Day{0, 3, 4, "Wednesday, March 4, 2026 — 100% of your busiest day"}));
}

TEST(CalendarDays, WithoutWeightHaveNoUse) {
    const std::vector<DayCell> cells{cell(1, 0.0, 0), cell(2, -1.0, 0)};
    for (const Day& day : days(cells, utc())) EXPECT_THAT(day.text, testing::EndsWith("no use"));
}

TEST(CalendarDays, KeepTheirDatesAcrossAMissingMidnight) {
    const Calendar cairo = *Calendar::inZone("Africa/Cairo");
    const auto noon = [&](int day) { return cairo.instant(absl::CivilSecond(2026, 4, day, 12, 0, 0)); };
    const std::vector<DayCell> cells{{.day = noon(23), .weighted = 1.0, .level = 1},
                                     {.day = noon(25), .weighted = 2.0, .level = 4}};
    const auto made = days(cells, cairo);
    ASSERT_THAT(made, SizeIs(7));
    EXPECT_EQ(made[4].text, "Thursday, April 23, 2026 — 50% of your busiest day");
    EXPECT_EQ(made[5].text, "Friday, April 24, 2026 — no use");
    EXPECT_EQ(made[6].text, "Saturday, April 25, 2026 — 100% of your busiest day");
}

TEST(CalendarMonths, StandAboveTheColumnOfTheirFirstDay) {
    const std::vector<DayCell> cells{cell(1, 1.0, 1), cell(63, 1.0, 1)};
    EXPECT_THAT(months(cells, utc()), ElementsAre(Month{.column = 0, .name = "Mar"}, Month{.column = 4, .name = "Apr"},
                                                  Month{.column = 8, .name = "May"}));
}

TEST(CalendarMonths, DoNotBeginBehindTheLastDay) {
    const std::vector<DayCell> cells{cell(2, 1.0, 1), cell(30, 1.0, 1)};
    EXPECT_THAT(months(cells, utc()), ElementsAre(Month{.column = 0, .name = "Mar"}));
}

} // namespace
} // namespace HarrowlaneApp
