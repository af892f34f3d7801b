#include "HarrowlaneApp/Samples/PreviewData.h"

#include <algorithm>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Pace.h"
#include "HarrowlaneApp/Copy/WeekCopy.h"
#include "HarrowlaneApp/Samples/PreviewWeek.h"
#include "HarrowlaneApp/Samples/SineNoise.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/Printing.h"

namespace {

using namespace HarrowlaneApp;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::SeriesPoint;
using UsageModel::UsageSnapshot;
using UsageModel::WeekSeries;

/// Thursday 2026-03-05 14:15 UTC.
constexpr Date thursday{1772720100};

TEST(PreviewData, IsTheSameTwiceForTheSameInstant) {
    EXPECT_EQ(PreviewData::overPace(thursday), PreviewData::overPace(thursday));
    EXPECT_NE(PreviewData::overPace(thursday), PreviewData::overPace(thursday + 1.0));
}

TEST(PreviewData, SaysItsTexts) {
    const UsageSnapshot sample = PreviewData::overPace(thursday);
    EXPECT_EQ(sample.verdict.headline, "Opus dry in ~14h");
    EXPECT_EQ(sample.verdict.subtext, "Drops to Sonnet-only, then resets in 3d. Weekly lockout not projected.");
    ASSERT_TRUE(sample.recommendation);
    EXPECT_EQ(sample.recommendation->title, "Route the rest to Sonnet");
    EXPECT_EQ(sample.recommendation->detail,
              "Your Opus week is projected to hit 105% by reset; this lands it around 83%. Lowering effort alone "
              "doesn't get you there.");
    EXPECT_EQ(sample.recommendation->impact, "back inside the cap");
    EXPECT_EQ(sample.recommendation->command, "/model sonnet");
}

TEST(PreviewData, HasItsSessionsAtTheirPlaces) {
    const UsageSnapshot sample = PreviewData::overPace(thursday);
    const std::vector<double> back{252000, 194400, 144000, 100800, 57600, 10800};
    ASSERT_EQ(sample.weekSeries->sessions.size(), back.size());
    ASSERT_EQ(sample.weekSessions.size(), back.size());
    for (std::size_t i = 0; i < back.size(); ++i) {
        const auto& bar = sample.weekSeries->sessions[i];
        EXPECT_EQ(bar.start, thursday - back[i]);
        EXPECT_EQ(bar.duration(), 18000.0);
        EXPECT_EQ(bar.isCurrent, i + 1 == back.size());
        EXPECT_EQ(sample.weekSessions[i].start, bar.start);
        EXPECT_EQ(sample.weekSessions[i].end, bar.end);
    }
}

TEST(PreviewData, RunsOverItsCapAndItsSessionOverItsPace) {
    const UsageSnapshot sample = PreviewData::overPace(thursday);
    ASSERT_EQ(sample.meters.size(), 3U);
    EXPECT_EQ(WeekCopy::standing(*sample.weekSeries), WeekCopy::Standing::over);
    EXPECT_EQ(sample.bindingMeter()->kind, UsageModel::WindowKind::weeklyOpus);
    EXPECT_GT(sample.meters.front().used, sample.meters.front().elapsedFraction);
    for (const auto& meter : sample.meters) EXPECT_TRUE(meter.confidence.anchored);
}

TEST(PreviewData, TellsTheWeekInWordsThatFitTheAdvice) {
    const WeekSeries week = PreviewData::week(thursday);
    const auto content = WeekCopy::content(week, Calendar::utc());
    EXPECT_THAT(content.headline, testing::StartsWith("You run out "));
    EXPECT_THAT(content.detail, testing::HasSubstr("lands you inside the cap"));
    const auto space = *week.whatIf;
    const double landing = week.ghostLanding(space.factor({.model = UsageModel::ModelClass::sonnet}));
    EXPECT_NEAR(landing, 0.83, 0.005);
}

bool neverFalls(const std::vector<SeriesPoint>& curve) {
    return std::ranges::is_sorted(curve, {}, &SeriesPoint::t) && std::ranges::is_sorted(curve, {}, &SeriesPoint::used);
}

TEST(PreviewData, DrawsEveryCurveRisingFromEndToEnd) {
    const WeekSeries week = PreviewData::week(thursday);
    for (const auto* curve :
         {&week.actual, &week.baseline, &week.forecastLikely, &week.forecastHigh, &week.forecastLow}) {
        EXPECT_TRUE(neverFalls(*curve));
    }
    EXPECT_EQ(week.actual.front().t, week.windowStart);
    EXPECT_EQ(week.actual.back().t, week.now);
    EXPECT_NEAR(week.actual.back().used, week.usedNow, 1e-9);
    EXPECT_NEAR(week.forecastLikely.front().used, week.usedNow, 1e-9);
    EXPECT_NEAR(week.forecastLikely.back().t - week.windowEnd, 0.0, 1e-6);
    EXPECT_NEAR(week.baseline.back().used, 0.86, 1e-9);
}

TEST(PreviewData, CrossesTheLimitWhereItsForecastDoes) {
    const WeekSeries week = PreviewData::week(thursday);
    ASSERT_TRUE(week.crossing);
    const auto below = std::ranges::find_if(week.forecastLikely, [&](auto& point) { return point.t > *week.crossing; });
    ASSERT_NE(below, week.forecastLikely.begin());
    EXPECT_GE(below->used, 1.0);
    EXPECT_LE((below - 1)->used, 1.0);
}

TEST(PreviewData, AddsUpItsSessionsToWhatIsUsed) {
    const WeekSeries week = PreviewData::week(thursday);
    double cost = 0.0;
    for (const auto& bar : week.sessions) {
        cost += bar.weeklyCost;
        EXPECT_NEAR(sumOfValues(bar.byModelClass), 1.0, 1e-9);
    }
    EXPECT_NEAR(cost, week.usedNow, 1e-9);
}

TEST(PreviewData, ShowsEveryLevelOfTheCalendarAndADayWithoutWork) {
    const auto days = PreviewData::overPace(thursday).calendar;
    for (std::int64_t level = 0; level <= 4; ++level) {
        EXPECT_TRUE(std::ranges::any_of(days, [&](const auto& day) { return day.level == level; })) << level;
    }
    EXPECT_TRUE(std::ranges::all_of(days, [](const auto& day) { return day.level >= 0 && day.level <= 4; }));
    EXPECT_EQ(days.back().day, thursday);
}

TEST(SineNoise, LiesBetweenZeroAndOneAndStaysTheSame) {
    for (int place = -1000; place < 1000; ++place) {
        EXPECT_GE(sineNoise(place), 0.0);
        EXPECT_LT(sineNoise(place), 1.0);
    }
    EXPECT_EQ(sineNoise(7.0), sineNoise(7.0));
    EXPECT_NEAR(sineNoise(1.0), 0.9217, 0.0001);
}

} // namespace
