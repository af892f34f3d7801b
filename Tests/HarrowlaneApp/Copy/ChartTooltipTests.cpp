#include "HarrowlaneApp/Copy/ChartTooltip.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/DrawnWeek.h"

namespace HarrowlaneApp {
namespace {

using ChartTooltip::Row;
using testing::ElementsAre;
using TestSupport::capWeek;
using TestSupport::day;
using TestSupport::drawnWeek;
using TestSupport::monday;
using TestSupport::typicalWeek;
using TestSupport::utc;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;
using WeekChart::CurvePlace;

TEST(Format, FollowsTheScale) {
    EXPECT_EQ(ChartTooltip::format(0.625, capWeek(1.0)), "63%");
    EXPECT_EQ(ChartTooltip::format(0.625, typicalWeek()), "0.62×");
}

TEST(SessionTooltip, TellsTimesMixCostAndCap) {
    const WeekSeries series = drawnWeek();
    const auto content = ChartTooltip::content(series.sessions[0], series, utc());
    EXPECT_EQ(content.header, "Mon 5:00 PM – 10:00 PM");
    EXPECT_EQ(content.mark, "");
    EXPECT_THAT(content.mix, ElementsAre(BucketShare{ChartBucket::fable, 0.6}, BucketShare{ChartBucket::opus, 0.4}));
    EXPECT_THAT(content.rows, ElementsAre(Row{"Cost of week", "13% of the week", true},
                                          Row{"Session cap", "50% of the 5h cap", false}));
    EXPECT_EQ(content.note, std::nullopt);
}

TEST(SessionTooltip, AdmitsWhatIsNotKnown) {
    const WeekSeries series = drawnWeek();
    SessionBar bar = series.sessions[0];
    bar.isCurrent = true;
    bar.capBasis = SessionCapBasis::uncalibrated;
    const auto unknown = ChartTooltip::content(bar, series, utc());
    EXPECT_EQ(unknown.mark, "running");
    EXPECT_EQ(unknown.rows[1], (Row{"Session cap", "unknown", false}));
    EXPECT_EQ(unknown.note, "no gauge — session cap unknown");
    bar.capBasis = SessionCapBasis::learnedScale;
    const auto estimate = ChartTooltip::content(bar, series, utc());
    EXPECT_EQ(estimate.rows[1].value, "≈50% of the 5h cap");
    EXPECT_EQ(estimate.note, "estimated from how much a full cap usually costs");
}

TEST(CurveTooltip, TellsWhatWasUsed) {
    const WeekSeries series = drawnWeek();
    const auto content = ChartTooltip::content(CurvePlace{.at = monday + day}, series, utc());
    EXPECT_EQ(content.header, "Tue 5:00 PM");
    EXPECT_EQ(content.mark, "burned so far");
    EXPECT_THAT(content.rows, ElementsAre(Row{"Used", "20%", true}, Row{"Typical week", "11%", false},
                                          Row{"Week elapsed", "14%", false}));
    EXPECT_EQ(ChartTooltip::content(CurvePlace{.at = series.now}, series, utc()).rows[0], (Row{"Used", "50%", true}));
}

TEST(CurveTooltip, TellsWhatIsForecast) {
    WeekSeries series = drawnWeek();
    const auto content = ChartTooltip::content(CurvePlace{.at = series.windowEnd}, series, utc());
    EXPECT_EQ(content.mark, "forecast");
    EXPECT_THAT(content.rows, ElementsAre(Row{"Projected", "100%", true}, Row{"Typical week", "80%", false},
                                          Row{"Week elapsed", "100%", false}));
    series.forecastLikely.clear();
    series.baseline.clear();
    EXPECT_THAT(ChartTooltip::content(CurvePlace{.at = series.windowEnd}, series, utc()).rows,
                ElementsAre(Row{"Week elapsed", "100%", false}))
        << "no curve is not a curve at zero";
}

TEST(TooltipPlace, IsBesideThePointerInsideTheChart) {
    const ChartTooltip::Frame frame{.height = 100, .view = {.width = 656, .height = 300}};
    EXPECT_EQ(ChartTooltip::place({.x = 100, .y = 150}, frame), (Rect{.x = 114, .y = 54, .width = 210, .height = 100}));
    EXPECT_EQ(ChartTooltip::place({.x = 418, .y = 150}, frame).x, 432.0) << "just fits";
    EXPECT_EQ(ChartTooltip::place({.x = 419, .y = 150}, frame).x, 195.0) << "left of the pointer";
    EXPECT_EQ(ChartTooltip::place({.x = 100, .y = 50}, frame).y, 8.0);
    EXPECT_EQ(ChartTooltip::place({.x = 100, .y = 290}, frame).y, 186.0);
}

TEST(TooltipPlace, InAViewTooSmallForItKeepsItsBeginning) {
    const ChartTooltip::Frame frame{.height = 100, .view = {.width = 200, .height = 80}};
    EXPECT_EQ(ChartTooltip::place({.x = 100, .y = 40}, frame), (Rect{.x = 14, .y = 8, .width = 210, .height = 100}));
}

} // namespace
} // namespace HarrowlaneApp
