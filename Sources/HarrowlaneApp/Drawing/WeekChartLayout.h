#pragma once

#include <optional>
#include <vector>

#include "HarrowlaneApp/Copy/WeekChartBars.h"
#include "HarrowlaneApp/Copy/WeekChartCurves.h"
#include "HarrowlaneApp/Drawing/WeekChartCaptions.h"

namespace HarrowlaneApp::WeekChart {

/// A week to be drawn.
struct Chart {
    const UsageModel::WeekSeries& series;
    const UsageModel::Calendar& calendar;
    Size size;
    /// Pixels a point of what it will be drawn on.
    double pixelsPerPoint = 1.0;
    /// As the what-if panel has it.
    std::optional<double> whatIfFactor;
};

/// What the chart shows and where: all that is drawn, but for the place under the pointer.
struct Layout {
    double pixelsPerPoint = 1.0;
    Geometry geometry;
    std::vector<DayColumn> days;
    ReferenceLine reference;
    std::vector<Bar> bars;
    /// The height of a full cap; absent where no bar is measured by one.
    std::optional<double> fullCap;
    Trace typical;
    Trace cone;
    Trace likely;
    Trace ghost;
    /// The ghost's end; absent without a ghost.
    std::optional<Point> ghostEnd;
    Trace burned;
    Trace burnedArea;
    std::optional<Wash> wash;
    Trace washArea;
    std::optional<CrossingMark> crossing;
    std::optional<CrossingCaption> crossingCaption;
    std::vector<Readout> readouts;
    Point now;
    std::vector<Caption> captions;
};

/// Measures text, and so needs a QGuiApplication.
[[nodiscard]] Layout layOut(const Chart& chart);

} // namespace HarrowlaneApp::WeekChart
