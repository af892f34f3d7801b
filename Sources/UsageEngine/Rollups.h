#pragma once

#include <optional>
#include <vector>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/UsageSnapshot.h"
#include "UsageModel/WeekSeries.h"
#include "UsageModel/WindowKind.h"

namespace UsageEngine {

/// What a window's turns add up to.
struct Rollup {
    UsageModel::WindowKind kind = UsageModel::WindowKind::session5h;
    /// Log units.
    double used = 0.0;
    UsageModel::Date windowStart;
    UsageModel::Date windowEnd;
    std::optional<UsageModel::Date> resetsAt;

    friend bool operator==(const Rollup&, const Rollup&) = default;
};

/// How the turns whose effort is known spread over the levels.
struct EffortMix {
    /// Shares that add up to 1; empty where those turns weigh nothing.
    UsageModel::EnumMap<UsageModel::EffortLevel, double> mix;
    /// The level with the largest share, the lowest of equals.
    std::optional<UsageModel::EffortLevel> dominant;

    friend bool operator==(const EffortMix&, const EffortMix&) = default;
};

/// Sums over turns, in log units.
namespace Rollups {

/// Of the turns within the span that the filter admits; 0 where the span is empty.
[[nodiscard]] double weightedUsage(WeighedTurns turns, const TimeSpan& span, const TurnFilter& filter = {});

struct CumulativeQuestion {
    WeighedTurns turns;
    TimeSpan span;
    /// Factor on every weight.
    double scale = 1.0;
    std::optional<UsageModel::ModelBucket> bucket;
};

/// The running total at the beginning of the span, every hour on from there, and at its end. One point where the span
/// is empty. A turn at the very end adds nothing.
[[nodiscard]] std::vector<UsageModel::SeriesPoint> hourlyCumulative(const CumulativeQuestion& question);

/// Of the turns within the span; classes without one are absent.
[[nodiscard]] UsageModel::ModelBreakdown byModelClass(WeighedTurns turns, const TimeSpan& span);
[[nodiscard]] EffortMix byEffort(WeighedTurns turns, const TimeSpan& span);

/// The days with turns by time, with their totals and heat levels: 0 for a day that weighs nothing, else 1 to 4 by the
/// share of the busiest day.
[[nodiscard]] std::vector<UsageModel::DayCell> dailyCalendar(WeighedTurns turns, const UsageModel::Calendar& calendar);

struct TrailingQuestion {
    WeighedTurns turns;
    UsageModel::Date now;
    UsageModel::WindowKind kind = UsageModel::WindowKind::weeklyAll;
    std::optional<UsageModel::Date> resetsAt;
};

/// The week that ends at the reset, or now where there is none, whatever the kind's own length.
[[nodiscard]] Rollup trailingWeekly(const TrailingQuestion& question);

} // namespace Rollups

} // namespace UsageEngine
