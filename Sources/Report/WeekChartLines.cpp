#include "Report/WeekChartLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "Report/Text.h"
#include "Report/WeekPlot.h"
#include "UsageEngine/DayGrid.h"
#include "UsageEngine/TimeText.h"

namespace Report {

namespace {

using UsageModel::Date;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;

using Mark = WeekPlot::Mark;

constexpr std::size_t axisColumns = 5;
constexpr std::size_t fullCell = 8;
constexpr std::array<std::string_view, fullCell> blocks{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};

/// A character of the braille block, in UTF-8.
std::string braille(std::uint8_t dots) {
    return {'\xe2', static_cast<char>(0xa0U | (dots >> 6U)), static_cast<char>(0x80U | (dots & 0x3fU))};
}

std::string blockText(std::size_t eighths, bool unicode) {
    if (unicode) return std::string(blocks[eighths - 1]);
    return eighths > fullCell / 2 ? "#" : "_";
}

std::string glyph(const WeekPlot::Cell& cell, bool unicode) {
    switch (cell.mark) {
    case Mark::none: return " ";
    case Mark::used: return blockText(cell.pattern, unicode);
    case Mark::usedPastTypical: return unicode ? "▒" : ".";
    case Mark::forecast: return unicode ? braille(cell.pattern) : "*";
    case Mark::typical: return unicode ? braille(cell.pattern) : ".";
    case Mark::limit: return unicode ? "┄" : "=";
    }
    return " ";
}

Ink inkOf(Mark mark) {
    switch (mark) {
    case Mark::none:
    case Mark::used: return Ink::plain;
    case Mark::forecast: return Ink::accent;
    case Mark::typical:
    case Mark::usedPastTypical: return Ink::typical;
    case Mark::limit: return Ink::critical;
    }
    return Ink::plain;
}

class Chart {
public:
    Chart(const View& view, const WeekSeries& series)
        : view_(view),
          series_(series),
          columns_(view.width - axisColumns),
          days_(UsageEngine::DayGrid::columns({.from = series.windowStart, .to = series.windowEnd}, view.calendar)) {}

    [[nodiscard]] Lines lines() const {
        Lines lines = plotLines();
        lines.push_back(axisLine());
        lines.push_back(dayLine());
        if (!series_.sessions.empty()) lines.push_back(sessionLine());
        append(lines, arranged(legend(), view_.width));
        return lines;
    }

private:
    [[nodiscard]] std::size_t columnOf(Date date) const {
        const double column = series_.x(date) * static_cast<double>(columns_);
        return std::min(static_cast<std::size_t>(column), columns_ - 1);
    }
    [[nodiscard]] Line labelledAxis(std::string_view label) const {
        return Line(rightAligned(label, axisColumns - 1), Ink::faint).add(" ");
    }

    [[nodiscard]] Lines plotLines() const {
        constexpr std::size_t wideRows = 8;
        constexpr std::size_t narrowRows = 6;
        const WeekPlot plot =
            WeekPlot::of(series_, {.columns = columns_, .rows = view_.width < narrowBelow ? narrowRows : wideRows});
        Lines lines;
        for (std::size_t row = 0; row < plot.rows.size(); ++row) {
            const std::string_view reference = series_.limitLevel ? "100%" : "1.0×";
            Line line = labelledAxis(row == plot.referenceRow ? reference : "");
            const bool isOver = series_.limitLevel && row < plot.referenceRow;
            for (const WeekPlot::Cell& cell : plot.rows[row])
                line.add(glyph(cell, view_.unicode), isOver ? Ink::critical : inkOf(cell.mark));
            lines.push_back(std::move(line));
        }
        return lines;
    }

