#include "UsageEngine/DayGrid.h"

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"

namespace UsageEngine {
namespace {

using DayGrid::Column;
using UsageModel::Calendar;
using UsageModel::Date;

std::vector<bool> fullDays(const std::vector<Column>& columns) {
    std::vector<bool> full;
    for (const Column& column : columns) full.push_back(column.isFullDay);
    return full;
}

TEST(DayGrid, AnEmptyWindowHasNoColumns) {
    EXPECT_TRUE(DayGrid::columns({.from = sunday, .to = sunday}, Calendar::utc()).empty());
    EXPECT_TRUE(DayGrid::columns({.from = sunday, .to = sunday - 1.0}, Calendar::utc()).empty());
}

TEST(DayGrid, FromMidnightTheFirstColumnIsADay) {
    const auto columns = DayGrid::columns({.from = sunday, .to = sunday + 1.5 * day}, Calendar::utc());
    EXPECT_EQ(columns, (std::vector<Column>{{.start = sunday, .end = sunday + day, .isFullDay = true},
                                            {.start = sunday + day, .end = sunday + 1.5 * day, .isFullDay = false}}));
}

TEST(DayGrid, AWeekFromTenOClockHasEightColumns) {
    const Date start = sunday + 2 * day + 10 * hour;
    const auto columns = DayGrid::columns({.from = start, .to = start + week}, Calendar::utc());
    EXPECT_EQ(fullDays(columns), (std::vector{false, true, true, true, true, true, true, false}));
    EXPECT_EQ(columns.front().start, start);
    EXPECT_EQ(columns.back().end, start + week);
}

TEST(DayGrid, TwentyThreeHoursAreADay) {
    const Calendar berlin = *Calendar::inZone("Europe/Berlin");
    const Date midnight{1774738800}; // 2026-03-29, when the clock is set forward
    EXPECT_EQ(fullDays(DayGrid::columns({.from = midnight, .to = midnight + 23 * hour}, berlin)), std::vector{true});
    EXPECT_EQ(fullDays(DayGrid::columns({.from = sunday, .to = sunday + 23.5 * hour}, Calendar::utc())),
              std::vector{true});
    EXPECT_EQ(fullDays(DayGrid::columns({.from = sunday, .to = sunday + 22.9 * hour}, Calendar::utc())),
              std::vector{false});
}

TEST(DayGrid, AWindowInsideADayIsOneColumn) {
    EXPECT_EQ(DayGrid::columns({.from = sunday + hour, .to = sunday + 2 * hour}, Calendar::utc()).size(), 1U);
}

} // namespace
} // namespace UsageEngine
