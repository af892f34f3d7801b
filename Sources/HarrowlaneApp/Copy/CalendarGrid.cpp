#include "HarrowlaneApp/Copy/CalendarGrid.h"

#include <algorithm>
#include <map>

namespace HarrowlaneApp::CalendarGrid {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::DayCell;

/// The start of each used day, with its level.
using Levels = std::map<double, std::int64_t>;

Levels levelsOf(std::span<const DayCell> days, const Calendar& calendar) {
    Levels levels;
    for (const DayCell& cell : days) levels[calendar.startOfDay(cell.day).secondsSince1970] = cell.level;
    return levels;
}

absl::CivilDay sundayBefore(Date date, const Calendar& calendar) {
    return absl::CivilDay(calendar.civil(date)) - (calendar.weekday(date) - 1);
}

/// By way of noon, which no clock change skips; midnight may be missing.
Date startOf(absl::CivilDay day, const Calendar& calendar) {
    constexpr int noon = 12;
    return calendar.startOfDay(calendar.instant(absl::CivilSecond(day.year(), day.month(), day.day(), noon, 0, 0)));
}

} // namespace

std::vector<Column> columns(std::span<const DayCell> days, const Calendar& calendar) {
    std::vector<Column> columns;
    if (days.empty()) return columns;
    const Levels levels = levelsOf(days, calendar);
    const Date lastStart = calendar.startOfDay(days.back().day);
    const absl::CivilDay lastDay(calendar.civil(days.back().day));

    absl::CivilDay day = sundayBefore(days.front().day, calendar);
    const std::int64_t count = (lastDay - day) / static_cast<std::int64_t>(daysPerWeek) + 1;
    for (std::int64_t id = 0; id < count; ++id) {
        Column& column = columns.emplace_back(Column{.id = id});
        for (std::int64_t& level : column.levels) {
            const Date start = startOf(day++, calendar);
            const auto found = levels.find(start.secondsSince1970);
            if (start > lastStart + 1.0)
                level = noDay;
            else
                level = found == levels.end() ? 0 : found->second;
        }
    }
    return columns;
}

} // namespace HarrowlaneApp::CalendarGrid
