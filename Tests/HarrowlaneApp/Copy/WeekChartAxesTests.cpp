#include "HarrowlaneApp/Copy/WeekChartAxes.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using TestSupport::capWeek;
using TestSupport::chartSize;
using TestSupport::day;
using TestSupport::hour;
using TestSupport::monday;
using TestSupport::typicalWeek;
using TestSupport::utc;
using UsageModel::WeekSeries;

TEST(DayColumns, CutTheWeekAtMidnight) {
    const auto geometry = WeekChart::geometry(capWeek(1.0), chartSize);
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
    const auto columns = WeekChart::dayColumns(WeekChart::geometry(series, chartSize), utc());
    EXPECT_EQ(columns.front().label, std::nullopt) << "two hours";
    EXPECT_EQ(columns[1].label, "Tue");
}

TEST(DayColumns, OfAnEmptyWindowAreNone) {
    WeekSeries series = capWeek(1.0);
    series.windowEnd = series.windowStart;
    EXPECT_THAT(WeekChart::dayColumns(WeekChart::geometry(series, chartSize), utc()), IsEmpty());
}

std::vector<std::string> tickLabels(const WeekSeries& series) {
    std::vector<std::string> labels;
    for (const auto& tick : WeekChart::topTicks(series, WeekChart::geometry(series, chartSize))) {
        labels.push_back(tick.label);
    }
    return labels;
}

TEST(TopTicks, ArePercentsOrMultiples) {
    EXPECT_THAT(tickLabels(capWeek(1.0)), ElementsAre("0%", "25%", "50%", "75%", "100%"));
    EXPECT_THAT(tickLabels(typicalWeek()), ElementsAre("0×", "0.5×", "1.0×", "1.5×", "2.0×"));
    const auto geometry = WeekChart::geometry(typicalWeek(), chartSize);
    EXPECT_EQ(WeekChart::topTicks(typicalWeek(), geometry)[2].y, 103.0);
}

TEST(ReferenceLine, IsTheLimitOrATypicalWeek) {
    WeekSeries series = capWeek(1.0);
    const auto geometry = WeekChart::geometry(series, chartSize);
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
}

} // namespace
} // namespace HarrowlaneApp
