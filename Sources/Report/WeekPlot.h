#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "UsageModel/WeekSeries.h"

namespace Report {

/// The week chart as a grid of characters, before it is settled how these look.
struct WeekPlot {
    enum class Mark { none, used, usedPastTypical, forecast, typical, limit };

    struct Cell {
        Mark mark = Mark::none;
        /// Of `used`: how many eighths are filled from below. Of `forecast` and `typical`: the dots of two columns of
        /// four, numbered as in braille, of this curve and of those behind it.
        std::uint8_t pattern = 0;

        friend bool operator==(const Cell&, const Cell&) = default;
    };

    struct Size {
        std::size_t columns = 0;
        std::size_t rows = 0;
    };

    /// From the top row down, each from the window's start to its end.
    std::vector<std::vector<Cell>> rows;
    /// The row of the limit, or of a typical week's total where no limit is known. Absent where neither is.
    std::optional<std::size_t> referenceRow;

    /// Empty where the window or the size is.
    [[nodiscard]] static WeekPlot of(const UsageModel::WeekSeries& series, Size size);
};

/// What a curve is at an instant: between two points along the line, 0 before the first and the last beyond it.
[[nodiscard]] double valueAt(const std::vector<UsageModel::SeriesPoint>& curve, UsageModel::Date at);

} // namespace Report
