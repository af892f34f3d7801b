#include "HarrowlaneApp/Samples/ChartScenarios.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "UsageModel/Printing.h"

namespace {

using namespace HarrowlaneApp;
using testing::HasSubstr;
using testing::StartsWith;
using UsageModel::Calendar;
using UsageModel::SeriesScale;
using UsageModel::UsageSnapshot;
using UsageModel::WeekSeries;

/// The scenarios must tell their stories wherever the user is.
class ChartScenarios : public testing::TestWithParam<const char*> {
protected:
    [[nodiscard]] WeekSeries week(std::size_t index) const {
        const auto series = DumpChart::scenarios().at(index).make(calendar).weekSeries;
        EXPECT_TRUE(series.has_value());
        return series.value_or(WeekSeries());
    }
    [[nodiscard]] std::string headline(const WeekSeries& series) const {
        return WeekCopy::content(series, calendar).headline;
    }

    Calendar calendar = *Calendar::inZone(GetParam());
};

constexpr double weekSeconds = 604800.0;

TEST_P(ChartScenarios, HaveTheirNamesInOrder) {
    std::vector<std::string_view> names;
    for (const auto& scenario : DumpChart::scenarios()) names.push_back(scenario.name);
    EXPECT_THAT(names, testing::ElementsAre("over", "track", "under", "nogauge"));
}

TEST_P(ChartScenarios, StandWhereTheirWeekIsSaidToBe) {
    const std::vector<double> gone{362880, 272160, 272160, 272160};
    for (std::size_t i = 0; i < gone.size(); ++i) {
        const WeekSeries series = week(i);
        EXPECT_EQ(series.now, DumpChart::now(calendar));
        EXPECT_EQ(series.now - series.windowStart, gone[i]);
        EXPECT_EQ(series.windowEnd - series.windowStart, weekSeconds);
        EXPECT_FALSE(series.sessions.empty());
        EXPECT_FALSE(series.forecastLikely.empty());
        EXPECT_GE(series.sessions.front().start, series.windowStart);
        EXPECT_TRUE(series.sessions.back().isCurrent);
    }
}

TEST_P(ChartScenarios, RunOverTheCap) {
    const WeekSeries series = week(0);
    EXPECT_THAT(headline(series), StartsWith("You run out "));
    EXPECT_EQ(WeekCopy::standing(series), WeekCopy::Standing::over);
    EXPECT_TRUE(series.crossing);
}

TEST_P(ChartScenarios, FinishOnTrack) {
    const WeekSeries series = week(1);
    EXPECT_THAT(headline(series), StartsWith("On track to finish"));
    EXPECT_EQ(WeekCopy::standing(series), WeekCopy::Standing::comfortable);
    EXPECT_FALSE(series.crossing);
}

TEST_P(ChartScenarios, LeaveMuchUnspent) {
    const WeekSeries series = week(2);
    EXPECT_THAT(headline(series), HasSubstr("unspent"));
    EXPECT_TRUE(WeekCopy::hasRoomToSpare(series));
}

TEST_P(ChartScenarios, SpeakOfATypicalWeekWithoutAGauge) {
    const WeekSeries series = week(3);
    EXPECT_EQ(series.scale, SeriesScale::typicalWeeks);
    EXPECT_FALSE(series.limitLevel);
    EXPECT_TRUE(series.boundaryEstimated);
    EXPECT_THAT(headline(series), HasSubstr("a typical week"));
}

TEST_P(ChartScenarios, AreTheSameTwice) {
    for (const auto& scenario : DumpChart::scenarios()) EXPECT_EQ(scenario.make(calendar), scenario.make(calendar));
}

INSTANTIATE_TEST_SUITE_P(Zones, ChartScenarios,
                         testing::Values("UTC", "America/Los_Angeles", "Asia/Kolkata", "Pacific/Auckland",
                                         "Europe/Berlin"));

TEST(WeeklyGauge, SpeaksOfTheWeekAlone) {
    const UsageModel::GaugeReading reading =
        DumpChart::weeklyGauge({.pct = 58.0, .resetsAt = UsageModel::Date{200}, .capturedAt = UsageModel::Date{100}});
    EXPECT_EQ(reading.capturedAt, 100.0);
    ASSERT_EQ(reading.windows.size(), 1U);
    EXPECT_EQ(reading.windows.at("seven_day").usedPercentage, 58.0);
    EXPECT_EQ(reading.windows.at("seven_day").resetsAt, 200.0);
}

} // namespace
