#include "HarrowlaneApp/Copy/CalendarDays.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "HarrowlaneApp/Copy/Figures.h"

namespace HarrowlaneApp::CalendarGrid {

namespace {

using UsageModel::Calendar;
using UsageModel::DayCell;

constexpr std::array<std::string_view, 12> monthNames{"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
constexpr std::array<std::string_view, daysPerWeek> dayNames{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                             "Thursday", "Friday", "Saturday"};
constexpr std::size_t abbreviation = 3;

std::string_view monthName(absl::CivilDay day) {
    return monthNames.at(static_cast<std::size_t>(day.month() - 1));
}

/// "Thursday, November 20, 2025"
std::string dateText(absl::CivilDay day, std::size_t row) {
    return std::string(dayNames.at(row)) + ", " + std::string(monthName(day)) + " " + std::to_string(day.day()) + ", " +
           std::to_string(day.year());
}

/// How much each day weighs, and the most that any does.
struct Weights {
    Weights(std::span<const DayCell> cells, const Calendar& calendar) {
        for (const DayCell& cell : cells) byDay[absl::CivilDay(calendar.civil(cell.day))] = cell.weighted;
        for (const auto& [day, weight] : byDay) most = weight > most ? weight : most;
    }

    [[nodiscard]] std::string shareText(absl::CivilDay day) const {
        const auto found = byDay.find(day);
        const double share = found != byDay.end() && most > 0 ? found->second / most : 0.0;
        return share > 0 ? Figures::percent(share) + " of your busiest day" : "no use";
    }

    std::map<absl::CivilDay, double> byDay;
    double most = 0.0;
};

absl::CivilDay firstSunday(std::span<const DayCell> cells, const Calendar& calendar) {
    const UsageModel::Date first = cells.front().day;
    return absl::CivilDay(calendar.civil(first)) - (calendar.weekday(first) - 1);
}

} // namespace

std::vector<Day> days(std::span<const DayCell> cells, const Calendar& calendar) {
    std::vector<Day> days;
    if (cells.empty()) return days;
    const Weights weights(cells, calendar);
    absl::CivilDay date = firstSunday(cells, calendar);
    for (const Column& column : columns(cells, calendar)) {
        for (std::size_t row = 0; row < daysPerWeek; ++row, ++date) {
            if (column.levels.at(row) == noDay) continue;
            days.push_back({
                .column = static_cast<std::size_t>(column.id),
                .row = row,
                .level = column.levels.at(row),
                .text = dateText(date, row) + " — " + weights.shareText(date),
            });
        }
    }
    return days;
}

std::vector<Month> months(std::span<const DayCell> cells, const Calendar& calendar) {
    std::vector<Month> months;
    if (cells.empty()) return months;
    absl::CivilDay date = firstSunday(cells, calendar);
    for (const Column& column : columns(cells, calendar)) {
        for (const std::int64_t level : column.levels) {
            if (level != noDay && date.day() == 1) {
                const std::string_view name = monthName(date).substr(0, abbreviation);
                months.push_back({.column = static_cast<std::size_t>(column.id), .name = name});
            }
            ++date;
        }
    }
    return months;
}

} // namespace HarrowlaneApp::CalendarGrid
