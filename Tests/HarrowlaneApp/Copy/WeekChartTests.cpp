#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/WeekChartAxes.h"
#include "HarrowlaneApp/Copy/WeekChartBars.h"
#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
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

constexpr Size dashboard{.width = 656, .height = WeekChart::chartHeight};

SessionBar session(SessionCapBasis basis, double fill) {
    return {.start = monday,
            .end = monday + 5 * hour,
            .fillFraction = fill,
            .byModelClass = {{ModelClass::opus, 1.0}},
            .capBasis = basis};
}

WeekSeries with(WeekSeries series, std::vector<SessionBar> sessions) {
    series.sessions = std::move(sessions);
    return series;
}

TEST(WeekChartGeometry, StacksTwoPanels) {
    const auto geometry = WeekChart::geometry(capWeek(1.0), dashboard);
    EXPECT_EQ(geometry.top.panel, (Rect{.x = 42, .y = 16, .width = 556, .height = 174}));
    EXPECT_EQ(geometry.bottom.panel, (Rect{.x = 42, .y = 204, .width = 556, .height = 72}));
}

TEST(WeekChartGeometry, KeepsTheTopPanelReadableInALowView) {
    const auto geometry = WeekChart::geometry(capWeek(1.0), {.width = 656, .height = 120});
    EXPECT_EQ(geometry.top.panel.height, 80.0);
    EXPECT_EQ(geometry.bottom.panel.y, 110.0);
    EXPECT_EQ(WeekChart::geometry(capWeek(1.0), {}).top.panel.height, 80.0);
}

TEST(WeekChartGeometry, PlacesDatesWithinThePanel) {
    const auto geometry = WeekChart::geometry(capWeek(1.0), dashboard);
    EXPECT_EQ(geometry.x(monday), 42.0);
    EXPECT_EQ(geometry.x(monday + 3.5 * day), 42.0 + 278.0);
    EXPECT_EQ(geometry.x(monday + 7 * day), 598.0);
    EXPECT_EQ(geometry.x(monday - day), 42.0);
    EXPECT_EQ(geometry.x(monday + 8 * day), 598.0);
}

TEST(WeekChartGeometry, PlacesEveryDateOfAnEmptyWindowAtItsLeft) {
    WeekSeries series = capWeek(1.0);
    series.windowEnd = series.windowStart;
    EXPECT_EQ(WeekChart::geometry(series, dashboard).x(monday + day), 42.0);
    series.windowEnd = series.windowStart - day;
    EXPECT_EQ(WeekChart::geometry(series, dashboard).x(monday + day), 42.0);
}

TEST(WeekChartGeometry, ClampsLevelsToTheTopOfTheirAxis) {
    const auto cap = WeekChart::geometry(capWeek(1.0), dashboard);
    EXPECT_EQ(cap.topY(0.0), 190.0);
    EXPECT_DOUBLE_EQ(cap.topY(1.0), 190.0 - 174.0 / 1.25);
    EXPECT_EQ(cap.topY(1.25), 16.0);
    EXPECT_EQ(cap.topY(9.0), 16.0);
    EXPECT_GT(cap.topY(-0.1), 190.0) << "below zero a level is not held";
    const auto typical = WeekChart::geometry(typicalWeek(), dashboard);
    EXPECT_EQ(typical.topY(1.0), 103.0);
    EXPECT_EQ(typical.topY(2.5), 16.0);
}

TEST(WeekChartGeometry, HoldsFillsToTheBottomPanel) {
    const auto geometry =
        WeekChart::geometry(with(capWeek(1.0), {session(SessionCapBasis::liveGauge, 0.5)}), dashboard);
    EXPECT_EQ(geometry.botY(-1.0), 276.0);
    EXPECT_EQ(geometry.botY(0.0), 276.0);
    EXPECT_DOUBLE_EQ(geometry.botY(1.0), 276.0 - 72.0 / 1.15);
    EXPECT_EQ(geometry.botY(5.0), 204.0);
}

