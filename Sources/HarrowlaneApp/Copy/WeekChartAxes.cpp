#include "HarrowlaneApp/Copy/WeekChartAxes.h"

#include <array>

#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "UsageEngine/DayGrid.h"
#include "UsageEngine/TimeText.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::SeriesScale;
using UsageModel::WeekSeries;

bool isWeekend(Date date, const Calendar& calendar) {
    constexpr int sunday = 1;
    constexpr int saturday = 7;
    const int weekday = calendar.weekday(date);
    return weekday == sunday || weekday == saturday;
}

std::string tickLabel(double level, SeriesScale scale) {
    if (scale == SeriesScale::capFraction) return Figures::percent(level);
    return level == 0.0 ? "0×" : Figures::fixed(level, 1) + "×";
}

} // namespace

std::vector<DayColumn> dayColumns(const Geometry& geometry, const Calendar& calendar) {
    constexpr double narrowestWithLabel = 20.0;
    constexpr double belowPanel = 12.0;
    std::vector<DayColumn> columns;
    for (const auto& day :
         UsageEngine::DayGrid::columns({.from = geometry.top.windowStart, .to = geometry.top.windowEnd}, calendar)) {
        DayColumn column{.left = geometry.x(day.start), .right = geometry.x(day.end)};
        column.labelPlace = {.x = (column.left + column.right) / 2, .y = geometry.bottom.panel.bottom() + belowPanel};
        if (column.right - column.left >= narrowestWithLabel) {
            column.label = UsageEngine::TimeText::shortWeekday(day.start, calendar);
        }
        column.isWeekend = isWeekend(day.start, calendar);
        column.hasLine = !columns.empty();
        columns.push_back(std::move(column));
    }
    return columns;
}

std::vector<Tick> topTicks(const WeekSeries& series, const Geometry& geometry) {
    constexpr std::array<double, 5> capLevels{0.0, 0.25, 0.5, 0.75, 1.0};
    constexpr std::array<double, 5> typicalLevels{0.0, 0.5, 1.0, 1.5, 2.0};
    std::vector<Tick> ticks;
    for (const double level : series.scale == SeriesScale::capFraction ? capLevels : typicalLevels) {
        ticks.push_back({.y = geometry.top.heldY(level), .label = tickLabel(level, series.scale)});
    }
    return ticks;
}

ReferenceLine referenceLine(const WeekSeries& series, const Geometry& geometry) {
    if (series.scale == SeriesScale::typicalWeeks)
        return {.y = geometry.top.heldY(1.0), .name = "A TYPICAL WEEK FOR YOU"};
    return {.y = geometry.top.heldY(WeekCopy::limit(series)), .name = "WEEKLY LIMIT", .isLimit = true};
}

std::string_view resetCaption(const WeekSeries& series) {
    return series.boundaryEstimated ? "RESET?" : "RESET";
}

} // namespace HarrowlaneApp::WeekChart
