#pragma once

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"

namespace UsageEngine {

/// An hour of the local clock.
struct LocalHour {
    /// The first instant of its day.
    UsageModel::Date day;
    /// 0 to 23.
    int hour = 0;
    /// 1 (Sunday) to 7.
    int weekday = 1;
};

[[nodiscard]] LocalHour localHour(const UsageModel::Calendar& calendar, UsageModel::Date date);

/// The instants around a date that share its local hour: all of the hour where the clock runs evenly through it, and
/// nothing where a change of the clock lies in it.
[[nodiscard]] TimeSpan evenHourAround(const UsageModel::Calendar& calendar, UsageModel::Date date);

/// Calls `visit(hour, turns)` for one stretch of turns after another that lie in the same local hour, so that the
/// calendar is asked once an hour, not once a turn. An hour in which the clock changes may come in several stretches.
void forEachLocalHour(WeighedTurns turns, const UsageModel::Calendar& calendar, auto&& visit) {
    for (auto first = turns.begin(); first != turns.end();) {
        const TimeSpan span = evenHourAround(calendar, first->ts);
        auto last = first + 1;
        while (last != turns.end() && last->ts < span.to) ++last;
        visit(localHour(calendar, first->ts), WeighedTurns(first, last));
        first = last;
    }
}

} // namespace UsageEngine
