#pragma once

#include <optional>
#include <vector>

#include "UsageEngine/ForecastShape.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/EnumText.h"

namespace UsageEngine {

/// The forecast of a window as the sum of one for each bucket of models, each with its own habits.
struct CompositeForecast {
    enum class Edge { likely, high, low };

    struct Component {
        UsageModel::ModelBucket bucket = UsageModel::ModelBucket::other;
        ForecastShape shape;
        /// The bucket's use so far, in the caller's unit.
        double usedNow = 0.0;
        /// The share of the bucket's curve by now.
        double sNow = 0.0;

        friend bool operator==(const Component&, const Component&) = default;
    };

    /// In the order of the buckets; a bucket that cannot be forecast has none, and its use counts nowhere.
    std::vector<Component> components;

    struct MakeQuestion {
        WeighedTurns turns;
        const UsageModel::Calendar& calendar;
        TimeSpan window;
        UsageModel::Date now;
        /// From log units to the caller's.
        double scale = 1.0;
        std::optional<UsageModel::Date> earliestEvent;
        std::optional<double> recencyHalfLife = ForecastTuning::defaultRecencyHalfLife;
        double shrinkage = ForecastTuning::defaultIntensityShrinkage;
    };

    /// Absent where the window is empty or no bucket can be forecast.
    [[nodiscard]] static std::optional<CompositeForecast> make(const MakeQuestion& question);

    [[nodiscard]] double usedNow() const;
    [[nodiscard]] double typicalTotal() const;
    [[nodiscard]] double expectedSoFar() const;
    /// The components' intensities, weighed by their typical totals; 1 where those are nothing.
    [[nodiscard]] double intensity() const;
    /// As the component with the largest typical total says, the first of equals.
    [[nodiscard]] bool isMeaningful() const;

    /// Which course is meant: an edge of the cone, with the growth from now times `kFactor`.
    struct Course {
        Edge edge = Edge::likely;
        double kFactor = 1.0;
    };

    [[nodiscard]] double projected(UsageModel::Date at, const Course& course) const;
    /// When the projection first reaches a level: `after` where it has by then; absent where it does not.
    [[nodiscard]] std::optional<UsageModel::Date> crossing(const ForecastShape::Level& level,
                                                           const Course& course) const;

    friend bool operator==(const CompositeForecast&, const CompositeForecast&) = default;
};

template <UsageModel::FieldsOf<CompositeForecast::Component> Self>
void visitFields(Self& self, auto&& visit) {
    visit("bucket", self.bucket);
    visit("shape", self.shape);
    visit("usedNow", self.usedNow);
    visit("sNow", self.sNow);
}

template <UsageModel::FieldsOf<CompositeForecast> Self>
void visitFields(Self& self, auto&& visit) {
    visit("components", self.components);
}

} // namespace UsageEngine

template <>
struct UsageModel::EnumNames<UsageEngine::CompositeForecast::Edge> {
    static constexpr std::array<std::string_view, 3> names{"likely", "high", "low"};
};
