#include "HarrowlaneApp/Copy/WeekChartCurves.h"

#include <cmath>
#include <map>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace {

using namespace HarrowlaneApp::WeekChart;
using HarrowlaneApp::Plot;
using HarrowlaneApp::Point;
using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::day;
using TestSupport::monday;
using UsageModel::SeriesPoint;

/// A point a pixel at scale 1, a hundred of them.
const Plot plot{.panel = {.x = 0, .y = 0, .width = 100, .height = 100},
                .windowStart = monday,
                .windowEnd = monday + 100.0,
                .axisTop = 1.0};

std::map<double, int> pointsByColumn(const Trace& line, double pixelsPerPoint) {
    std::map<double, int> count;
    for (const Point& point : line) ++count[std::floor(point.x * pixelsPerPoint)];
    return count;
}

std::vector<SeriesPoint> risingCurve(int points) {
    std::vector<SeriesPoint> curve;
    for (int i = 0; i <= points; ++i) {
        const double share = static_cast<double>(i) / points;
        curve.push_back({.t = monday + 100.0 * share, .used = share});
    }
    return curve;
}

TEST(WeekChartCurves, KeepsEveryPointThatHasAColumnOfItsOwn) {
    const std::vector<SeriesPoint> curve{{monday, 0.0}, {monday + 10.0, 0.5}, {monday + 100.0, 1.0}};
    EXPECT_THAT(trace(curve, plot, 1.0), ElementsAre(Point{0, 100}, Point{10, 50}, Point{100, 0}));
}

