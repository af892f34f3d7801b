#include "HarrowlaneApp/Copy/CalendarGrid.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using CalendarGrid::Column;
using CalendarGrid::columns;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::day;
using TestSupport::hour;
using TestSupport::utc;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::DayCell;

/// A Sunday, 2026-03-01 00:00 UTC.
constexpr Date sunday{1772323200};

DayCell cell(Date date, std::int64_t level) {
    return {.day = date, .weighted = 1.0, .level = level};
}

Date midnight(const Calendar& calendar, absl::CivilDay date) {
    return calendar.startOfDay(calendar.instant(absl::CivilSecond(date.year(), date.month(), date.day(), 12, 0, 0)));
}

TEST(CalendarGrid, OfNoDaysHasNoColumns) {
    EXPECT_THAT(columns({}, utc()), IsEmpty());
}

TEST(CalendarGrid, PutsAWeekIntoOneColumn) {
    const std::vector<DayCell> days{cell(sunday + day, 2), cell(sunday + 3 * day, 4)};
    EXPECT_THAT(columns(days, utc()), ElementsAre(Column{.id = 0, .levels = {0, 2, 0, 4, -1, -1, -1}}))
        << "a day without use is not a day to come";
}

TEST(CalendarGrid, PutsASaturdayAndTheSundayAfterIntoTwo) {
    const std::vector<DayCell> days{cell(sunday + 6 * day, 1), cell(sunday + 7 * day, 3)};
    EXPECT_THAT(columns(days, utc()), ElementsAre(Column{.id = 0, .levels = {0, 0, 0, 0, 0, 0, 1}},
                                                  Column{.id = 1, .levels = {3, -1, -1, -1, -1, -1, -1}}));
}

TEST(CalendarGrid, EndsWithAFullColumnOnASaturday) {
    const std::vector<DayCell> days{cell(sunday, 1), cell(sunday + 6 * day, 3)};
    EXPECT_THAT(columns(days, utc()), ElementsAre(Column{.id = 0, .levels = {1, 0, 0, 0, 0, 0, 3}}));
}

TEST(CalendarGrid, TakesACellFromTheMiddleOfItsDay) {
    const std::vector<DayCell> days{cell(sunday + 15 * hour, 2), cell(sunday + day + 1 * hour, 3)};
    EXPECT_THAT(columns(days, utc()), ElementsAre(Column{.id = 0, .levels = {2, 3, -1, -1, -1, -1, -1}}));
}

TEST(CalendarGrid, KeepsAMissingWeekAsAnEmptyColumn) {
    const std::vector<DayCell> days{cell(sunday, 1), cell(sunday + 14 * day, 2)};
    const auto grid = columns(days, utc());
    ASSERT_THAT(grid, SizeIs(3));
    EXPECT_EQ(grid[1], (Column{.id = 1, .levels = {0, 0, 0, 0, 0, 0, 0}}));
    EXPECT_EQ(grid[2].levels[0], 2);
}

TEST(CalendarGrid, CountsDaysAndNotHoursWhereTheClockIsSet) {
    const Calendar berlin = *Calendar::inZone("Europe/Berlin");
    for (const absl::CivilDay start : {absl::CivilDay(2026, 3, 22), absl::CivilDay(2026, 10, 18)}) {
        std::vector<DayCell> days;
        for (int i = 0; i < 15; ++i) days.push_back(cell(midnight(berlin, start + i), i % 4 + 1));
        const auto grid = columns(days, berlin);
        ASSERT_THAT(grid, SizeIs(3));
        EXPECT_THAT(grid[0].levels, ElementsAre(1, 2, 3, 4, 1, 2, 3));
        EXPECT_THAT(grid[1].levels, ElementsAre(4, 1, 2, 3, 4, 1, 2));
        EXPECT_THAT(grid[2].levels, ElementsAre(3, -1, -1, -1, -1, -1, -1));
    }
}

TEST(CalendarGrid, FindsADayWhoseMidnightIsMissing) {
    // On Sunday 2018-11-04 the clock went from midnight to one.
    const Calendar saoPaulo = *Calendar::inZone("America/Sao_Paulo");
    std::vector<DayCell> days;
    for (int i = 0; i < 8; ++i) days.push_back(cell(midnight(saoPaulo, absl::CivilDay(2018, 11, 4) + i), i + 1));
    const auto grid = columns(days, saoPaulo);
    ASSERT_THAT(grid, SizeIs(2));
    EXPECT_THAT(grid[0].levels, ElementsAre(1, 2, 3, 4, 5, 6, 7));
    EXPECT_THAT(grid[1].levels, ElementsAre(8, -1, -1, -1, -1, -1, -1));
}

TEST(CalendarGrid, WalksOverADayThatNeverWas) {
    // Apia left out Friday 2011-12-30; what stands there is the day that came in its place.
    const Calendar apia = *Calendar::inZone("Pacific/Apia");
    const std::vector<DayCell> days{cell(midnight(apia, absl::CivilDay(2011, 12, 29)), 2),
                                    cell(midnight(apia, absl::CivilDay(2011, 12, 31)), 3),
                                    cell(midnight(apia, absl::CivilDay(2012, 1, 1)), 4)};
    const auto grid = columns(days, apia);
    ASSERT_THAT(grid, SizeIs(2));
    EXPECT_THAT(grid[0].levels, ElementsAre(0, 0, 0, 0, 2, 3, 3));
    EXPECT_EQ(grid[1].levels[0], 4);
}

TEST(CalendarGrid, OfDaysInReverseShowsNoneThatLieBehindTheLast) {
    EXPECT_THAT(columns(std::vector{cell(sunday + 14 * day, 1), cell(sunday, 2)}, utc()), IsEmpty());
    const auto sameWeek = columns(std::vector{cell(sunday + 3 * day, 1), cell(sunday + day, 2)}, utc());
    EXPECT_THAT(sameWeek, ElementsAre(Column{.id = 0, .levels = {0, 2, -1, -1, -1, -1, -1}}));
}

TEST(CalendarGrid, SurvivesALongHistory) {
    const auto grid = columns(std::vector{cell(sunday - 3653 * day, 1), cell(sunday, 2)}, utc());
    EXPECT_THAT(grid, SizeIs(523));
    EXPECT_EQ(grid.back().id, 522);
}

} // namespace
} // namespace HarrowlaneApp
