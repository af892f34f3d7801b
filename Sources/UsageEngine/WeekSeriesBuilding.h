#pragma once

#include <optional>
#include <span>

#include "UsageEngine/WindowComputation.h"

namespace UsageEngine {

struct WeekSeriesQuestion {
    const Facts& facts;
    /// Those of the facts.
    const SessionAnchors& sessionAnchors;
    /// The sessions of the week, in log units.
    std::span<const UsageModel::SessionBlock> blocks;
    const SessionCapScale& capScale;
    /// Null where the window is not in force.
    const WindowCompute* session5h = nullptr;
    const WindowCompute* weekly = nullptr;
};

/// The week as a chart shows it: the line so far, the typical week, the forecast with its cone, a bar for each session.
/// In fractions of the limit where the gauge was read in this window; else in typical weeks, or log units where nothing
/// is typical. Absent where the week is not in force.
[[nodiscard]] std::optional<UsageModel::WeekSeries> buildWeekSeries(const WeekSeriesQuestion& question);

} // namespace UsageEngine