TEST(BarAxisTop, IsAboveAFullCapWhereAnyBarIsMeasuredByOne) {
    const auto axisTop = [](const std::vector<SessionBar>& sessions) { return WeekChart::barAxisTop(sessions); };
    EXPECT_EQ(axisTop({}), 1.05);
    EXPECT_EQ(axisTop({session(SessionCapBasis::learnedScale, 0.1), session(SessionCapBasis::uncalibrated, 9.0)}),
              1.15);
    EXPECT_DOUBLE_EQ(
        axisTop({session(SessionCapBasis::uncalibrated, 0.2), session(SessionCapBasis::uncalibrated, 0.4)}), 0.42);
    EXPECT_EQ(axisTop({session(SessionCapBasis::uncalibrated, 0.0)}), 1e-6);
    EXPECT_EQ(axisTop({session(SessionCapBasis::uncalibrated, -3.0)}), 1e-6);
}

TEST(BarAxisTop, LetsTheFullestUncalibratedBarNearlyReachIt) {
    const WeekSeries series = with(typicalWeek(), {session(SessionCapBasis::uncalibrated, 0.4)});
    const auto bars = WeekChart::bars(series, WeekChart::geometry(series, dashboard));
    EXPECT_DOUBLE_EQ(bars[0].rect.height, 72.0 / 1.05);
    EXPECT_EQ(WeekChart::barAxisCaption(series.sessions), "relative");
}

TEST(AccessibilitySummary, TellsTheUseAndWhereItLeads) {
    WeekSeries series = capWeek(1.0);
    series.usedNow = 0.577;
    EXPECT_EQ(WeekChart::accessibilitySummary(series, utc()),
              "This week's usage chart. 58% of the weekly cap used so far.");
    series.crossing = monday + 6 * day + 6 * hour + 780;
    EXPECT_EQ(WeekChart::accessibilitySummary(series, utc()),
              "This week's usage chart. 58% of the weekly cap used so far. Projected to reach the limit Sun 11:13 PM.");
    series = typicalWeek();
    series.usedNow = 0.67;
    EXPECT_EQ(WeekChart::accessibilitySummary(series, utc()),
              "This week's usage chart. 67% of a typical week used so far.");
}

/// The bars of a week with these sessions.
std::vector<WeekChart::Bar> barsOf(std::vector<SessionBar> sessions) {
    const WeekSeries series = with(capWeek(1.0), std::move(sessions));
    return WeekChart::bars(series, WeekChart::geometry(series, dashboard));
}

TEST(WeekChartBars, SpanTheirSession) {
    const auto bar = barsOf({session(SessionCapBasis::liveGauge, 1.0)})[0];
    EXPECT_EQ(bar.rect.x, 42.0);
    EXPECT_DOUBLE_EQ(bar.rect.width, 556.0 * 5 / 168);
    EXPECT_DOUBLE_EQ(bar.rect.height, 72.0 / 1.15);
    EXPECT_DOUBLE_EQ(bar.rect.bottom(), 276.0);
    EXPECT_THAT(bar.segments, ElementsAre(WeekChart::BarSegment{ChartBucket::opus, bar.rect, true}));
}

TEST(WeekChartBars, OfSessionsOutsideTheWindowStayVisible) {
    SessionBar before = session(SessionCapBasis::liveGauge, 1.0);
    before.start = before.start - day;
    before.end = before.end - day;
    EXPECT_EQ(barsOf({before})[0].rect.x, 42.0);
    EXPECT_EQ(barsOf({before})[0].rect.width, 1.5);
    before.end = before.start - day;
    EXPECT_EQ(barsOf({before})[0].rect.width, 1.5) << "one that ends before it begins too";
}

TEST(WeekChartBars, AreNoHigherThanACapThatWasMeasured) {
    const auto heightOf = [](SessionCapBasis basis, double fill) {
        return barsOf({session(basis, fill)})[0].rect.height;
    };
    EXPECT_DOUBLE_EQ(heightOf(SessionCapBasis::liveGauge, 1.1), 72.0 / 1.15);
    EXPECT_DOUBLE_EQ(heightOf(SessionCapBasis::ownCeiling, 1.1), 72.0 / 1.15);
    EXPECT_DOUBLE_EQ(heightOf(SessionCapBasis::learnedScale, 1.1), 72.0 * 1.1 / 1.15);
    EXPECT_DOUBLE_EQ(heightOf(SessionCapBasis::learnedScale, 7.0), 72.0) << "as far as the axis allows";
    EXPECT_EQ(heightOf(SessionCapBasis::learnedScale, -1.0), 0.0);
}

