#include "UsageEngine/TimeText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace UsageEngine::TimeText {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;

constexpr std::array<std::string_view, 7> weekdays{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                   "Thursday", "Friday", "Saturday"};

std::string_view weekdayName(Date date, const Calendar& calendar) {
    return weekdays[static_cast<std::size_t>(calendar.weekday(date) - 1)];
}

std::string hourText(const absl::CivilSecond& civil) {
    return std::to_string(civil.hour() % 12 == 0 ? 12 : civil.hour() % 12);
}

std::string_view halfOfDay(const absl::CivilSecond& civil) {
    return civil.hour() < 12 ? " AM" : " PM";
}

std::string counted(std::int64_t count, char unit) {
    return std::to_string(count) + unit;
}

std::string dayText(std::int64_t days, std::int64_t hours) {
    return hours > 0 ? counted(days, 'd') + " " + counted(hours, 'h') : counted(days, 'd');
}

} // namespace

std::string duration(double seconds) {
    constexpr double longest = 9e15; // exact in a double, and longer than anything told
    const auto s =
        static_cast<std::int64_t>(std::llround(std::clamp(std::isnan(seconds) ? 0.0 : seconds, 0.0, longest)));
    const std::int64_t days = s / 86400;
    const std::int64_t hours = s % 86400 / 3600;
    const std::int64_t minutes = s % 3600 / 60;
    if (days > 0) return dayText(days, hours);
    if (hours == 0) return counted(std::max<std::int64_t>(minutes, 1), 'm');
    constexpr std::int64_t hoursWithMinutes = 6;
    if (hours >= hoursWithMinutes || minutes == 0) return counted(hours, 'h');
    return counted(hours, 'h') + " " + counted(minutes, 'm');
}

std::string until(Date now, std::optional<Date> date) {
    return date ? duration(*date - now) : "—";
}

std::string shortStamp(Date date, const Calendar& calendar) {
    return shortWeekday(date, calendar) + " " + clock(date, calendar);
}

std::string hourStamp(Date date, const Calendar& calendar) {
    const absl::CivilSecond civil = calendar.civil(date);
    return shortWeekday(date, calendar) + " " + hourText(civil) + std::string(halfOfDay(civil));
}

std::string shortWeekday(Date date, const Calendar& calendar) {
    constexpr std::size_t shortName = 3;
    return std::string(weekdayName(date, calendar).substr(0, shortName));
}

std::string dayAndTime(Date date, const Calendar& calendar) {
    return std::string(weekdayName(date, calendar)) + " at " + clock(date, calendar);
}

std::string clock(Date date, const Calendar& calendar) {
    const absl::CivilSecond civil = calendar.civil(date);
    const std::string minute = std::to_string(civil.minute());
    const std::string padded = minute.size() < 2 ? "0" + minute : minute;
    return hourText(civil) + ":" + padded + std::string(halfOfDay(civil));
}

} // namespace UsageEngine::TimeText
