#include "UsageEngine/DayGrid.h"

namespace UsageEngine::DayGrid {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;

Date nextMidnight(Date midnight, const Calendar& calendar) {
    return calendar.startOfDay(calendar.addDays(midnight, 1));
}

/// The window's ends and the midnights between them.
std::vector<Date> boundsOf(const TimeSpan& window, const Calendar& calendar) {
    std::vector<Date> bounds{window.from};
    const auto add = [&](Date bound) {
        if (bound != bounds.back()) bounds.push_back(bound);
    };
    for (Date m = nextMidnight(calendar.startOfDay(window.from), calendar); m < window.to;) {
        add(m);
        const Date next = nextMidnight(m, calendar);
        if (!(next > m)) break;
        m = next;
    }
    add(window.to);
    return bounds;
}

} // namespace

std::vector<Column> columns(const TimeSpan& window, const Calendar& calendar) {
    if (!(window.to > window.from)) return {};
    constexpr double shortestDay = 82800.0;
    const std::vector<Date> bounds = boundsOf(window, calendar);
    std::vector<Column> columns;
    for (std::size_t i = 0; i + 1 < bounds.size(); ++i) {
        const Date start = bounds[i];
        const bool beginsDay = Calendar::isSameSecond(start, calendar.startOfDay(start));
        columns.push_back(
            {.start = start, .end = bounds[i + 1], .isFullDay = beginsDay && bounds[i + 1] - start >= shortestDay});
    }
    return columns;
}

} // namespace UsageEngine::DayGrid
