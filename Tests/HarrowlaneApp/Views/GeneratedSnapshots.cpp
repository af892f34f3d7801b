#include "HarrowlaneApp/Views/GeneratedSnapshots.h"

#include <array>
#include <limits>
#include <random>
#include <string>

namespace ViewTests {

namespace {

using namespace UsageModel;

constexpr Date thursday{1763648100};

class Maker {
public:
    explicit Maker(std::uint64_t seed) : random_(seed) {}

    UsageSnapshot snapshot() {
        UsageSnapshot made;
        made.generatedAt = thursday;
        made.verdict = {.headline = text(), .subtext = text()};
        for (const auto modelClass : allCases<ModelClass>) {
            if (chance(0.7)) made.models.byClass.set(modelClass, number());
        }
        made.calendar = days();
        if (chance(0.9)) made.weekSeries = series();
        if (chance(0.5)) made.recommendation = Recommendation{.title = text(), .detail = text(), .impact = text()};
        return made;
    }

private:
    bool chance(double share) { return std::uniform_real_distribution<>(0.0, 1.0)(random_) < share; }
    double between(double least, double most) { return std::uniform_real_distribution<>(least, most)(random_); }
    std::size_t upTo(std::size_t most) { return std::uniform_int_distribution<std::size_t>(0, most)(random_); }

    /// Mostly a share; at times what no share is.
    double number() {
        static constexpr std::array<double, 10> odd{0.0,
                                                    1.0,
                                                    -1.0,
                                                    1e-300,
                                                    1e300,
                                                    1e9,
                                                    -1e12,
                                                    1e-12,
                                                    std::numeric_limits<double>::infinity(),
                                                    std::numeric_limits<double>::quiet_NaN()};
        return chance(0.85) ? between(0.0, 1.4) : odd.at(upTo(odd.size() - 1));
    }

    std::string text() {
        static const std::array<std::string, 5> samples{"", "Opus dry in ~14h", std::string(300, 'W'),
                                                        "e\u0301\u202e\u200d\U0001F469\u200d\U0001F469 \t\n x",
                                                        "\xff\xfe broken \xc3"};
        return samples.at(upTo(samples.size() - 1));
    }

    std::vector<DayCell> days() {
        std::vector<DayCell> cells;
        const std::size_t count = chance(0.2) ? upTo(1) : upTo(400);
        // Days of 23, 24 or 25 hours, or all at once.
        const double length = std::array{82800.0, 86400.0, 90000.0, 0.0}.at(upTo(3));
        for (std::size_t index = 0; index < count; ++index) {
            cells.push_back({.day = thursday - static_cast<double>(count - index) * length,
                             .weighted = number(),
                             .level = static_cast<std::int64_t>(upTo(8)) - 2});
        }
        if (chance(0.1) && !cells.empty()) cells.front().day = Date{-1e11};
        if (chance(0.05) && !cells.empty()) cells.back().day = Date{1e13};
        return cells;
    }

    Date within(const WeekSeries& week) {
        return chance(0.9) ? week.windowStart + between(-0.1, 1.1) * (week.windowEnd - week.windowStart)
                           : Date{number() * 1e9};
    }

    std::vector<SeriesPoint> curve(const WeekSeries& week) {
        std::vector<SeriesPoint> points(chance(0.3) ? upTo(1) : upTo(200));
        for (std::size_t index = 0; index < points.size(); ++index) {
            const double share = static_cast<double>(index) / static_cast<double>(points.size());
            points[index] = {.t = week.windowStart + share * (week.windowEnd - week.windowStart), .used = number()};
        }
        if (chance(0.1) && !points.empty()) points.front().t = Date{number() * 1e9};
        return points;
    }

    SessionBar session(const WeekSeries& week) {
        SessionBar bar{.start = within(week), .fillFraction = number(), .weeklyCost = number()};
        bar.end = bar.start + (chance(0.9) ? 18000.0 : 0.0);
        for (const auto modelClass : allCases<ModelClass>) {
            if (chance(0.5)) bar.byModelClass.set(modelClass, number());
        }
        bar.isCurrent = chance(0.1);
        bar.capBasis = allCases<SessionCapBasis>[upTo(3)];
        return bar;
    }

    WhatIfSpace space() {
        WhatIfSpace made;
        for (const auto modelClass : allCases<ModelClass>) {
            if (chance(0.7)) made.byFamily.set(modelClass, number());
            if (chance(0.7)) made.familyMultiplier.set(modelClass, number());
        }
        for (const auto effort : allCases<EffortLevel>) {
            if (chance(0.7)) made.effortMix.set(effort, number());
            if (chance(0.7)) made.effortMultiplier.set(effort, number());
            if (chance(0.2)) made.currentEffort = effort;
        }
        made.outputShare = number();
        return made;
    }

    WeekSeries series() {
        WeekSeries week;
        week.windowStart = thursday - 3 * 86400.0;
        // A week, one of seven days of 23 hours, one without length, one that is turned round, forty years.
        week.windowEnd = week.windowStart + std::array{604800.0, 579600.0, 0.0, -86400.0, 1.3e9}.at(upTo(4));
        week.now = within(week);
        week.usedNow = number();
        week.actual = curve(week);
        week.baseline = curve(week);
        week.coneLikelyEnd = {.t = week.windowEnd, .used = number()};
        week.coneFastEnd = {.t = week.windowEnd, .used = number()};
        week.breaches = chance(0.5);
        week.scale = chance(0.5) ? SeriesScale::capFraction : SeriesScale::typicalWeeks;
        week.boundaryEstimated = chance(0.5);
        if (chance(0.7)) week.limitLevel = number();
        week.forecastLikely = curve(week);
        week.forecastHigh = curve(week);
        week.forecastLow = curve(week);
        if (chance(0.5)) week.crossing = within(week);
        week.norm.basis = allCases<WeeklyNorm::Basis>[upTo(4)];
        week.norm.samples.assign(upTo(5), number());
        week.intensity = number();
        week.intensityIsMeaningful = chance(0.5);
        const std::size_t count = chance(0.03) ? 1500 : upTo(40);
        for (std::size_t index = 0; index < count; ++index) week.sessions.push_back(session(week));
        if (chance(0.7)) week.whatIf = space();
        return week;
    }

    std::mt19937_64 random_;
};

} // namespace

UsageModel::UsageSnapshot generatedSnapshot(std::uint64_t seed) {
    return Maker(seed).snapshot();
}

} // namespace ViewTests
