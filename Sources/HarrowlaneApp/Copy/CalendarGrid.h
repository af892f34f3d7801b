#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "UsageModel/Calendar.h"
#include "UsageModel/Fields.h"
#include "UsageModel/UsageSnapshot.h"

/// The history as a grid of days: a column a calendar week, a row a weekday.
namespace HarrowlaneApp::CalendarGrid {

inline constexpr std::string_view heading = "Your rhythm over time";
inline constexpr std::string_view legendLess = "less";
inline constexpr std::string_view legendMore = "more";
inline constexpr std::size_t daysPerWeek = 7;
/// The level where no day stands yet.
inline constexpr std::int64_t noDay = -1;

struct Column {
    std::int64_t id = 0;
    /// From Sunday to Saturday: the heat level, 0 for a day without use, `noDay` behind the last day.
    std::array<std::int64_t, daysPerWeek> levels{};

    friend bool operator==(const Column&, const Column&) = default;
};

/// The weeks from that of the first day to that of the last, the oldest first. None of no days, and where the last day
/// lies weeks before the first.
[[nodiscard]] std::vector<Column> columns(std::span<const UsageModel::DayCell> days,
                                          const UsageModel::Calendar& calendar);

} // namespace HarrowlaneApp::CalendarGrid
