#include "UsageEngine/Rollups.h"

#include <algorithm>
#include <map>

#include "UsageEngine/LocalHours.h"

namespace UsageEngine::Rollups {

namespace {

using UsageModel::Date;
using UsageModel::DayCell;
using UsageModel::SeriesPoint;

constexpr double hourSeconds = 3600.0;
constexpr double weekSeconds = 604800.0;

using DayTotals = std::map<Date, double>;

DayTotals totalsByDay(WeighedTurns turns, const UsageModel::Calendar& calendar) {
    DayTotals totals;
    forEachLocalHour(turns, calendar, [&](const LocalHour& hour, WeighedTurns inHour) {
        double& total = totals[hour.day];
        for (const WeighedTurn& turn : inHour) total += turn.weight;
    });
    return totals;
}

std::int64_t heatLevel(double total, double busiest) {
    if (busiest <= 0.0 || total <= 0.0) return 0;
    const double share = total / busiest;
    if (share < 0.15) return 1;
    if (share < 0.4) return 2;
    return share < 0.7 ? 3 : 4;
}

} // namespace

double weightedUsage(WeighedTurns turns, const TimeSpan& span, const TurnFilter& filter) {
    return sumOf(within(turns, span), filter);
}

std::vector<SeriesPoint> hourlyCumulative(const CumulativeQuestion& question) {
    const auto [from, to] = question.span;
    std::vector<SeriesPoint> points{{.t = from, .used = 0.0}};
    if (!(from < to)) return points;

    const WeighedTurns turns = within(question.turns, question.span);
    const TurnFilter filter{.opusOnly = false, .bucket = question.bucket};
    auto turn = turns.begin();
    double total = 0.0;
    for (Date t = from; t < to;) {
        const Date next = question.span.step(t, t + hourSeconds);
        for (; turn != turns.end() && turn->ts < next; ++turn) {
            if (filter.admits(*turn)) total += turn->weight * question.scale;
        }
        points.push_back({.t = next, .used = total});
        t = next;
    }
    return points;
}

UsageModel::ModelBreakdown byModelClass(WeighedTurns turns, const TimeSpan& span) {
    UsageModel::ModelBreakdown breakdown;
    for (const WeighedTurn& turn : within(turns, span)) breakdown.byClass[turn.modelClass] += turn.weight;
    return breakdown;
}

EffortMix byEffort(WeighedTurns turns, const TimeSpan& span) {
    UsageModel::EnumMap<UsageModel::EffortLevel, double> sums;
    double total = 0.0;
    for (const WeighedTurn& turn : within(turns, span)) {
        if (!turn.effort) continue;
        sums[*turn.effort] += turn.weight;
        total += turn.weight;
    }
    if (!(total > 0.0)) return {};

    EffortMix result;
    for (const auto& [level, sum] : sums) {
        const double share = sum / total;
        result.mix.set(level, share);
        if (!result.dominant || share > result.mix.valueOr(*result.dominant, 0.0)) result.dominant = level;
    }
    return result;
}

std::vector<DayCell> dailyCalendar(WeighedTurns turns, const UsageModel::Calendar& calendar) {
    const DayTotals totals = totalsByDay(turns, calendar);
    double busiest = totals.empty() ? 0.0 : totals.begin()->second;
    for (const auto& [day, total] : totals) busiest = std::max(busiest, total);
    std::vector<DayCell> cells;
    cells.reserve(totals.size());
    for (const auto& [day, total] : totals)
        cells.push_back({.day = day, .weighted = total, .level = heatLevel(total, busiest)});
    return cells;
}

Rollup trailingWeekly(const TrailingQuestion& question) {
    const Date end = question.resetsAt.value_or(question.now);
    const TimeSpan span{.from = end - weekSeconds, .to = end};
    const TurnFilter filter{.opusOnly = question.kind == UsageModel::WindowKind::weeklyOpus, .bucket = {}};
    return {
        .kind = question.kind,
        .used = weightedUsage(question.turns, span, filter),
        .windowStart = span.from,
        .windowEnd = span.to,
        .resetsAt = question.resetsAt,
    };
}

} // namespace UsageEngine::Rollups