TEST(WeekChartBars, StackTheLargestShareAtTheBottom) {
    SessionBar mixed = session(SessionCapBasis::liveGauge, 1.0);
    mixed.byModelClass = {{ModelClass::opus, 0.3}, {ModelClass::sonnet, 0.5}, {ModelClass::haiku, 0.2}};
    const auto bar = barsOf({mixed})[0];
    ASSERT_THAT(bar.segments, SizeIs(3));
    EXPECT_EQ(bar.segments[0].bucket, ChartBucket::sonnet);
    EXPECT_EQ(bar.segments[1].bucket, ChartBucket::opus);
    EXPECT_EQ(bar.segments[2].bucket, ChartBucket::other);
    const double full = 72.0 / 1.15;
    EXPECT_DOUBLE_EQ(bar.segments[0].rect.bottom(), 276.0);
    EXPECT_DOUBLE_EQ(bar.segments[0].rect.y, 276.0 - 0.5 * full);
    EXPECT_DOUBLE_EQ(bar.segments[1].rect.bottom(), 276.0 - 0.5 * full - 1.5) << "a gap below each but the first";
    EXPECT_DOUBLE_EQ(bar.segments[2].rect.y, bar.rect.y);
    EXPECT_FALSE(bar.segments[1].hasRoundTop);
    EXPECT_TRUE(bar.segments[2].hasRoundTop);
}

TEST(WeekChartBars, LeaveOutPartsTooSmallToSee) {
    SessionBar mixed = session(SessionCapBasis::liveGauge, 1.0);
    // The second part would be 1.9 high, which the gap takes but for 0.4.
    mixed.byModelClass = {{ModelClass::opus, 0.97}, {ModelClass::sonnet, 0.03}};
    const auto bar = barsOf({mixed})[0];
    ASSERT_THAT(bar.segments, SizeIs(1));
    EXPECT_TRUE(bar.segments[0].hasRoundTop) << "the topmost that is drawn";
    EXPECT_THAT(barsOf({session(SessionCapBasis::liveGauge, 0.002)})[0].segments, IsEmpty());
    EXPECT_THAT(barsOf({session(SessionCapBasis::liveGauge, 0.009)})[0].segments, IsEmpty()) << "0.56 points";
    EXPECT_THAT(barsOf({session(SessionCapBasis::liveGauge, 0.011)})[0].segments, SizeIs(1));
}

TEST(WeekChartBars, OfASessionWithoutUseHasNoParts) {
    SessionBar unused = session(SessionCapBasis::uncalibrated, 0.0);
    unused.byModelClass = {{ModelClass::opus, 0.0}};
    EXPECT_THAT(barsOf({unused})[0].segments, IsEmpty());
    EXPECT_THAT(barsOf({}), IsEmpty());
}

TEST(WeekChartBars, MarkTheRunningSession) {
    SessionBar running = session(SessionCapBasis::liveGauge, 0.5);
    running.isCurrent = true;
    const auto bars = barsOf({session(SessionCapBasis::liveGauge, 0.5), running});
    EXPECT_FALSE(bars[0].isCurrent);
    EXPECT_TRUE(bars[1].isCurrent);
}

TEST(DrawnBuckets, AreThoseOfAnyBarInTheirOrder) {
    SessionBar first = session(SessionCapBasis::liveGauge, 1.0);
    first.byModelClass = {{ModelClass::other, 0.999}, {ModelClass::sonnet, 0.001}};
    EXPECT_THAT(WeekChart::drawnBuckets(std::vector{first, session(SessionCapBasis::liveGauge, 1.0)}),
                ElementsAre(ChartBucket::opus, ChartBucket::other));
    EXPECT_THAT(WeekChart::drawnBuckets({}), IsEmpty());
}