    [[nodiscard]] Line axisLine() const {
        std::vector<std::string_view> signs(columns_, "─");
        for (std::size_t i = 1; i < days_.size(); ++i) signs[columnOf(days_[i].start)] = "┴";
        Line line = labelledAxis("0");
        for (std::size_t i = 0; i < signs.size(); ++i) {
            const bool isNow = i == columnOf(series_.now);
            line.add(isNow ? "▲" : signs[i], isNow ? Ink::strong : Ink::faint);
        }
        return line;
    }

    /// The names of the days, each at its beginning; where there is no room for one it is left out.
    [[nodiscard]] Line dayLine() const {
        constexpr std::size_t nameColumns = 3;
        Line line;
        for (const UsageEngine::DayGrid::Column& day : days_) {
            const std::size_t column = axisColumns + columnOf(day.start);
            const std::string stamp = UsageEngine::TimeText::shortStamp(day.start, view_.calendar);
            const bool isFirst = line.pieces().empty();
            if ((!isFirst && line.columns() >= column) || column + nameColumns > view_.width) continue;
            if (isFirst && axisColumns + columnOf(day.end) < column + nameColumns + 1) continue;
            line.padTo(column).add(stamp.substr(0, nameColumns), Ink::faint);
        }
        return line;
    }

    [[nodiscard]] bool isCalibrated() const {
        return std::ranges::any_of(series_.sessions,
                                   [](const SessionBar& bar) { return bar.capBasis != SessionCapBasis::uncalibrated; });
    }

    /// Each session as high as it was full; without any cap, against the fullest.
    [[nodiscard]] Line sessionLine() const {
        const double fullest = std::ranges::max(series_.sessions, {}, &SessionBar::fillFraction).fillFraction;
        const double whole = isCalibrated() ? 1.0 : std::max(fullest, 1e-6);
        std::vector<std::size_t> eighths(columns_);
        for (const SessionBar& bar : series_.sessions) {
            const double share = std::clamp(bar.fillFraction / whole, 0.0, 1.0);
            const auto height = static_cast<std::size_t>(std::max(std::ceil(share * fullCell), 1.0));
            for (std::size_t at = columnOf(bar.start); at == columnOf(bar.start) || at < columnOf(bar.end); ++at)
                eighths[at] = std::max(eighths[at], height);
        }
        Line line = labelledAxis("5h");
        for (const std::size_t height : eighths)
            line.add(height > 0 ? blockText(height, view_.unicode) : " ", Ink::good);
        return line;
    }

    [[nodiscard]] std::string typicalName() const {
        const std::string name(curveLabel(series_.norm.basis));
        return name.empty() ? "a typical week for you" : name;
    }

    [[nodiscard]] std::vector<Line> legend() const {
        const bool hasTypical = !series_.baseline.empty() && series_.baseline.back().used > 0;
        const auto key = [&](Mark mark, std::uint8_t pattern, const std::string& name) {
            return Line(glyph({.mark = mark, .pattern = pattern}, view_.unicode), inkOf(mark)).add(" " + name);
        };
        constexpr std::uint8_t dash = 0x12;
        constexpr std::uint8_t dot = 0x02;
        std::vector<Line> keys{key(Mark::used, fullCell, "used")};
        if (!series_.forecastLikely.empty()) keys.push_back(key(Mark::forecast, dash, "forecast"));
        if (hasTypical) keys.push_back(key(Mark::typical, dot, typicalName()));
        if (series_.limitLevel) keys.push_back(key(Mark::limit, 0, "limit"));
        if (!series_.sessions.empty())
            keys.emplace_back(isCalibrated() ? "5h: how full each session got"
                                             : "5h: sessions, compared with each other");
        return keys;
    }

    const View& view_;
    const WeekSeries& series_;
    std::size_t columns_;
    std::vector<UsageEngine::DayGrid::Column> days_;
};

} // namespace

Lines weekChartLines(const View& view) {
    const auto& series = view.snapshot.weekSeries;
    if (!series || !(series->windowEnd > series->windowStart) || view.width <= axisColumns) return {};
    return Chart(view, *series).lines();
}

} // namespace Report
