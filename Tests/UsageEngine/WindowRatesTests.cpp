#include <gtest/gtest.h>

#include "UsageEngine/Scene.h"

namespace UsageEngine {
namespace {

using UsageModel::Date;
using UsageModel::WindowKind;

constexpr Date now = sunday;

/// The session that began `elapsed` seconds ago, read at an instant.
UsageModel::GaugeReading sessionRead(double elapsed, Date captured, std::optional<double> percent) {
    return reading(captured, {{"five_hour", told(percent, now - elapsed + 5 * hour)}});
}

// Rates: a session's likely rate is half its own average and half that of the last hour; the fast one that of the last
// quarter. Seen through where the session ends, and when it is empty.

struct Rates {
    double likely = 0.0;
    double fast = 0.0;
};

/// A session of 100 log units that is to run for a million seconds more, so that both rates reach the limit.
Rates ratesOf(double elapsed, const std::vector<UsageModel::UsageEvent>& events) {
    const Scene scene{.events = events, .gauge = sessionRead(elapsed, now, {})};
    const WindowCompute compute = scene.window(WindowKind::session5h, capOf(100.0));
    const double left = 1 - compute.state.used;
    return {.likely = (compute.projection.endFraction - compute.state.used) / (5 * hour - elapsed),
            .fast = left / (*compute.projection.earliestEmpty - now)};
}

TEST(WindowRates, RatesAreNotDilutedByTheTimeBeforeTheWindow) {
    const Rates rates = ratesOf(600, {spent(now - 300.0, 6), spent(now - 601.0, 50)});
    EXPECT_NEAR(rates.likely, 0.06 / 600, 1e-12);
    EXPECT_NEAR(rates.fast, 0.06 / 600, 1e-9);
}

TEST(WindowRates, RatesLookBackAnHourAndAQuarter) {
    const Rates rates = ratesOf(2 * hour, {spent(now - 1.5 * hour, 18), spent(now - hour, 6), spent(now - 900.0, 12)});
    EXPECT_NEAR(rates.likely, 0.5 * (0.36 / 7200) + 0.5 * (0.18 / 3600), 1e-12) << "the ends of an hour belong to it";
    EXPECT_NEAR(rates.fast, 0.12 / 900, 1e-9);
}

TEST(WindowRates, ATurnOfThisInstantCountsInTheRatesAlone) {
    const Rates rates = ratesOf(2 * hour, {spent(now, 18)});
    EXPECT_NEAR(rates.likely, 0.5 * 0.18 / 3600, 1e-12);
    EXPECT_NEAR(rates.fast, 0.18 / 900, 1e-9);
}

TEST(WindowRates, AWindowOfASecondHasTheRateOfASecond) {
    const Rates rates = ratesOf(0.5, {spent(now - 0.25, 1)});
    EXPECT_NEAR(rates.likely, 0.5 * (0.01 / 0.5) + 0.5 * 0.01, 1e-9);
}

TEST(WindowRates, ASessionThatBeginsNowHasNoPaceYet) {
    const WindowCompute compute =
        Scene{.events = {spent(now, 18)}, .gauge = sessionRead(0, now, 10)}.window(WindowKind::session5h, capOf(100.0));
    EXPECT_NEAR(compute.projection.endFraction, 0.1 + 0.5 * 0.18 * 18000, 1e-9);
    EXPECT_EQ(compute.state.baselineFraction, 0);
    EXPECT_DOUBLE_EQ(compute.state.paceVsBaseline, 0.1 / 1e-6);
}

} // namespace
} // namespace UsageEngine