TEST(WeekChartCurves, HasAtMostTwoPointsAColumnOfPixelsAtAnyScale) {
    for (const double scale : {0.5, 1.0, 1.25, 2.0, 3.0}) {
        const Trace line = trace(risingCurve(100'000), plot, scale);
        EXPECT_EQ(line.front(), (Point{0, 100}));
        EXPECT_EQ(line.back(), (Point{100, 0}));
        for (const auto& [column, count] : pointsByColumn(line, scale))
            EXPECT_LE(count, 2) << column << " at " << scale;
    }
}

/// A third of the way up a sine.
std::vector<SeriesPoint> wavyCurve(int points) {
    std::vector<SeriesPoint> curve;
    for (int i = 0; i <= points; ++i) {
        const double share = static_cast<double>(i) / points;
        curve.push_back({.t = monday + 100.0 * share, .used = share - 0.1 * std::sin(20.0 * share)});
    }
    return curve;
}

TEST(WeekChartCurves, KeepsOfAStraightLineItsEnds) {
    EXPECT_THAT(trace(risingCurve(100'000), plot, 2.0), testing::SizeIs(2));
    EXPECT_THAT(trace(risingCurve(7), plot, 2.0), testing::SizeIs(2));
}

TEST(WeekChartCurves, StaysWithinATenthOfAPixelOfEveryPoint) {
    for (const int count : {50, 1000, 20'000}) {
        for (const double scale : {1.0, 2.0}) {
            const auto curve = wavyCurve(count);
            const Trace line = trace(curve, plot, scale);
            std::size_t next = 1;
            double furthest = 0.0;
            for (const SeriesPoint& point : curve) {
                const Point place{.x = plot.x(point.t), .y = plot.heldY(point.used)};
                while (next + 1 < line.size() && line[next].x < place.x) ++next;
                const Point& from = line[next - 1];
                const double slope = (line[next].y - from.y) / (line[next].x - from.x);
                furthest = std::max(furthest, std::abs(from.y + slope * (place.x - from.x) - place.y));
            }
            // Within a column the curve itself moves by as much again.
            EXPECT_LE(furthest, 0.2 / scale) << count << " at " << scale;
            EXPECT_LT(line.size(), 160U) << count << " at " << scale;
        }
    }
}

TEST(WeekChartCurves, KeepsAStepOfNoWidth) {
    const std::vector<SeriesPoint> curve{
        {monday, 0.1}, {monday + 50.0, 0.1}, {monday + 50.0, 0.6}, {monday + 100.0, 0.6}};
    const Trace line = trace(curve, plot, 1.0);
    ASSERT_EQ(line.size(), 4U);
    EXPECT_EQ(line[1].x, line[2].x);
    EXPECT_NEAR(line[2].y, 40.0, 1e-9);
}

TEST(WeekChartCurves, KeepsThePeakAndTheValleyOfAColumnInTheirOrder) {
    const std::vector<SeriesPoint> curve{
        {monday + 5.0, 0.5}, {monday + 5.2, 0.9}, {monday + 5.4, 0.1}, {monday + 5.8, 0.4}, {monday + 6.0, 0.5}};
    const Trace line = trace(curve, plot, 1.0);
    ASSERT_EQ(line.size(), 3U);
    EXPECT_NEAR(line[0].y, 10.0, 1e-9);
    EXPECT_NEAR(line[1].y, 90.0, 1e-9);
    EXPECT_NEAR(line[2].y, 50.0, 1e-9);
}

TEST(WeekChartCurves, ReachesAsFarAsAFlatPieceDoes) {
    const std::vector<SeriesPoint> curve{{monday + 5.1, 0.5}, {monday + 5.5, 0.5}, {monday + 5.9, 0.5}};
    const Trace line = trace(curve, plot, 1.0);
    ASSERT_EQ(line.size(), 2U);
    EXPECT_NEAR(line[0].x, 5.1, 1e-6);
    EXPECT_NEAR(line[1].x, 5.9, 1e-6);
}

TEST(WeekChartCurves, StaysBelowTheAxisTopAndWithinTheWindow) {
    const std::vector<SeriesPoint> curve{{monday - day, 0.2}, {monday + day, 4.0}};
    EXPECT_THAT(trace(curve, plot, 1.0), ElementsAre(Point{0, 80}, Point{100, 0}));
}

TEST(WeekChartCurves, AreNothingWithoutPoints) {
    EXPECT_THAT(trace({}, plot, 2.0), IsEmpty());
    EXPECT_THAT(areaTo(3.0, {}), IsEmpty());
    EXPECT_THAT(areaBetween({}, {{0, 0}, {1, 1}}), IsEmpty());
    EXPECT_THAT(areaBetween({{0, 0}, {1, 1}}, {}), IsEmpty());
    EXPECT_THAT(washArea({}, {}), IsEmpty());
}

TEST(WeekChartCurves, CloseTheirAreasDownToALevelAndAlongEachOther) {
    EXPECT_THAT(areaTo(9.0, {{0, 5}, {4, 3}}), ElementsAre(Point{0, 5}, Point{4, 3}, Point{4, 9}, Point{0, 9}));
    EXPECT_THAT(areaBetween({{0, 1}, {4, 0}}, {{0, 5}, {4, 6}}),
                ElementsAre(Point{0, 1}, Point{4, 0}, Point{4, 6}, Point{0, 5}));
}

TEST(WeekChartCurves, WashWhatLiesAboveTheLimitFromTheCrossingOn) {
    const Wash wash{.kind = Wash::Kind::over, .limitY = 50.0};
    EXPECT_THAT(washArea(wash, {{0, 70}, {10, 30}, {20, 20}}),
                ElementsAre(Point{0, 50}, Point{5, 50}, Point{10, 30}, Point{20, 20}, Point{20, 50}, Point{0, 50}));
}

TEST(WeekChartCurves, WashWhatStaysFreeBelowTheLimit) {
    const Wash wash{.kind = Wash::Kind::unspent, .limitY = 50.0};
    EXPECT_THAT(washArea(wash, {{0, 80}, {10, 70}}),
                ElementsAre(Point{0, 80}, Point{10, 70}, Point{10, 50}, Point{0, 50}));
}

TEST(WeekChartCurves, DoNotMeetALevelThatTheyOnlyTouch) {
    const Wash wash{.kind = Wash::Kind::over, .limitY = 50.0};
    EXPECT_THAT(washArea(wash, {{0, 50}, {10, 40}}),
                ElementsAre(Point{0, 50}, Point{10, 40}, Point{10, 50}, Point{0, 50}));
}

} // namespace
