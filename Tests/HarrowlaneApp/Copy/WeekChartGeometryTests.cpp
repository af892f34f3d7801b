#include "HarrowlaneApp/Copy/WeekChartGeometry.h"

#include <limits>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using TestSupport::capWeek;
using TestSupport::chartSize;
using TestSupport::day;
using TestSupport::hour;
using TestSupport::monday;
using TestSupport::session;
using TestSupport::typicalWeek;
using TestSupport::utc;
using TestSupport::with;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;

TEST(WeekChartGeometry, StacksTwoPanels) {
    const auto geometry = WeekChart::geometry(capWeek(1.0), chartSize);
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
    const auto geometry = WeekChart::geometry(capWeek(1.0), chartSize);
    EXPECT_EQ(geometry.x(monday), 42.0);
    EXPECT_EQ(geometry.x(monday + 3.5 * day), 42.0 + 278.0);
    EXPECT_EQ(geometry.x(monday + 7 * day), 598.0);
    EXPECT_EQ(geometry.x(monday - day), 42.0);
    EXPECT_EQ(geometry.x(monday + 8 * day), 598.0);
}

TEST(WeekChartGeometry, PlacesEveryDateOfAnEmptyWindowAtItsLeft) {
    WeekSeries series = capWeek(1.0);
    series.windowEnd = series.windowStart;
    EXPECT_EQ(WeekChart::geometry(series, chartSize).x(monday + day), 42.0);
    series.windowEnd = series.windowStart - day;
    EXPECT_EQ(WeekChart::geometry(series, chartSize).x(monday + day), 42.0);
}

TEST(WeekChartGeometry, ClampsLevelsToTheTopOfTheirAxis) {
    const auto cap = WeekChart::geometry(capWeek(1.0), chartSize);
    EXPECT_EQ(cap.topY(0.0), 190.0);
    EXPECT_DOUBLE_EQ(cap.topY(1.0), 190.0 - 174.0 / 1.25);
    EXPECT_EQ(cap.topY(1.25), 16.0);
    EXPECT_EQ(cap.topY(9.0), 16.0);
    EXPECT_GT(cap.topY(-0.1), 190.0) << "below zero a level is not held";
    const auto typical = WeekChart::geometry(typicalWeek(), chartSize);
    EXPECT_EQ(typical.topY(1.0), 103.0);
    EXPECT_EQ(typical.topY(2.5), 16.0);
}

TEST(WeekChartGeometry, HoldsWhatIsDrawnToThePanelWhateverItsLevel) {
    const Plot plot = WeekChart::geometry(capWeek(1.0), chartSize).top;
    EXPECT_EQ(plot.heldY(0.7), plot.y(0.7));
    EXPECT_EQ(plot.heldY(-1e12), 190.0);
    EXPECT_EQ(plot.heldY(-std::numeric_limits<double>::infinity()), 190.0);
    EXPECT_EQ(plot.heldY(std::numeric_limits<double>::infinity()), 16.0);
    EXPECT_EQ(plot.heldY(std::numeric_limits<double>::quiet_NaN()), 190.0);
}

TEST(WeekChartGeometry, PutsADateThatIsNoNumberAtTheLeft) {
    const Plot plot = WeekChart::geometry(capWeek(1.0), chartSize).top;
    EXPECT_EQ(plot.x(UsageModel::Date{std::numeric_limits<double>::quiet_NaN()}), 42.0);
}

TEST(WeekChartGeometry, GoesByFillsThatAreNumbers) {
    std::vector<UsageModel::SessionBar> bars(3);
    bars[0].fillFraction = std::numeric_limits<double>::quiet_NaN();
    bars[1].fillFraction = 4.0;
    bars[2].fillFraction = std::numeric_limits<double>::infinity();
    EXPECT_DOUBLE_EQ(WeekChart::barAxisTop(bars), 4.0 * 1.05);
}

TEST(WeekChartGeometry, HoldsFillsToTheBottomPanel) {
    const auto geometry =
        WeekChart::geometry(with(capWeek(1.0), {session(SessionCapBasis::liveGauge, 0.5)}), chartSize);
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

} // namespace
} // namespace HarrowlaneApp
