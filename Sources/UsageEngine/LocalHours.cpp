#include "UsageEngine/LocalHours.h"

#include <cmath>

namespace UsageEngine {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;

constexpr int hourSeconds = 3600;

} // namespace

LocalHour localHour(const Calendar& calendar, Date date) {
    return {.day = calendar.startOfDay(date), .hour = calendar.hour(date), .weekday = calendar.weekday(date)};
}

TimeSpan evenHourAround(const Calendar& calendar, Date date) {
    const absl::CivilSecond clock = calendar.civil(date);
    const absl::CivilSecond hour{absl::CivilHour(clock)};
    const Date start{std::floor(date.secondsSince1970) - clock.minute() * 60.0 - clock.second()};
    const Date end = start + hourSeconds;
    // By the second: where the clock is set back by less than an hour, both ends may lie in the same hour again.
    const bool runsEvenly = calendar.civil(start) == hour && calendar.civil(end - 1.0) == hour + (hourSeconds - 1);
    return runsEvenly ? TimeSpan{.from = start, .to = end} : TimeSpan{.from = date, .to = date};
}

} // namespace UsageEngine
