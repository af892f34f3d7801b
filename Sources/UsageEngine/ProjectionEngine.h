#pragma once

#include <optional>

#include "UsageEngine/BottomUpForecast.h"
#include "UsageEngine/CompositeForecast.h"
#include "UsageEngine/ForecastShape.h"
#include "UsageModel/UsageSnapshot.h"

/// Whether a limit runs out before its window resets, and when. Levels are fractions of the limit, rates fractions per
/// second; the forecasts must be in that unit.
namespace UsageEngine::ProjectionEngine {

struct Question {
    UsageModel::WindowKind window = UsageModel::WindowKind::session5h;
    double used = 0.0;
    UsageModel::Date now;
    std::optional<UsageModel::Date> resetsAt;
    /// What was burnt lately, what usually is, and what a pessimist expects.
    double recentRate = 0.0;
    double baselineRate = 0.0;
    double fastRate = 0.0;
    /// The best forecast there is decides, the others are not looked at: from the bottom up, then the composite, then
    /// the shape, and without any the rates. None is owned; null for none.
    const BottomUpForecast* bottomUp = nullptr;
    const CompositeForecast* composite = nullptr;
    const ForecastShape* shape = nullptr;
    /// The shape's share now.
    double shareNow = 0.0;
    /// The elapsed part of the window, 0 to 1.
    double elapsedFraction = 0.0;
};

/// Never fails. An absent instant: the limit is out of reach, or cannot be told. `now` as an instant: it is reached.
/// Without a reset the end is what is used now, and nothing breaches. By the rates alone nothing beyond 400 days is
/// told, and nothing breaches in the first twentieth of a window or below a tenth of its limit.
[[nodiscard]] UsageModel::Projection project(const Question& question);

} // namespace UsageEngine::ProjectionEngine
