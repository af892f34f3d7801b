#include "HarrowlaneApp/Copy/ChartTooltip.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/WeekChartBars.h"
#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using ChartTooltip::Row;
using testing::ElementsAre;
using TestSupport::capWeek;
using TestSupport::day;
using TestSupport::hour;
using TestSupport::monday;
using TestSupport::typicalWeek;
using TestSupport::utc;
using UsageModel::ModelClass;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;
using WeekChart::CurvePlace;

/// A week with curves and two sessions, a day apart.
WeekSeries drawnWeek() {
    WeekSeries series = capWeek(1.0);
    series.actual = {{monday, 0.0}, {monday + 2 * day, 0.4}, {series.now, 0.5}};
    series.forecastLikely = {{series.now, 0.5}, {series.windowEnd, 1.0}};
    series.baseline = {{monday, 0.0}, {series.windowEnd, 0.8}};
    for (const double start : {0.0, day}) {
        series.sessions.push_back({.start = monday + start,
                                   .end = monday + start + 5 * hour,
                                   .fillFraction = 0.5,
                                   .weeklyCost = 0.13,
                                   .byModelClass = {{ModelClass::fable, 0.6}, {ModelClass::opus, 0.4}},
                                   .capBasis = SessionCapBasis::liveGauge});
    }
    return series;
}

WeekChart::Geometry geometryOf(const WeekSeries& series) {
    return WeekChart::geometry(series, {.width = 656, .height = 300});
}

std::optional<WeekChart::HoverTarget> targetAt(double x, double y) {
    const WeekSeries series = drawnWeek();
    return WeekChart::hoverTarget({.x = x, .y = y}, series, geometryOf(series));
}

TEST(Format, FollowsTheScale) {
    EXPECT_EQ(ChartTooltip::format(0.625, capWeek(1.0)), "63%");
    EXPECT_EQ(ChartTooltip::format(0.625, typicalWeek()), "0.62×");
}

TEST(Hover, FindsTheSessionWhateverItsHeight) {
    const auto target = targetAt(50, 210);
    ASSERT_TRUE(target);
    EXPECT_EQ(std::get<SessionBar>(*target), drawnWeek().sessions[0]);
    EXPECT_FALSE(targetAt(80, 270)) << "between two sessions";
}

TEST(Hover, ReachesFourPointsAboveAndBelowTheBars) {
    EXPECT_TRUE(targetAt(50, 200));
    EXPECT_FALSE(targetAt(50, 199.9));
    EXPECT_TRUE(targetAt(50, 280));
    EXPECT_FALSE(targetAt(50, 280.1));
}

TEST(Hover, ReachesOnePointBesideABar) {
    const Rect bar = WeekChart::barRect(drawnWeek().sessions[1], geometryOf(drawnWeek()));
    EXPECT_TRUE(targetAt(bar.x - 1, 240));
    EXPECT_FALSE(targetAt(bar.x - 1.1, 240));
    EXPECT_TRUE(targetAt(bar.right() + 1, 240));
    EXPECT_FALSE(targetAt(bar.right() + 1.1, 240));
}

TEST(Hover, TakesTheFirstOfBarsThatOverlap) {
    WeekSeries series = drawnWeek();
    series.sessions[1].start = series.sessions[0].start;
    const auto target = WeekChart::hoverTarget({.x = 43, .y = 240}, series, geometryOf(series));
    EXPECT_EQ(std::get<SessionBar>(*target), series.sessions[0]);
}

TEST(Hover, FindsTheInstantInTheTopPanel) {
    EXPECT_EQ(std::get<CurvePlace>(*targetAt(42, 100)).at, monday);
    EXPECT_EQ(std::get<CurvePlace>(*targetAt(42 + 278, 16)).at, monday + 3.5 * day);
    EXPECT_EQ(std::get<CurvePlace>(*targetAt(598, 190)).at, monday + 7 * day);
}

TEST(Hover, FindsNothingElsewhere) {
    EXPECT_FALSE(targetAt(41, 100)) << "left of the panel";
    EXPECT_FALSE(targetAt(599, 100));
    EXPECT_FALSE(targetAt(100, 15));
    EXPECT_FALSE(targetAt(100, 195)) << "between the panels";
    EXPECT_FALSE(targetAt(100, 299));
}

TEST(Hover, FindsNothingInAWindowWithoutLength) {
    WeekSeries series = drawnWeek();
    series.windowEnd = series.windowStart;
    EXPECT_FALSE(WeekChart::hoverTarget({.x = 42, .y = 100}, series, geometryOf(series)));
    EXPECT_FALSE(WeekChart::hoverTarget({.x = 42, .y = 240}, series, geometryOf(series)));
}

TEST(Hover, SurvivesAViewTooNarrowForAPanel) {
    const WeekSeries series = drawnWeek();
    const auto geometry = WeekChart::geometry(series, {.width = 100, .height = 300});
    EXPECT_EQ(std::get<CurvePlace>(*WeekChart::hoverTarget({.x = 42, .y = 100}, series, geometry)).at, monday);
}

TEST(HoverMark, IsAHairlineWithADotOrAnOutline) {
    const WeekSeries series = drawnWeek();
    const auto geometry = geometryOf(series);
    const Rect bar = WeekChart::barRect(series.sessions[1], geometry);
    EXPECT_EQ(WeekChart::hoverMark(series.sessions[1], series, geometry),
              (WeekChart::HoverMark{.hairline = bar.x + bar.width / 2, .outline = bar}));
    const auto mark = WeekChart::hoverMark(CurvePlace{.at = monday + day}, series, geometry);
    EXPECT_EQ(mark.outline, std::nullopt);
    EXPECT_EQ(mark.dot, (Point{.x = geometry.x(monday + day), .y = geometry.topY(0.2)}));
}

TEST(HoverMark, HasNoDotWithoutACurve) {
    WeekSeries series = drawnWeek();
    series.forecastLikely.clear();
    EXPECT_EQ(WeekChart::hoverMark(CurvePlace{.at = series.windowEnd}, series, geometryOf(series)).dot, std::nullopt);
    EXPECT_EQ(WeekChart::curveValue(series, series.now + 0.5), std::nullopt) << "what is to come is not yet used";
    EXPECT_EQ(WeekChart::curveValue(series, series.now), 0.5);
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
