#include "HarrowlaneApp/Copy/WeekChartForecast.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using testing::SizeIs;
using TestSupport::capWeek;
using TestSupport::day;
using TestSupport::hour;
using TestSupport::monday;
using TestSupport::typicalWeek;
using TestSupport::utc;
using UsageModel::WeekSeries;
using Kind = WeekChart::Wash::Kind;

WeekChart::Geometry geometryOf(const WeekSeries& series) {
    return WeekChart::geometry(series, {.width = 656, .height = 300});
}

std::optional<WeekChart::Wash> washOf(const WeekSeries& series) {
    return WeekChart::wash(series, geometryOf(series));
}

TEST(Wash, ShowsWhatIsLeftUnspent) {
    const auto wash = washOf(capWeek(0.64));
    ASSERT_TRUE(wash);
    EXPECT_EQ(wash->kind, Kind::unspent);
    EXPECT_EQ(wash->text, "36% unspent");
    EXPECT_EQ(wash->limitY, geometryOf(capWeek(0.64)).topY(1.0));
    EXPECT_EQ(wash->landingY, geometryOf(capWeek(0.64)).topY(0.64));
}

TEST(Wash, ClaimsNoUnspentWeekWithoutANorm) {
    WeekSeries series = capWeek(0.3);
    series.norm.basis = UsageModel::WeeklyNorm::Basis::single;
    EXPECT_FALSE(washOf(series));
}

TEST(Wash, IsAbsentNearTheLimit) {
    EXPECT_FALSE(washOf(capWeek(0.65)));
    EXPECT_FALSE(washOf(capWeek(1.0)));
}

TEST(Wash, ShowsTheExcessAndNamesItWhereThereIsRoom) {
    const auto low = washOf(capWeek(1.053));
    ASSERT_TRUE(low);
    EXPECT_EQ(low->kind, Kind::over);
    EXPECT_EQ(low->text, std::nullopt) << "7 points high";
    const auto high = washOf(capWeek(1.2));
    ASSERT_TRUE(high);
    EXPECT_EQ(high->text, "20% over");
    EXPECT_EQ(high->textPlace.x, 538.0);
    EXPECT_DOUBLE_EQ(high->textPlace.y, (high->limitY + high->landingY) / 2);
    EXPECT_EQ(washOf(capWeek(3.0))->text, "200% over") << "the figure is not held to the axis";
}

TEST(Wash, ComparesWithTheLimitOfTheWeek) {
    WeekSeries series = capWeek(0.6);
    series.limitLevel = 0.5;
    EXPECT_EQ(washOf(series)->kind, Kind::over);
    EXPECT_EQ(washOf(series)->limitY, geometryOf(series).topY(0.5));
}

TEST(Wash, IsAbsentWhereNoLimitIsKnown) {
    WeekSeries series = typicalWeek();
    series.coneLikelyEnd.used = 1.8;
    EXPECT_FALSE(washOf(series));
    series.coneLikelyEnd.used = 0.2;
    EXPECT_FALSE(washOf(series));
}

TEST(CrossingMark, StandsOnTheLimit) {
    WeekSeries series = capWeek(1.05);
    EXPECT_FALSE(WeekChart::crossingMark(series, geometryOf(series), utc()));
    series.crossing = monday + 6 * day + 6 * hour + 780;
    const auto mark = WeekChart::crossingMark(series, geometryOf(series), utc());
    ASSERT_TRUE(mark);
    EXPECT_EQ(mark->caption, "runs out Sun 11:13 PM");
    EXPECT_EQ(mark->centre, (Point{.x = geometryOf(series).x(*series.crossing), .y = geometryOf(series).topY(1.0)}));
}

TEST(CrossingMark, MakesNoClaimWithoutAGauge) {
    WeekSeries series = typicalWeek();
    series.crossing = monday + day;
    EXPECT_FALSE(WeekChart::crossingMark(series, geometryOf(series), utc()));
}

TEST(CaptionPlate, StandsLeftAboveTheMarkInsideThePanel) {
    const auto geometry = geometryOf(capWeek(1.0));
    const Size text{.width = 100, .height = 16};
    const auto plateAt = [&](double x, double y) {
        return WeekChart::captionPlate({.centre = {.x = x, .y = y}}, text, geometry);
    };
    EXPECT_EQ(plateAt(400, 100), (Rect{.x = 277, .y = 73, .width = 114, .height = 19}));
    EXPECT_EQ(plateAt(50, 100).x, 42.0);
    EXPECT_EQ(plateAt(400, 20).y, 16.0);
    EXPECT_EQ(plateAt(640, 100).right(), 598.0);
    EXPECT_EQ(plateAt(400, 300).bottom(), 190.0);
}

TEST(Readouts, TellTheLandingTheTypicalWeekAndTheGhost) {
    using Role = WeekChart::Readout::Role;
    WeekSeries series = capWeek(1.053);
    series.usedNow = 0.577;
    EXPECT_THAT(WeekChart::readouts(series, geometryOf(series), {}), SizeIs(1));
    series.baseline = {{monday, 0.0}, {monday + 7 * day, 0.86}};
    const auto readouts = WeekChart::readouts(series, geometryOf(series), 0.5);
    ASSERT_THAT(readouts, SizeIs(3));
    EXPECT_EQ(readouts[0].role, Role::landing);
    EXPECT_EQ(readouts[0].text, "105%");
    EXPECT_EQ(readouts[0].y, readouts[0].trueY);
    EXPECT_EQ(readouts[1].text, "86%");
    EXPECT_EQ(readouts[2].text, "82%");
    EXPECT_DOUBLE_EQ(readouts[2].y - readouts[1].y, 15.0);
    EXPECT_DOUBLE_EQ(readouts[2].y + readouts[1].y, readouts[2].trueY + readouts[1].trueY);
}

TEST(Readouts, AreMultiplesWithoutAGauge) {
    WeekSeries series = typicalWeek();
    series.coneLikelyEnd.used = 1.22;
    EXPECT_EQ(WeekChart::readouts(series, geometryOf(series), {})[0].text, "1.22×");
}

TEST(Readouts, StayBesideThePanel) {
    WeekSeries series = capWeek(5.0);
    series.baseline = {{monday, 4.0}};
    const auto readouts = WeekChart::readouts(series, geometryOf(series), 1.0);
    EXPECT_EQ(readouts[0].y, 16.0);
    EXPECT_EQ(readouts[1].y, 31.0);
    EXPECT_EQ(readouts[2].y, 46.0);
}

} // namespace
} // namespace HarrowlaneApp
