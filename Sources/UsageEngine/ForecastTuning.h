#pragma once

#include <optional>

/// The defaults of the forecasts, in one place.
namespace UsageEngine::ForecastTuning {

/// Whether the bottom-up forecast is in force.
inline constexpr bool useBottomUpForecast = true;
/// How fast past stretches lose their say in how hard the user is running, in seconds: one this old counts 1/e.
inline constexpr std::optional<double> defaultRecencyHalfLife = 86400.0;
inline constexpr double defaultIntensityShrinkage = 0.0;
/// How much the present window's pace counts in a bottom-up forecast.
inline constexpr double defaultRecencyWeight = 1.0;

} // namespace UsageEngine::ForecastTuning
