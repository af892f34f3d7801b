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

const LocalHours::Hour& LocalHours::at(Date date) {
    if (span_.contains(date)) return known_;
    span_ = around(date);
    known_ = {
        .day = calendar_.startOfDay(date),
        .hour = calendar_.hour(date),
        .weekday = calendar_.weekday(date),
    };
    return known_;
}

/// The hour around a date, where the clock runs evenly through it; nothing but the date where a change of the clock
/// lies in it.
TimeSpan LocalHours::around(Date date) const {
    const absl::CivilSecond clock = calendar_.civil(date);
    const double second = std::floor(date.secondsSince1970);
    const Date start{second - clock.minute() * 60.0 - clock.second()};
    const Date end = start + hourSeconds;
    const absl::CivilHour hour(clock);
    const bool runsEvenly = civilHour(calendar_, start) == hour && civilHour(calendar_, end - 1.0) == hour;
    return runsEvenly ? TimeSpan{.from = start, .to = end} : TimeSpan{.from = date, .to = date};
}

} // namespace UsageEngine
