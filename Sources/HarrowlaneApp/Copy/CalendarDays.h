#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/CalendarGrid.h"

/// What each cell of the history tells, and the names beside the grid.
namespace HarrowlaneApp::CalendarGrid {

/// A day in its place in the grid.
struct Day {
    std::size_t column = 0;
    /// From Sunday on.
    std::size_t row = 0;
    std::int64_t level = 0;
    /// "Thursday, November 20, 2025 — 62% of your busiest day"
    std::string text;

    friend bool operator==(const Day&, const Day&) = default;
};

/// The days up to the last one, the oldest first; those of the first week that lie before the first day included.
[[nodiscard]] std::vector<Day> days(std::span<const UsageModel::DayCell> cells, const UsageModel::Calendar& calendar);

/// The name of a month, above the column in which its first day lies.
struct Month {
    std::size_t column = 0;
    std::string_view name;

    friend bool operator==(const Month&, const Month&) = default;
};

[[nodiscard]] std::vector<Month> months(std::span<const UsageModel::DayCell> cells,
                                        const UsageModel::Calendar& calendar);

/// The names of the rows from Sunday on; every other row has none.
inline constexpr std::array<std::string_view, daysPerWeek> rowNames{"", "Mon", "", "Wed", "", "Fri", ""};

} // namespace HarrowlaneApp::CalendarGrid
