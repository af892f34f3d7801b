#include "Report/WeekPlot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace Report {

namespace {

using UsageModel::Date;
using UsageModel::SeriesPoint;
using UsageModel::WeekSeries;

using Curve = std::vector<SeriesPoint>;
using Mark = WeekPlot::Mark;

constexpr std::size_t dotRowsPerCell = 4;
constexpr std::size_t dotColumnsPerCell = 2;
constexpr double eighthsPerCell = 8;

double highest(const Curve& curve) {
    const auto top = std::ranges::max_element(curve, {}, &SeriesPoint::used);
    return top == curve.end() ? 0.0 : top->used;
}

/// The level that the chart is read against.
double referenceLevel(const WeekSeries& series) {
    return series.limitLevel.value_or(series.baseline.empty() ? 0.0 : series.baseline.back().used);
}

/// Levels to rows: `top` is the upper edge of the uppermost row.
struct Scale {
    double top = 1.0;
    std::size_t rows = 0;
    std::optional<std::size_t> referenceRow;

    /// From the bottom, in rows; a level beyond the chart is held at its edge.
    [[nodiscard]] double height(double level) const {
        const double height = level / top * static_cast<double>(rows);
        return height > 0 ? std::min(height, static_cast<double>(rows)) : 0.0;
    }
};

/// The reference lies in the middle of a row, where a line is drawn: the uppermost while all stays below it, else the
/// second; what goes far above is cut off, but not where only a typical week is known.
Scale scaleOf(const WeekSeries& series, std::size_t rows) {
    const double most = std::max({highest(series.actual), highest(series.forecastLikely), series.usedNow});
    const double reference = referenceLevel(series);
    if (!(reference > 0)) return {.top = most > 0 ? most : 1.0, .rows = rows, .referenceRow = std::nullopt};
    std::size_t row = most > reference && rows > 1 ? 1 : 0;
    const auto topFor = [&](std::size_t at) {
        return reference * static_cast<double>(rows) / (static_cast<double>(rows - at) - 0.5);
    };
    while (!series.limitLevel && row + 1 < rows && topFor(row) < most) ++row;
    return {.top = topFor(row), .rows = rows, .referenceRow = row};
}

class Plotter {
public:
    Plotter(const WeekSeries& series, WeekPlot::Size size)
        : series_(series),
          size_(size),
          scale_(scaleOf(series, size.rows)),
          cells_(size.rows, std::vector<WeekPlot::Cell>(size.columns)) {}

    void fillUsed() {
        for (std::size_t column = 0; column < size_.columns; ++column) {
            const Date at = instant(column, 1);
            if (at > series_.now) return;
            // The first eighth shows from the first turn on.
            const double used = valueAt(series_.actual, at);
            const double eighths = std::round(scale_.height(used) * eighthsPerCell);
            fill(column, static_cast<std::size_t>(used > 0 ? std::max(eighths, 1.0) : 0.0));
        }
    }
    void drawForecast() {
        std::optional<std::size_t> before;
        for (std::size_t dot = 0; dot < dotColumns(); ++dot) {
            if (instant(dot, dotColumnsPerCell) <= series_.now || series_.forecastLikely.empty()) continue;
            const std::size_t row = dotRow(valueAt(series_.forecastLikely, instant(dot, dotColumnsPerCell)));
            // Where it is steep, the dots between keep it one line.
            for (std::size_t y = before && *before < row ? *before + 1 : row; y <= row; ++y)
                put(dot, y, Mark::forecast);
            before = row;
        }
    }
    /// Every other dot.
    void drawTypical() {
        if (series_.baseline.empty() || !(highest(series_.baseline) > 0)) return;
        for (std::size_t dot = 0; dot < dotColumns(); dot += dotColumnsPerCell)
            put(dot, dotRow(valueAt(series_.baseline, instant(dot, dotColumnsPerCell))), Mark::typical);
    }
    void drawReference() {
        if (!scale_.referenceRow || !series_.limitLevel) return;
        for (WeekPlot::Cell& cell : cells_[*scale_.referenceRow]) {
            if (cell.mark == Mark::none) cell.mark = Mark::limit;
        }
    }
    [[nodiscard]] WeekPlot plot() && { return {.rows = std::move(cells_), .referenceRow = scale_.referenceRow}; }

private:
    [[nodiscard]] std::size_t dotColumns() const { return size_.columns * dotColumnsPerCell; }

    /// The middle of a column of which there are `perCell` in each cell.
    [[nodiscard]] Date instant(std::size_t column, std::size_t perCell) const {
        const double share = (static_cast<double>(column) + 0.5) / static_cast<double>(size_.columns * perCell);
        return series_.windowStart + share * (series_.windowEnd - series_.windowStart);
    }

    /// From the bottom.
    [[nodiscard]] std::size_t dotRow(double level) const {
        const std::size_t dotRows = size_.rows * dotRowsPerCell;
        return std::min(static_cast<std::size_t>(scale_.height(level) * dotRowsPerCell), dotRows - 1);
    }

    void fill(std::size_t column, std::size_t eighths) {
        constexpr auto full = static_cast<std::size_t>(eighthsPerCell);
        for (std::size_t row = size_.rows; row > 0 && eighths > 0; --row) {
            const std::size_t own = std::min(eighths, full);
            cells_[row - 1][column] = {.mark = Mark::used, .pattern = static_cast<std::uint8_t>(own)};
            eighths -= own;
        }
    }

    void put(std::size_t dot, std::size_t dotRowFromBottom, Mark mark) {
        constexpr std::array<std::array<std::uint8_t, dotRowsPerCell>, dotColumnsPerCell> bits{
            {{0x40, 0x04, 0x02, 0x01}, {0x80, 0x20, 0x10, 0x08}}};
        WeekPlot::Cell& cell = cells_[size_.rows - 1 - dotRowFromBottom / dotRowsPerCell][dot / dotColumnsPerCell];
        const bool isFull = cell.pattern == static_cast<std::uint8_t>(eighthsPerCell);
        if (cell.mark == Mark::used) {
            // In a full cell the curve can be shown; the edge of what was used is worth more than a dot.
            if (isFull && mark == Mark::typical) cell.mark = Mark::usedPastTypical;
            return;
        }
        if (cell.mark == Mark::none) cell.mark = mark;
        cell.pattern |= bits[dot % dotColumnsPerCell][dotRowFromBottom % dotRowsPerCell];
    }

    const WeekSeries& series_;
    WeekPlot::Size size_;
    Scale scale_;
    std::vector<std::vector<WeekPlot::Cell>> cells_;
};

} // namespace

WeekPlot WeekPlot::of(const WeekSeries& series, Size size) {
    if (!(series.windowEnd > series.windowStart) || size.columns == 0 || size.rows == 0) return {};
    Plotter plotter(series, size);
    plotter.fillUsed();
    plotter.drawForecast();
    plotter.drawTypical();
    plotter.drawReference();
    return std::move(plotter).plot();
}

double valueAt(const Curve& curve, Date at) {
    if (curve.empty() || at < curve.front().t) return 0.0;
    const auto after = std::ranges::upper_bound(curve, at, {}, &SeriesPoint::t);
    if (after == curve.end()) return curve.back().used;
    const SeriesPoint& before = *(after - 1);
    return before.used + (at - before.t) / (after->t - before.t) * (after->used - before.used);
}

} // namespace Report
