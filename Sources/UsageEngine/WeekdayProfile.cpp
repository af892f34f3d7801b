#include "UsageEngine/WeekdayProfile.h"

#include <algorithm>
#include <map>

#include "UsageEngine/LocalHours.h"

namespace UsageEngine {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::SeriesPoint;

constexpr double hourSeconds = 3600.0;

std::size_t weekdayIndex(const Calendar& calendar, Date at) {
    return static_cast<std::size_t>(calendar.weekday(at) - 1);
}

Date startOfNextDay(const Calendar& calendar, Date at) {
    return calendar.startOfDay(calendar.addDays(calendar.startOfDay(at), 1));
}

/// The whole days to look at: from the first turn's, but not before the horizon, to yesterday.
TimeSpan sampledDays(const WeekdayProfile::LearnQuestion& question) {
    const Calendar& calendar = question.calendar;
    const Date today = calendar.startOfDay(question.through);
    const Date horizon =
        calendar.addDays(today, -question.lookbackWeeks * static_cast<int>(WeekdayProfile::daysOfWeek));
    const Date earliest = question.turns.front().ts;
    return {.from = std::max(horizon, calendar.startOfDay(earliest)), .to = today};
}

struct Sums {
    std::map<Date, double> byDay;
    std::vector<double> byHour = std::vector<double>(WeekdayProfile::hoursOfDay, 0.0);
};

Sums sumsOver(const TimeSpan& days, const WeekdayProfile::LearnQuestion& question) {
    Sums sums;
    forEachLocalHour(within(question.turns, days), question.calendar, [&](const LocalHour& hour, WeighedTurns inHour) {
        double& daySum = sums.byDay[hour.day];
        double& hourSum = sums.byHour[static_cast<std::size_t>(hour.hour)];
        for (const WeighedTurn& turn : inHour) {
            const double weight = turn.weight * question.scale;
            daySum += weight;
            hourSum += weight;
        }
    });
    return sums;
}

using SamplesByWeekday = std::array<std::vector<double>, WeekdayProfile::daysOfWeek>;

SamplesByWeekday samplesOf(const Sums& sums, const TimeSpan& days, const Calendar& calendar) {
    SamplesByWeekday samples;
    for (Date day = days.from; day < days.to;) {
        const auto total = sums.byDay.find(day);
        samples[weekdayIndex(calendar, day)].push_back(total == sums.byDay.end() ? 0.0 : total->second);
        day = days.step(day, startOfNextDay(calendar, day));
    }
    return samples;
}

std::vector<double> sharesOf(std::vector<double> sums) {
    double total = 0.0;
    for (const double sum : sums) total += sum;
    if (!(total > 0.0)) return WeekdayProfile::empty().hourShare;
    for (double& sum : sums) sum /= total;
    return sums;
}

/// Of sorted values, with linear interpolation; 0 of none.
double quantileOf(const std::vector<double>& sorted, double q) {
    if (sorted.empty()) return 0.0;
    const double position = static_cast<double>(sorted.size() - 1) * q;
    const auto low = static_cast<std::size_t>(position);
    if (low + 1 >= sorted.size()) return sorted[low];
    return sorted[low] + (sorted[low + 1] - sorted[low]) * (position - static_cast<double>(low));
}

} // namespace

WeekdayProfile WeekdayProfile::learn(const LearnQuestion& question) {
    if (question.turns.empty()) return empty();
    const TimeSpan days = sampledDays(question);
    const Sums sums = sumsOver(days, question);
    SamplesByWeekday samples = samplesOf(sums, days, question.calendar);

    WeekdayProfile profile = empty();
    profile.hourShare = sharesOf(sums.byHour);
    for (std::size_t i = 0; i < daysOfWeek; ++i) {
        std::ranges::sort(samples[i]);
        profile.dayLevel[i] = quantileOf(samples[i], 0.5);
        profile.dayLow[i] = quantileOf(samples[i], 0.25);
        profile.dayHigh[i] = quantileOf(samples[i], 0.75);
        profile.sampleCount[i] = static_cast<std::int64_t>(samples[i].size());
    }
    return profile;
}

double WeekdayProfile::expectedBurn(const Expectation& expectation) const {
    const auto& [span, quantile, calendar] = expectation;
    double sum = 0.0;
    for (Date t = span.from; t < span.to;) {
        const Date end = span.step(t, startOfNextDay(calendar, t));
        sum += level(weekdayIndex(calendar, t), quantile) * daySharePart({.from = t, .to = end}, calendar);
        t = end;
    }
    return sum;
}

std::vector<SeriesPoint> WeekdayProfile::cumulative(const Expectation& expectation) const {
    const TimeSpan& span = expectation.span;
    std::vector<SeriesPoint> curve{{.t = span.from, .used = 0.0}};
    double sum = 0.0;
    for (Date t = span.from; t < span.to;) {
        const Date next = span.step(t, t + hourSeconds);
        sum += expectedBurn(
            {.span = {.from = t, .to = next}, .quantile = expectation.quantile, .calendar = expectation.calendar});
        curve.push_back({.t = next, .used = sum});
        t = next;
    }
    return curve;
}

double WeekdayProfile::typicalWeekTotal() const {
    double sum = 0.0;
    for (const double day : dayLevel) sum += day;
    return sum;
}

bool WeekdayProfile::isUsable() const {
    return std::ranges::any_of(sampleCount, [](std::int64_t count) { return count >= 2; });
}

double WeekdayProfile::level(std::size_t weekday, Quantile quantile) const {
    switch (quantile) {
    case Quantile::low: return dayLow[weekday];
    case Quantile::typical: return dayLevel[weekday];
    case Quantile::high: return dayHigh[weekday];
    }
    return 0.0;
}

/// The share of a day between two instants of it. A step counts the hour it begins in, and at most the whole of that.
double WeekdayProfile::daySharePart(const TimeSpan& span, const Calendar& calendar) const {
    double share = 0.0;
    for (Date t = span.from; t < span.to;) {
        const Date next = span.step(t, calendar.addHours(calendar.settingMinuteToZero(t), 1));
        const double fraction = std::clamp((next - t) / hourSeconds, 0.0, 1.0);
        share += fraction * hourShare[static_cast<std::size_t>(calendar.hour(t))];
        t = next;
    }
    return share;
}

} // namespace UsageEngine
