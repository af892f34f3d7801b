#pragma once

#include <vector>

#include <QString>

#include "HarrowlaneApp/Copy/WeekChartAxes.h"
#include "HarrowlaneApp/Copy/WeekChartForecast.h"
#include "HarrowlaneApp/Drawing/HUDFont.h"
#include "HarrowlaneApp/Drawing/WeekChartStrokes.h"

/// The texts of the week chart, each where no other stands.
namespace HarrowlaneApp::WeekChart {

/// A text in place.
struct Caption {
    enum class Role { tick, barAxis, day, reference, unspent, over, crossing, landing, typical, ghost, now, reset };

    Role role = Role::tick;
    QString text;
    /// On the baseline.
    Point start;
    /// What the letters cover.
    Rect box;
    HUDFont font;
};

/// What the captions are about.
struct Captioned {
    const UsageModel::WeekSeries& series;
    const Geometry& geometry;
    Size view;
    std::vector<DayColumn> days;
    std::optional<Wash> wash;
    std::vector<Readout> readouts;
};

/// All but that of the crossing, which gives way to them.
[[nodiscard]] std::vector<Caption> captions(const Captioned& chart);

/// The caption of the crossing on its plate.
struct CrossingCaption {
    Rect plate;
    Caption caption;
};

/// Left above the mark, or where nothing else stands: higher, right of it, or below the limit.
[[nodiscard]] CrossingCaption crossingCaption(const CrossingMark& mark, const Geometry& geometry,
                                              const std::vector<Caption>& others);

/// The colour of a text. `limitIsKnown` tells whether the reference line is the limit.
[[nodiscard]] QColor captionColor(Caption::Role role, const Palette& palette, Tint tint, bool limitIsKnown);

} // namespace HarrowlaneApp::WeekChart
