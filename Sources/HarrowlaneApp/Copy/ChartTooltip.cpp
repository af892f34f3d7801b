#include "HarrowlaneApp/Copy/ChartTooltip.h"

#include <algorithm>

#include "HarrowlaneApp/Copy/Figures.h"
#include "HarrowlaneApp/Copy/SessionDetail.h"
#include "UsageEngine/TimeText.h"

namespace HarrowlaneApp::ChartTooltip {

namespace {

using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::SessionBar;
using UsageModel::WeekSeries;

Content ofSession(const SessionBar& bar, const WeekSeries& series, const Calendar& calendar) {
    return {
        .header = SessionDetail::times(bar, calendar),
        .mark = bar.isCurrent ? "running" : "",
        .mix = mixBreakdown(bar),
        .rows = {{.label = "Cost of week", .value = SessionDetail::weekCost(bar, series), .isBold = true},
                 {.label = "Session cap", .value = SessionDetail::capText(bar).value_or("unknown")}},
        .note = SessionDetail::capNote(bar),
    };
}

Content ofCurve(Date at, const WeekSeries& series, const Calendar& calendar) {
    const bool isPast = at <= series.now;
    Content content{
        .header = UsageEngine::TimeText::shortStamp(at, calendar),
        .mark = isPast ? "burned so far" : "forecast",
    };
    if (const auto value = WeekChart::curveValue(series, at)) {
        content.rows.push_back(
            {.label = isPast ? "Used" : "Projected", .value = format(*value, series), .isBold = true});
    }
    if (const auto typical = WeekChart::valueOn(series.baseline, at)) {
        content.rows.push_back({.label = "Typical week", .value = format(*typical, series)});
    }
    content.rows.push_back({.label = "Week elapsed", .value = Figures::percent(series.x(at))});
    return content;
}

} // namespace

std::string format(double value, const WeekSeries& series) {
    return series.scale == UsageModel::SeriesScale::typicalWeeks ? Figures::multiple(value) : Figures::percent(value);
}

Content content(const WeekChart::HoverTarget& target, const WeekSeries& series, const Calendar& calendar) {
    if (const auto* bar = std::get_if<SessionBar>(&target)) return ofSession(*bar, series, calendar);
    return ofCurve(std::get<WeekChart::CurvePlace>(target).at, series, calendar);
}

Rect place(const Point& pointer, const Frame& frame) {
    constexpr double margin = 14.0;
    constexpr double above = 96.0;
    constexpr double leastTop = 8.0;
    const double mostLeft = frame.view.width - margin - width;
    const double beside = pointer.x + margin <= mostLeft ? pointer.x + margin : pointer.x - margin - width;
    const double mostTop = frame.view.height - margin - frame.height;
    return {
        .x = std::max(std::min(beside, mostLeft), margin),
        .y = std::max(std::min(pointer.y - above, mostTop), leastTop),
        .width = width,
        .height = frame.height,
    };
}

} // namespace HarrowlaneApp::ChartTooltip
