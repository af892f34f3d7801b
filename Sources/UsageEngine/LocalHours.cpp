#include "UsageEngine/LocalHours.h"

#include <cmath>

namespace UsageEngine {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;

constexpr double hourSeconds = 3600.0;

absl::CivilHour civilHour(const Calendar& calendar, Date date) {
    return absl::CivilHour(calendar.civil(date));
}

} // namespace

LocalHour localHour(const Calendar& calendar, Date date) {
    return {.day = calendar.startOfDay(date), .hour = calendar.hour(date), .weekday = calendar.weekday(date)};
}

TimeSpan evenHourAround(const Calendar& calendar, Date date) {
    const absl::CivilSecond clock = calendar.civil(date);
    const absl::CivilHour hour(clock);
    const Date start{std::floor(date.secondsSince1970) - clock.minute() * 60.0 - clock.second()};
    const Date end = start + hourSeconds;
    const bool runsEvenly = civilHour(calendar, start) == hour && civilHour(calendar, end - 1.0) == hour;
    return runsEvenly ? TimeSpan{.from = start, .to = end} : TimeSpan{.from = date, .to = date};
}

} // namespace UsageEngine
