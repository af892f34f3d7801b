#include "HarrowlaneApp/Drawing/WeekChartLayout.h"

namespace HarrowlaneApp::WeekChart {

namespace {

using UsageModel::WeekSeries;

void layOutAxes(Layout& layout, const Chart& chart) {
    layout.days = dayColumns(layout.geometry, chart.calendar);
    layout.reference = referenceLine(chart.series, layout.geometry);
    layout.bars = bars(chart.series, layout.geometry);
    if (anyCalibrated(chart.series.sessions)) layout.fullCap = layout.geometry.botY(1.0);
}

void layOutCurves(Layout& layout, const Chart& chart) {
    const WeekSeries& series = chart.series;
    const Plot& top = layout.geometry.top;
    const auto traced = [&](const auto& curve) { return trace(curve, top, chart.pixelsPerPoint); };
    layout.typical = traced(series.baseline);
    layout.likely = traced(series.forecastLikely);
    layout.cone = areaBetween(traced(series.forecastHigh), traced(series.forecastLow));
    layout.burned = traced(series.actual);
    layout.burnedArea = areaTo(top.panel.bottom(), layout.burned);
    layout.now = {.x = top.x(series.now), .y = top.heldY(series.usedNow)};
    if (!chart.whatIfFactor) return;
    layout.ghost = traced(series.ghost(*chart.whatIfFactor));
    layout.ghostEnd = {.x = top.panel.right(), .y = top.heldY(series.ghostLanding(*chart.whatIfFactor))};
}

void layOutForecast(Layout& layout, const Chart& chart) {
    layout.wash = wash(chart.series, layout.geometry);
    if (layout.wash) layout.washArea = washArea(*layout.wash, layout.likely);
    layout.crossing = crossingMark(chart.series, layout.geometry, chart.calendar);
    layout.readouts = readouts(chart.series, layout.geometry, chart.whatIfFactor);
}

void layOutCaptions(Layout& layout, const Chart& chart) {
    layout.captions = captions({.series = chart.series,
                                .geometry = layout.geometry,
                                .view = chart.size,
                                .days = layout.days,
                                .wash = layout.wash,
                                .readouts = layout.readouts});
    if (layout.crossing) {
        layout.crossingCaption = crossingCaption(*layout.crossing, layout.geometry, layout.captions);
    }
}

} // namespace

Layout layOut(const Chart& chart) {
    Layout layout{.pixelsPerPoint = chart.pixelsPerPoint, .geometry = geometry(chart.series, chart.size)};
    layOutAxes(layout, chart);
    layOutCurves(layout, chart);
    layOutForecast(layout, chart);
    layOutCaptions(layout, chart);
    return layout;
}

} // namespace HarrowlaneApp::WeekChart
