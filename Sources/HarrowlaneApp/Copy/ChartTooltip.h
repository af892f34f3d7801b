#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Copy/ChartBucket.h"
#include "HarrowlaneApp/Copy/WeekChartHover.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/WeekSeries.h"

/// What the week chart tells of the place under the pointer.
namespace HarrowlaneApp::ChartTooltip {

/// A level as text: "58%" of the limit, or "0.67×" of a typical week.
[[nodiscard]] std::string format(double value, const UsageModel::WeekSeries& series);

struct Row {
    std::string label;
    std::string value;
    bool isBold = false;

    friend bool operator==(const Row&, const Row&) = default;
};

struct Content {
    std::string header;
    /// What stands beside the header; empty for nothing.
    std::string_view mark;
    /// A session's families, each with its percent.
    std::vector<BucketShare> mix;
    std::vector<Row> rows;
    std::optional<std::string_view> note;

    friend bool operator==(const Content&, const Content&) = default;
};

/// A row whose curve has no points is left out.
[[nodiscard]] Content content(const WeekChart::HoverTarget& target, const UsageModel::WeekSeries& series,
                              const UsageModel::Calendar& calendar);

inline constexpr double width = 210.0;

/// A tooltip's height, and the view that it must stay inside of.
struct Frame {
    double height = 0.0;
    Size view;
};

/// Beside the pointer: right of it, or left where it would leave the chart; a little above.
[[nodiscard]] Rect place(const Point& pointer, const Frame& frame);

} // namespace HarrowlaneApp::ChartTooltip
