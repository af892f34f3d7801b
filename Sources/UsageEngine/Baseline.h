#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/WeekSeries.h"
#include "UsageModel/WindowKind.h"

namespace UsageEngine {

/// When in the week a user spends: the share of a typical week that falls into each of its hours.
class Baseline {
public:
    static constexpr std::size_t hoursOfWeek = 168;

    struct LearnQuestion {
        WeighedTurns turns;
        const UsageModel::Calendar& calendar;
        /// The first instant that counts, and the first that does not any more.
        std::optional<UsageModel::Date> from;
        std::optional<UsageModel::Date> to;
        TurnFilter filter;
    };

    /// The shares as they are in the turns; the flat week where they weigh nothing.
    [[nodiscard]] static Baseline learn(const LearnQuestion& question);

    /// Hour 0 is Sunday's first, in the calendar's zone. A list of another length than `hoursOfWeek` gives the flat
    /// week; the sum is not checked.
    Baseline(std::vector<double> week, const UsageModel::Calendar& calendar);

    [[nodiscard]] const std::vector<double>& week() const { return week_; }

    /// The share of the window that is usually spent per second at an instant. A session runs evenly; a week's hours
    /// are smoothed with their neighbours.
    [[nodiscard]] double rate(UsageModel::Date at, UsageModel::WindowKind window) const;

    /// The share of the window, 0 to 1, that is usually spent from its start (`span.from`) to now (`span.to`).
    [[nodiscard]] double expectedElapsedShare(const TimeSpan& span, UsageModel::WindowKind window) const;

    /// The share spent since the beginning of the window (`span`), 0 to 1, every `stepSeconds` and at its end. Empty
    /// where the window or the step is.
    [[nodiscard]] std::vector<UsageModel::SeriesPoint> cumulativeShareCurve(const TimeSpan& span,
                                                                            double stepSeconds) const;

private:
    [[nodiscard]] double shareOfHour(UsageModel::Date at) const;

    std::vector<double> week_;
    UsageModel::Calendar calendar_;
};

} // namespace UsageEngine
