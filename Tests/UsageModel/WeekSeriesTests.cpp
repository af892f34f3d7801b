#include "UsageModel/WeekSeries.h"

#include <limits>

#include <gmock/gmock.h>

#include "UsageModel/Printing.h"
#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Readout = SessionCapReadout;
using Case = SessionCapReadout::Case;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct ReadoutRow : TestSupport::Named {
    SessionCapBasis basis;
    double fill;
    Readout expected;
};

class CapReadoutTest : public testing::TestWithParam<ReadoutRow> {};

TEST_P(CapReadoutTest, FollowsTheBasis) {
    const SessionBar bar{.fillFraction = GetParam().fill, .capBasis = GetParam().basis};
    EXPECT_EQ(bar.capReadout(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Bars, CapReadoutTest,
    testing::Values(
        ReadoutRow{"own ceiling below the cap", SessionCapBasis::ownCeiling, 0.7, {Case::measured, 0.7}},
        ReadoutRow{"own ceiling at the cap", SessionCapBasis::ownCeiling, 1.0, {Case::measured, 1.0}},
        ReadoutRow{"own ceiling above the cap", SessionCapBasis::ownCeiling, 1.2, {Case::measured, 1.0}},
        ReadoutRow{"gauge below the cap", SessionCapBasis::liveGauge, 0.25, {Case::measured, 0.25}},
        ReadoutRow{"gauge above the cap", SessionCapBasis::liveGauge, 1.3, {Case::measured, 1.0}},
        ReadoutRow{"gauge below zero", SessionCapBasis::liveGauge, -0.1, {Case::measured, -0.1}},
        ReadoutRow{"learnt below the cap", SessionCapBasis::learnedScale, 0.5, {Case::estimated, 0.5}},
        ReadoutRow{"learnt a little above the cap", SessionCapBasis::learnedScale, 1.05, {Case::estimated, 1.05}},
        ReadoutRow{"learnt just beyond", SessionCapBasis::learnedScale, std::nextafter(1.05, 2), {Case::atOrOverCap}},
        ReadoutRow{"learnt well above the cap", SessionCapBasis::learnedScale, 1.06, {Case::atOrOverCap}},
        ReadoutRow{"no basis", SessionCapBasis::uncalibrated, 0.5, {Case::unknown}},
        ReadoutRow{"no basis and a full bar", SessionCapBasis::uncalibrated, 2.0, {Case::unknown}}),
    TestSupport::rowName);

TEST(SessionBar, LastsFromStartToEnd) {
    EXPECT_EQ((SessionBar{.start = Date{100}, .end = Date{18100}}).duration(), 18000.0);
    EXPECT_EQ(SessionBar{}.duration(), 0.0);
}

TEST(SessionCapBasis, HasItsTexts) {
    EXPECT_THAT(EnumNames<SessionCapBasis>::names,
                ElementsAre("ownCeiling", "liveGauge", "learnedScale", "uncalibrated"));
    EXPECT_EQ(text(SessionCapBasis::learnedScale), "learnedScale");
}

TEST(SeriesScale, HasItsTexts) {
    EXPECT_EQ(text(SeriesScale::capFraction), "capFraction");
    EXPECT_EQ(text(SeriesScale::typicalWeeks), "typicalWeeks");
}

struct BasisRow : TestSupport::Named {
    WeeklyNorm::Basis basis;
    std::string_view curveLabel;
    bool supportsUnderUseClaims;
    bool hasTypicalCurve;
};

class NormBasisTest : public testing::TestWithParam<BasisRow> {};

TEST_P(NormBasisTest, DecidesWhatMayBeSaid) {
    const BasisRow& row = GetParam();
    const WeeklyNorm norm{.basis = row.basis};
    EXPECT_EQ(text(row.basis), row.name);
    EXPECT_EQ(curveLabel(row.basis), row.curveLabel);
    EXPECT_EQ(norm.supportsUnderUseClaims(), row.supportsUnderUseClaims);
    EXPECT_EQ(norm.hasTypicalCurve(), row.hasTypicalCurve);
}

INSTANTIATE_TEST_SUITE_P(
    Bases, NormBasisTest,
    testing::Values(BasisRow{"median", WeeklyNorm::Basis::median, "a typical week for you", true, true},
                    BasisRow{"mean", WeeklyNorm::Basis::mean, "your last two weeks", true, true},
                    BasisRow{"single", WeeklyNorm::Basis::single, "last week", false, true},
                    BasisRow{"currentPace", WeeklyNorm::Basis::currentPace, "your current pace", false, false},
                    BasisRow{"none", WeeklyNorm::Basis::none, "", false, false}),
    TestSupport::rowName);

TEST(WeeklyNorm, EmptyKnowsNothingButAWideCone) {
    const WeeklyNorm norm = WeeklyNorm::empty();
    EXPECT_EQ(norm.rawTypicalTotal, 0.0);
    EXPECT_THAT(norm.samples, IsEmpty());
    EXPECT_EQ(norm.basis, WeeklyNorm::Basis::none);
    EXPECT_EQ(norm.coneHigh, 1.1);
    EXPECT_EQ(norm.coneLow, 0.74);
}

TEST(WeeklyNorm, CountsItsSamplesAndScalesItsTotal) {
    const WeeklyNorm norm{.rawTypicalTotal = 8.0, .samples = {7.0, 8.0, 9.0}};
    EXPECT_EQ(norm.sampleCount(), 3U);
    EXPECT_EQ(norm.scaled(0.25), 2.0);
    EXPECT_EQ(WeeklyNorm::empty().sampleCount(), 0U);
    EXPECT_EQ(WeeklyNorm::empty().scaled(5.0), 0.0);
}

WeekSeries week(double start, double end) {
    WeekSeries series;
    series.windowStart = Date{start};
    series.windowEnd = Date{end};
    return series;
}

TEST(WeekSeriesX, IsTheShareOfTheWindowHeldToItsEdges) {
    const WeekSeries series = week(1000, 2000);
    EXPECT_EQ(series.x(Date{1000}), 0.0);
    EXPECT_EQ(series.x(Date{1250}), 0.25);
    EXPECT_EQ(series.x(Date{2000}), 1.0);
    EXPECT_EQ(series.x(Date{999}), 0.0);
    EXPECT_EQ(series.x(Date{2001}), 1.0);
    EXPECT_EQ(series.x(Date{-1e300}), 0.0);
    EXPECT_EQ(series.x(Date{1e300}), 1.0);
}

TEST(WeekSeriesX, IsZeroInAWindowWithoutALength) {
    EXPECT_EQ(week(1000, 1000).x(Date{1000}), 0.0);
    EXPECT_EQ(week(1000, 1000).x(Date{5000}), 0.0);
    EXPECT_EQ(week(2000, 1000).x(Date{1500}), 0.0);
    EXPECT_EQ(week(notANumber, 1000).x(Date{500}), 0.0);
}

WeekSeries forecast(std::vector<SeriesPoint> likely, std::optional<double> limit = 1.0) {
    WeekSeries series = week(0, 100);
    series.usedNow = 0.5;
    series.limitLevel = limit;
    series.forecastLikely = std::move(likely);
    series.coneLikelyEnd = {Date{100}, 0.9};
    return series;
}

TEST(WeekSeriesGhost, OfFactorOneIsTheForecastItself) {
    const WeekSeries series = forecast({{Date{10}, 0.5}, {Date{20}, 0.75}, {Date{30}, 1.25}});
    EXPECT_EQ(series.ghost(1), series.forecastLikely);
}

TEST(WeekSeriesGhost, OfFactorZeroIsFlat) {
    const WeekSeries series = forecast({{Date{10}, 0.5}, {Date{20}, 0.75}, {Date{30}, 1.25}});
    EXPECT_THAT(series.ghost(0),
                ElementsAre(SeriesPoint{Date{10}, 0.5}, SeriesPoint{Date{20}, 0.5}, SeriesPoint{Date{30}, 0.5}));
}

TEST(WeekSeriesGhost, StretchesTheRiseFromNow) {
    const WeekSeries series = forecast({{Date{10}, 0.5}, {Date{20}, 0.75}, {Date{30}, 0.25}});
    EXPECT_THAT(series.ghost(2),
                ElementsAre(SeriesPoint{Date{10}, 0.5}, SeriesPoint{Date{20}, 1.0}, SeriesPoint{Date{30}, 0.0}));
}

TEST(WeekSeriesGhost, OfNoForecastIsEmpty) {
    EXPECT_THAT(forecast({}).ghost(1), IsEmpty());
}

TEST(WeekSeriesGhostLanding, StretchesTheEndOfTheWeek) {
    const WeekSeries series = forecast({});
    EXPECT_EQ(series.ghostLanding(0), 0.5);
    EXPECT_EQ(series.ghostLanding(1), 0.9);
    EXPECT_DOUBLE_EQ(series.ghostLanding(0.5), 0.7);
    EXPECT_DOUBLE_EQ(series.ghostLanding(2), 1.3);
}

struct CrossingRow : TestSupport::Named {
    std::vector<SeriesPoint> likely;
    std::optional<double> limit;
    double factor;
    std::optional<Date> expected;
};

class GhostCrossingTest : public testing::TestWithParam<CrossingRow> {};

TEST_P(GhostCrossingTest, IsWhereTheGhostReachesTheLimit) {
    const CrossingRow& row = GetParam();
    EXPECT_EQ(forecast(row.likely, row.limit).ghostCrossing(row.factor), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Ghosts, GhostCrossingTest,
    testing::Values(
        CrossingRow{"no limit", {{Date{10}, 5.0}}, std::nullopt, 1, std::nullopt},
        CrossingRow{"no forecast", {}, 1.0, 1, std::nullopt},
        CrossingRow{"the first point is over", {{Date{10}, 1.5}, {Date{20}, 2.0}}, 1.0, 1, Date{10}},
        CrossingRow{"the first point is at the limit", {{Date{10}, 1.0}}, 1.0, 1, Date{10}},
        CrossingRow{"between two points", {{Date{10}, 0.5}, {Date{20}, 1.5}}, 1.0, 1, Date{15}},
        CrossingRow{"exactly at a later point", {{Date{10}, 0.5}, {Date{20}, 1.0}, {Date{30}, 2.0}}, 1.0, 1, Date{20}},
        CrossingRow{"never", {{Date{10}, 0.5}, {Date{20}, 0.99}}, 1.0, 1, std::nullopt},
        CrossingRow{"a smaller factor never gets there", {{Date{10}, 0.5}, {Date{20}, 1.5}}, 1.0, 0.25, std::nullopt},
        CrossingRow{"a larger factor gets there sooner", {{Date{10}, 0.5}, {Date{20}, 1.5}}, 1.0, 2, Date{12.5}},
        CrossingRow{"factor zero stays flat below", {{Date{10}, 0.5}, {Date{20}, 9.0}}, 1.0, 0, std::nullopt},
        CrossingRow{"factor zero over the limit already", {{Date{10}, 0.5}, {Date{20}, 9.0}}, 0.5, 0, Date{10}},
        CrossingRow{"the first of two crossings",
                    {{Date{10}, 0.5}, {Date{20}, 1.5}, {Date{30}, 0.5}, {Date{40}, 1.5}},
                    1.0,
                    1,
                    Date{15}},
        CrossingRow{"a rise too small to divide by", {{Date{10}, 1.0 - 1e-13}, {Date{20}, 1.0}}, 1.0, 1, Date{20}},
        CrossingRow{
            "a rise from a point that is no number", {{Date{10}, notANumber}, {Date{20}, 1.5}}, 1.0, 1, Date{20}},
        CrossingRow{"no point is a number", {{Date{10}, notANumber}}, 1.0, 1, std::nullopt},
        CrossingRow{"a limit that is no number", {{Date{10}, 5.0}}, notANumber, 1, std::nullopt}),
    TestSupport::rowName);

} // namespace
} // namespace UsageModel
