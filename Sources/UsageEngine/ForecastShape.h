#pragma once

#include <optional>
#include <span>
#include <vector>

#include "UsageEngine/Baseline.h"
#include "UsageEngine/ForecastTuning.h"
#include "UsageModel/Fields.h"
#include "UsageModel/WeekSeries.h"

namespace UsageEngine {

/// The value of a curve at an instant, between its points interpolated, beyond its ends that of the end; 0 of no
/// points. The points must stand by time.
[[nodiscard]] double valueOn(std::span<const UsageModel::SeriesPoint> curve, UsageModel::Date at);

/// The forecast of a window from the top down: the typical week's curve, as high as a typical window, times how hard
/// the user is running against it.
struct ForecastShape {
    /// The share of the window's spending that is expected by each instant, from the window's start every hour to its
    /// end.
    std::vector<UsageModel::SeriesPoint> cumulativeShare;
    /// What a typical window totals, in the caller's unit.
    double typicalTotal = 0.0;
    /// The factor to project with: `rawIntensity`, pulled towards 1 while little of the window has passed.
    double intensity = 0.0;
    /// What was spent over what was expected.
    double rawIntensity = 0.0;
    double coneHigh = 0.0;
    double coneLow = 0.0;
    /// At least a twentieth of the expected spending has passed.
    bool isMeaningful = false;

    struct MakeQuestion {
        const Baseline& baseline;
        const UsageModel::WeeklyNorm& norm;
        /// From log units to the caller's.
        double scale = 1.0;
        TimeSpan window;
        UsageModel::Date now;
        /// Spent so far, in the caller's unit.
        double usedNow = 0.0;
        /// The window's own curve so far, in the caller's unit.
        std::optional<std::vector<UsageModel::SeriesPoint>> actualCumulative;
        /// Seconds; absent for no weighting of what is recent.
        std::optional<double> recencyHalfLife = ForecastTuning::defaultRecencyHalfLife;
        double shrinkage = ForecastTuning::defaultIntensityShrinkage;
    };

    /// Absent where there is nothing to stretch (no typical total, no window) or nothing yet to compare with.
    [[nodiscard]] static std::optional<ForecastShape> make(const MakeQuestion& question);

    /// The expected share at an instant.
    [[nodiscard]] double share(UsageModel::Date at) const { return valueOn(cumulativeShare, at); }

    /// Where a projection starts from.
    struct Standing {
        double usedNow = 0.0;
        /// `share` now.
        double sNow = 0.0;
        /// Instead of `intensity`, for the edges of the cone.
        std::optional<double> k;
    };

    /// What will be spent by an instant; never less than what is.
    [[nodiscard]] double projected(const Standing& standing, UsageModel::Date at) const;

    struct Level {
        double level = 0.0;
        /// The earliest answer.
        UsageModel::Date after;
    };

    /// When the projection first reaches a level. `after` where it has; absent where it does not in this window.
    [[nodiscard]] std::optional<UsageModel::Date> crossing(const Standing& standing, const Level& level) const;

    friend bool operator==(const ForecastShape&, const ForecastShape&) = default;
};

template <UsageModel::FieldsOf<ForecastShape> Self>
void visitFields(Self& self, auto&& visit) {
    visit("cumulativeShare", self.cumulativeShare);
    visit("typicalTotal", self.typicalTotal);
    visit("intensity", self.intensity);
    visit("rawIntensity", self.rawIntensity);
    visit("coneHigh", self.coneHigh);
    visit("coneLow", self.coneLow);
    visit("isMeaningful", self.isMeaningful);
}

} // namespace UsageEngine
