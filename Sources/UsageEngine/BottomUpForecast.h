#pragma once

#include <optional>
#include <span>
#include <vector>

#include "UsageEngine/ForecastTuning.h"
#include "UsageEngine/WeekdayProfile.h"

namespace UsageEngine {

/// The forecast of a window from the bottom up: from now on each hour costs what that weekday and hour usually cost,
/// scaled by how the window has gone so far.
struct BottomUpForecast {
    /// Used so far, in the caller's unit.
    double usedNow = 0.0;
    UsageModel::Date now;
    /// The total, from now to the window's end: the likely one, and those of dear and of cheap days.
    std::vector<UsageModel::SeriesPoint> curve;
    std::vector<UsageModel::SeriesPoint> high;
    std::vector<UsageModel::SeriesPoint> low;
    /// What was used over what is usual by now; 1 where nothing is usual.
    double intensity = 1.0;
    bool isMeaningful = false;
    double typicalWeekTotal = 0.0;

    struct MakeQuestion {
        const WeekdayProfile& profile;
        double usedNow = 0.0;
        TimeSpan window;
        UsageModel::Date now;
        const UsageModel::Calendar& calendar;
        double recencyWeight = ForecastTuning::defaultRecencyWeight;
        /// No more than this is spent in five hours; absent or 0 for no bound.
        std::optional<double> sessionCapCost;
    };

    /// Absent where the window is empty or over, or begins now.
    [[nodiscard]] static std::optional<BottomUpForecast> make(const MakeQuestion& question);

    /// Where the likely curve ends.
    [[nodiscard]] double landing() const { return curve.empty() ? usedNow : curve.back().used; }

    /// The likely total at an instant, its growth from now times `kFactor`.
    [[nodiscard]] double projected(UsageModel::Date at, double kFactor = 1.0) const;

    struct Level {
        double level = 0.0;
        /// Points of the curve before it are passed over.
        UsageModel::Date after;
        double kFactor = 1.0;
    };

    /// When that total first reaches a level; absent where it does not.
    [[nodiscard]] std::optional<UsageModel::Date> crossing(const Level& level) const;

    /// The value at an instant along the chord from the curve's first point, not from the point before: so it is meant.
    [[nodiscard]] static double value(std::span<const UsageModel::SeriesPoint> in, UsageModel::Date at,
                                      double fallback);

    friend bool operator==(const BottomUpForecast&, const BottomUpForecast&) = default;
};

template <UsageModel::FieldsOf<BottomUpForecast> Self>
void visitFields(Self& self, auto&& visit) {
    visit("usedNow", self.usedNow);
    visit("now", self.now);
    visit("curve", self.curve);
    visit("high", self.high);
    visit("low", self.low);
    visit("intensity", self.intensity);
    visit("isMeaningful", self.isMeaningful);
    visit("typicalWeekTotal", self.typicalWeekTotal);
}

} // namespace UsageEngine
