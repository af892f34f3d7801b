#include "HarrowlaneApp/Copy/WeekChartHover.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/DrawnWeek.h"
#include "HarrowlaneApp/Copy/WeekChartBars.h"

namespace HarrowlaneApp {
namespace {

using TestSupport::day;
using TestSupport::drawnWeek;
using TestSupport::monday;
using UsageModel::SessionBar;
using UsageModel::WeekSeries;
using WeekChart::CurvePlace;

WeekChart::Geometry geometryOf(const WeekSeries& series) {
    return WeekChart::geometry(series, {.width = 656, .height = 300});
}

std::optional<WeekChart::HoverTarget> targetAt(double x, double y) {
    const WeekSeries series = drawnWeek();
    return WeekChart::hoverTarget({.x = x, .y = y}, series, geometryOf(series));
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

} // namespace
} // namespace HarrowlaneApp
