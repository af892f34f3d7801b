#include "HarrowlaneApp/Copy/WeekMiniChart.h"

#include <limits>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using TestSupport::capWeek;
using TestSupport::typicalWeek;
using UsageModel::WeekSeries;

TEST(WeekMiniChart, HasRoomAboveTheLimit) {
    WeekSeries series = capWeek(0.5);
    series.usedNow = 0.575;
    const auto layout = WeekMiniChart::layOut(series, {.width = 288, .height = 76});
    EXPECT_EQ(layout.plot.panel, (Rect{.x = 0, .y = 6, .width = 234, .height = 66}));
    EXPECT_EQ(layout.plot.axisTop, 1.15);
    EXPECT_DOUBLE_EQ(layout.limitY.value(), 72.0 - 66.0 / 1.15);
    EXPECT_DOUBLE_EQ(layout.now.x, 0.41 * 234);
    EXPECT_DOUBLE_EQ(layout.now.y, 39.0);
    EXPECT_EQ(layout.landingText, "50%");
}

TEST(WeekMiniChart, LeavesOutALimitThatDoesNotFit) {
    WeekSeries series = capWeek(3.0);
    series.limitLevel = 1.2;
    const auto layout = WeekMiniChart::layOut(series, {.width = 288, .height = 76});
    EXPECT_EQ(layout.limitY, std::nullopt);
    EXPECT_EQ(layout.landingText, "300%");
    EXPECT_EQ(layout.landingY, 11.0) << "kept below the top";
}

TEST(WeekMiniChart, StretchesToLevelsThatAreNumbers) {
    WeekSeries series = typicalWeek();
    series.usedNow = std::numeric_limits<double>::quiet_NaN();
    series.coneLikelyEnd.used = 1.5;
    series.forecastHigh = {{series.now, std::numeric_limits<double>::infinity()}};
    EXPECT_DOUBLE_EQ(WeekMiniChart::layOut(series, {.width = 288, .height = 76}).plot.axisTop, 1.59);
}

TEST(WeekMiniChart, StretchesToTheLargestLevelWithoutAGauge) {
    WeekSeries series = typicalWeek();
    series.coneLikelyEnd.used = 1.22;
    series.forecastHigh = {{series.now, 0.7}, {series.windowEnd, 1.5}};
    const auto layout = WeekMiniChart::layOut(series, {.width = 288, .height = 76});
    EXPECT_DOUBLE_EQ(layout.plot.axisTop, 1.59);
    EXPECT_EQ(layout.limitY, std::nullopt);
    EXPECT_EQ(layout.landingText, "122%");
}

TEST(WeekMiniChart, OfAnUnusedWeekLiesOnItsFloor) {
    const auto layout = WeekMiniChart::layOut(typicalWeek(), {.width = 288, .height = 76});
    EXPECT_EQ(layout.now.y, 72.0);
    EXPECT_GT(layout.plot.axisTop, 0.0);
}

} // namespace
} // namespace HarrowlaneApp
