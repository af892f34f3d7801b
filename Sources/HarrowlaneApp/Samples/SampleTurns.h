#pragma once

#include <vector>

#include "UsageModel/Calendar.h"
#include "UsageModel/UsageEvent.h"

namespace HarrowlaneApp {

/// Weeks of made-up work.
struct TurnPlan {
    /// The window that runs, and the present in it.
    UsageModel::Date windowStart;
    UsageModel::Date now;
    /// What the weeks before cost, in log units, the last one first; and what this one has cost so far.
    std::vector<double> priorTotals;
    double soFar = 0.0;
    /// The part of each class in all of it.
    UsageModel::EnumMap<UsageModel::ModelClass, double> mix;
};

/// Its turns, by time: two sessions on a working day and a short one at the weekend, by the calendar. The same plan
/// gives the same turns.
[[nodiscard]] std::vector<UsageModel::UsageEvent> turnsOf(const TurnPlan& plan, const UsageModel::Calendar& calendar);

} // namespace HarrowlaneApp