TEST(DayColumns, CutTheWeekAtMidnight) {
    const auto geometry = WeekChart::geometry(capWeek(1.0), dashboard);
    const auto columns = WeekChart::dayColumns(geometry, utc());
    ASSERT_THAT(columns, SizeIs(8));
    std::vector<std::string> labels;
    for (const auto& column : columns) labels.push_back(column.label.value_or("-"));
    EXPECT_THAT(labels, ElementsAre("Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun", "Mon"));
    EXPECT_EQ(columns[0].left, 42.0);
    EXPECT_EQ(columns[7].right, 598.0);
    EXPECT_FALSE(columns[0].hasLine);
    EXPECT_TRUE(columns[1].hasLine);
    EXPECT_EQ(columns[1].left, columns[0].right);
    EXPECT_EQ(columns[1].labelPlace, (Point{.x = (columns[1].left + columns[1].right) / 2, .y = 288.0}));
    EXPECT_FALSE(columns[4].isWeekend);
    EXPECT_TRUE(columns[5].isWeekend);
    EXPECT_TRUE(columns[6].isWeekend);
    EXPECT_FALSE(columns[7].isWeekend);
}

TEST(DayColumns, TooNarrowForItsNameHasNone) {
    WeekSeries series = capWeek(1.0);
    series.windowStart = monday + 5 * hour;
    series.windowEnd = series.windowStart + 7 * day;
    const auto columns = WeekChart::dayColumns(WeekChart::geometry(series, dashboard), utc());
    EXPECT_EQ(columns.front().label, std::nullopt) << "two hours";
    EXPECT_EQ(columns[1].label, "Tue");
}

TEST(DayColumns, OfAnEmptyWindowAreNone) {
    WeekSeries series = capWeek(1.0);
    series.windowEnd = series.windowStart;
    EXPECT_THAT(WeekChart::dayColumns(WeekChart::geometry(series, dashboard), utc()), IsEmpty());
}

std::vector<std::string> tickLabels(const WeekSeries& series) {
    std::vector<std::string> labels;
    for (const auto& tick : WeekChart::topTicks(series, WeekChart::geometry(series, dashboard))) {
        labels.push_back(tick.label);
    }
    return labels;
}

TEST(TopTicks, ArePercentsOrMultiples) {
    EXPECT_THAT(tickLabels(capWeek(1.0)), ElementsAre("0%", "25%", "50%", "75%", "100%"));
    EXPECT_THAT(tickLabels(typicalWeek()), ElementsAre("0×", "0.5×", "1.0×", "1.5×", "2.0×"));
    const auto geometry = WeekChart::geometry(typicalWeek(), dashboard);
    EXPECT_EQ(WeekChart::topTicks(typicalWeek(), geometry)[2].y, 103.0);
}

TEST(ReferenceLine, IsTheLimitOrATypicalWeek) {
    WeekSeries series = capWeek(1.0);
    const auto geometry = WeekChart::geometry(series, dashboard);
    EXPECT_EQ(WeekChart::referenceLine(series, geometry),
              (WeekChart::ReferenceLine{.y = geometry.topY(1.0), .name = "WEEKLY LIMIT", .isLimit = true}));
    series.limitLevel = 0.5;
    EXPECT_EQ(WeekChart::referenceLine(series, geometry).y, geometry.topY(0.5));
    series.limitLevel.reset();
    EXPECT_EQ(WeekChart::referenceLine(series, geometry).y, geometry.topY(1.0));
    EXPECT_EQ(WeekChart::referenceLine(typicalWeek(), geometry).name, "A TYPICAL WEEK FOR YOU");
    EXPECT_FALSE(WeekChart::referenceLine(typicalWeek(), geometry).isLimit);
}

TEST(ResetCaption, AsksWhereTheEndIsInferred) {
    WeekSeries series = capWeek(1.0);
    EXPECT_EQ(WeekChart::resetCaption(series), "RESET");
    series.boundaryEstimated = true;
    EXPECT_EQ(WeekChart::resetCaption(series), "RESET?");
    EXPECT_EQ(WeekChart::barAxisCaption(std::vector{session(SessionCapBasis::learnedScale, 1.0)}), "5h cap");
}

} // namespace
} // namespace HarrowlaneApp
