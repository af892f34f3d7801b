#pragma once

#include <optional>
#include <span>

#include "UsageEngine/BottomUpForecast.h"
#include "UsageEngine/CompositeForecast.h"
#include "UsageEngine/ForecastShape.h"
#include "UsageEngine/SessionCapScale.h"
#include "UsageEngine/WeekdayProfile.h"
#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/UsageSnapshot.h"

namespace UsageEngine {

/// What a refresh goes by. Refers to what the caller owns.
struct Facts {
    std::span<const UsageModel::UsageEvent> events;
    /// Those of the events.
    WeighedTurns turns;
    std::span<const UsageModel::Anchor> anchors;
    /// Null for none.
    const UsageModel::GaugeReading* gauge = nullptr;
    UsageModel::Date now;
    const UsageModel::CategoryWeights& weights;
    const UsageModel::Calendar& calendar;

    /// Absent without turns.
    [[nodiscard]] std::optional<UsageModel::Date> earliestEvent() const;
};

/// What the gauge says of a window; null where it does not know it, or there is none.
[[nodiscard]] const UsageModel::GaugeWindow* gaugeWindow(const UsageModel::GaugeReading* gauge,
                                                         UsageModel::WindowKind kind);

struct WindowBounds {
    UsageModel::Date start;
    /// After `now`; absent where nothing tells it.
    std::optional<UsageModel::Date> resetsAt;
    /// The edges are inferred, not the gauge's own.
    bool estimated = false;

    friend bool operator==(const WindowBounds&, const WindowBounds&) = default;
};

struct WindowBoundsQuestion {
    UsageModel::WindowKind kind = UsageModel::WindowKind::session5h;
    /// Null for none.
    const UsageModel::GaugeReading* gauge = nullptr;
    UsageModel::Date now;
    std::span<const UsageModel::Anchor> anchors;
};

/// Where a window lies: by the gauge's reset, however old; else by that of the latest anchor that states one; else the
/// window's length up to now, with no reset. A reset that has passed is carried forward by whole windows. One that is
/// not finite, lies more than 400 days ahead, or too far back to be carried forward, counts as absent.
[[nodiscard]] WindowBounds windowBounds(const WindowBoundsQuestion& question);

/// All there is to say of one limit window.
struct WindowCompute {
    UsageModel::WindowState state;
    UsageModel::Projection projection;
    /// The fraction of the window that one log unit is worth.
    double scale = 1.0;
    /// The forecast: at most the first of them that could be made, but for the composite, which has a shape beside it.
    std::optional<BottomUpForecast> bottomUp;
    std::optional<CompositeForecast> composite;
    std::optional<ForecastShape> shape;
    /// The share of the shape's curve by now; 0 without a shape.
    double shareNow = 0.0;
    /// What `bottomUp` was made from; absent without it.
    std::optional<WeekdayProfile> profile;
    UsageModel::WeeklyNorm norm;
    WindowBounds bounds;
    UsageModel::WhatIfSpace whatIf;
};

/// The official percentage is the truth at the instant it was captured, however long ago in this window; the logs add
/// what was spent since. Without one in this window, the logs alone count.
[[nodiscard]] WindowCompute computeWindow(UsageModel::WindowKind kind, const Facts& facts,
                                          const SessionCapScale& capScale);

} // namespace UsageEngine
