#include "UsageEngine/Baseline.h"

#include <algorithm>
#include <limits>

#include "UsageEngine/LocalHours.h"
#include "UsageEngine/SessionWindows.h"

namespace UsageEngine {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::SeriesPoint;
using UsageModel::WindowKind;

constexpr double hourSeconds = 3600.0;

std::size_t hourOfWeek(const LocalHour& hour) {
    constexpr std::size_t hoursOfDay = 24;
    return static_cast<std::size_t>(hour.weekday - 1) * hoursOfDay + static_cast<std::size_t>(hour.hour);
}

std::size_t hourOfWeek(const Calendar& calendar, Date at) {
    return hourOfWeek(localHour(calendar, at));
}

std::vector<double> flatWeek() {
    return std::vector<double>(Baseline::hoursOfWeek, 1.0 / static_cast<double>(Baseline::hoursOfWeek));
}

WeighedTurns turnsOf(const Baseline::LearnQuestion& question) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return within(question.turns,
                  {.from = question.from.value_or(Date{-infinity}), .to = question.to.value_or(Date{infinity})});
}

} // namespace

Baseline Baseline::learn(const LearnQuestion& question) {
    std::vector<double> week(hoursOfWeek, 0.0);
    forEachLocalHour(turnsOf(question), question.calendar, [&](const LocalHour& hour, WeighedTurns inHour) {
        double& sum = week[hourOfWeek(hour)];
        for (const WeighedTurn& turn : inHour) sum += countedWeight(turn, question.filter);
    });
    double total = 0.0;
    for (const double hour : week) total += hour;
    if (!(total > 0.0)) return {flatWeek(), question.calendar};
    for (double& hour : week) hour /= total;
    return {std::move(week), question.calendar};
}

Baseline::Baseline(std::vector<double> week, const Calendar& calendar)
    : week_(week.size() == hoursOfWeek ? std::move(week) : flatWeek()),
      calendar_(calendar) {}

double Baseline::rate(Date at, WindowKind window) const {
    if (window == WindowKind::session5h) return 1.0 / SessionWindows::span;
    const std::size_t hour = hourOfWeek(calendar_, at);
    double sum = 0.0;
    for (const std::size_t neighbour : {hour + hoursOfWeek - 1, hour, hour + 1}) sum += week_[neighbour % hoursOfWeek];
    return sum / 3.0 / hourSeconds;
}

double Baseline::expectedElapsedShare(const TimeSpan& span, WindowKind window) const {
    if (window == WindowKind::session5h) return std::clamp((span.to - span.from) / SessionWindows::span, 0.0, 1.0);
    const std::vector<SeriesPoint> curve = cumulativeShareCurve(span, hourSeconds);
    return curve.empty() ? 0.0 : curve.back().used;
}

std::vector<SeriesPoint> Baseline::cumulativeShareCurve(const TimeSpan& span, double stepSeconds) const {
    if (!(span.to > span.from) || !(stepSeconds > 0.0)) return {};
    std::vector<SeriesPoint> curve{{.t = span.from, .used = 0.0}};
    double share = 0.0;
    for (Date t = span.from; t < span.to;) {
        const Date next = span.step(t, t + stepSeconds);
        // A step takes the hour it begins in as a whole, also where a full hour lies within it.
        share += (next - t) / hourSeconds * shareOfHour(t);
        curve.push_back({.t = next, .used = std::clamp(share, 0.0, 1.0)});
        t = next;
    }
    return curve;
}

double Baseline::shareOfHour(Date at) const {
    return week_[hourOfWeek(calendar_, at)];
}

} // namespace UsageEngine
