#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "UsageEngine/WeighedTurns.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"
#include "UsageModel/WeekSeries.h"

namespace UsageEngine {

/// What each day of the week usually costs, and how a day's spending falls across its hours.
struct WeekdayProfile {
    static constexpr std::size_t daysOfWeek = 7;
    static constexpr std::size_t hoursOfDay = 24;

    /// Which of a weekday's totals is meant.
    enum class Quantile { low, typical, high };

    /// Median, lower and upper quartile of each weekday's totals; Sunday comes first.
    std::vector<double> dayLevel = std::vector<double>(daysOfWeek, 0.0);
    std::vector<double> dayLow = std::vector<double>(daysOfWeek, 0.0);
    std::vector<double> dayHigh = std::vector<double>(daysOfWeek, 0.0);
    /// The share of a day's spending in each local hour.
    std::vector<double> hourShare = std::vector<double>(hoursOfDay, 1.0 / static_cast<double>(hoursOfDay));
    /// How many days were sampled for each weekday.
    std::vector<std::int64_t> sampleCount = std::vector<std::int64_t>(daysOfWeek, 0);

    /// Nothing learnt: no totals, a flat day.
    [[nodiscard]] static WeekdayProfile empty() { return {}; }

    struct LearnQuestion {
        WeighedTurns turns;
        const UsageModel::Calendar& calendar;
        /// The day that holds it is not over, and so is never a sample.
        UsageModel::Date through;
        int lookbackWeeks = 0;
        /// Factor on every weight.
        double scale = 1.0;
    };

    /// Samples every whole day since the first turn, or since as many weeks before; an idle day is a sample of nothing.
    [[nodiscard]] static WeekdayProfile learn(const LearnQuestion& question);

    struct Expectation {
        TimeSpan span;
        Quantile quantile = Quantile::typical;
        const UsageModel::Calendar& calendar;
    };

    /// What is usually spent over a span, each day at its weekday's level. 0 where the span is empty.
    [[nodiscard]] double expectedBurn(const Expectation& expectation) const;
    /// The same as a curve, every hour from the beginning of the span and at its end. One point where it is empty.
    [[nodiscard]] std::vector<UsageModel::SeriesPoint> cumulative(const Expectation& expectation) const;

    /// The sum of the seven levels.
    [[nodiscard]] double typicalWeekTotal() const;
    /// Whether any weekday was sampled twice.
    [[nodiscard]] bool isUsable() const;

    friend bool operator==(const WeekdayProfile&, const WeekdayProfile&) = default;

private:
    [[nodiscard]] double level(std::size_t weekday, Quantile quantile) const;
    [[nodiscard]] double daySharePart(const TimeSpan& span, const UsageModel::Calendar& calendar) const;
};

template <UsageModel::FieldsOf<WeekdayProfile> Self>
void visitFields(Self& self, auto&& visit) {
    visit("dayLevel", self.dayLevel);
    visit("dayLow", self.dayLow);
    visit("dayHigh", self.dayHigh);
    visit("hourShare", self.hourShare);
    visit("sampleCount", self.sampleCount);
}

} // namespace UsageEngine

template <>
struct UsageModel::EnumNames<UsageEngine::WeekdayProfile::Quantile> {
    static constexpr std::array<std::string_view, 3> names{"low", "typical", "high"};
};
