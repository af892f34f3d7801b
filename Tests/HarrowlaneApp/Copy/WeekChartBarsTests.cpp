#include "HarrowlaneApp/Copy/WeekChartBars.h"

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
using TestSupport::session;
using TestSupport::typicalWeek;
using TestSupport::with;
using UsageModel::ModelClass;
using UsageModel::SessionBar;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;

/// The bars of a week with these sessions.
std::vector<WeekChart::Bar> barsOf(std::vector<SessionBar> sessions) {
    const WeekSeries series = with(capWeek(1.0), std::move(sessions));
    return WeekChart::bars(series, WeekChart::geometry(series, chartSize));
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

TEST(WeekChartBars, OfAWeekWithoutCapsNearlyReachTheTop) {
    const WeekSeries series = with(typicalWeek(), {session(SessionCapBasis::uncalibrated, 0.4)});
    const auto bars = WeekChart::bars(series, WeekChart::geometry(series, chartSize));
    EXPECT_DOUBLE_EQ(bars[0].rect.height, 72.0 / 1.05);
}

TEST(BarAxisCaption, TellsWhetherBarsAreSharesOfACap) {
    EXPECT_EQ(WeekChart::barAxisCaption({}), "relative");
    EXPECT_EQ(WeekChart::barAxisCaption(std::vector{session(SessionCapBasis::uncalibrated, 1.0)}), "relative");
    EXPECT_EQ(WeekChart::barAxisCaption(std::vector{session(SessionCapBasis::uncalibrated, 1.0),
                                                    session(SessionCapBasis::learnedScale, 1.0)}),
              "5h cap");
}

} // namespace
} // namespace HarrowlaneApp
