#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

namespace HarrowlaneApp::WeekChart {

/// A calendar day across both panels.
struct DayColumn {
    double left = 0.0;
    double right = 0.0;
    /// "Tue", to be centred at `labelPlace`; absent where the column is too narrow for it.
    std::optional<std::string> label;
    Point labelPlace;
    bool isWeekend = false;
    /// A line marks its beginning: it is not the first.
    bool hasLine = false;

    friend bool operator==(const DayColumn&, const DayColumn&) = default;
};

/// None where the window is empty.
[[nodiscard]] std::vector<DayColumn> dayColumns(const Geometry& geometry, const UsageModel::Calendar& calendar);

/// A label left of the top panel.
struct Tick {
    double y = 0.0;
    std::string label;

    friend bool operator==(const Tick&, const Tick&) = default;
};

[[nodiscard]] std::vector<Tick> topTicks(const UsageModel::WeekSeries& series, const Geometry& geometry);

/// The horizontal line that the curves are read against.
struct ReferenceLine {
    double y = 0.0;
    std::string_view name;
    /// It is the limit itself, not a typical week.
    bool isLimit = false;

    friend bool operator==(const ReferenceLine&, const ReferenceLine&) = default;
};

[[nodiscard]] ReferenceLine referenceLine(const UsageModel::WeekSeries& series, const Geometry& geometry);

inline constexpr std::string_view nowCaption = "NOW";
/// With a question mark where the window's end is inferred.
[[nodiscard]] std::string_view resetCaption(const UsageModel::WeekSeries& series);

} // namespace HarrowlaneApp::WeekChart
