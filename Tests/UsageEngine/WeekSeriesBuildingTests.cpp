#include "UsageEngine/WeekSeriesBuilding.h"

#include <functional>

#include <gtest/gtest.h>

#include "UsageEngine/Scene.h"
#include "UsageEngine/SessionWindows.h"

namespace UsageEngine {
namespace {

using UsageModel::Date;
using UsageModel::ModelBucket;
using UsageModel::ModelClass;
using UsageModel::SeriesPoint;
using UsageModel::SeriesScale;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;
using UsageModel::WindowKind;
using Points = std::vector<SeriesPoint>;

constexpr Date now = sunday;
constexpr Date weekStart = now - 3.5 * day;
constexpr Date weekEnd = now + 3.5 * day;

/// The chart of a scene. `change` may put another forecast into the computed week.
struct Chart {
    Scene scene;
    std::optional<double> cap;
    bool sessionInForce = true;
    std::function<void(WindowCompute&)> change = [](WindowCompute&) {};

    [[nodiscard]] std::optional<WeekSeries> series() const {
        return scene.withFacts([&](const Facts& facts) {
            const auto blocks = SessionWindows::reconstruct(facts.turns, facts.now);
            const SessionAnchors anchors(facts.anchors);
            const SessionCapScale capScale = capOf(cap);
            const WindowCompute session = computeWindow(WindowKind::session5h, facts, capScale);
            WindowCompute weekly = computeWindow(WindowKind::weeklyAll, facts, capScale);
            change(weekly);
            return buildWeekSeries({.facts = facts,
                                    .sessionAnchors = anchors,
                                    .blocks = blocks,
                                    .capScale = capScale,
                                    .session5h = sessionInForce ? &session : nullptr,
                                    .weekly = &weekly});
        });
    }
};

WeekSeries drawn(const Scene& scene) {
    return *Chart{.scene = scene, .cap = {}}.series();
}

UsageModel::GaugeReading weekRead(Date captured, std::optional<double> percent) {
    return reading(captured, {{"seven_day", told(percent, weekEnd)}});
}

/// Ten weeks of one log unit at each noon, up to yesterday.
std::vector<UsageModel::UsageEvent> steadyNoons() {
    std::vector<UsageModel::UsageEvent> events;
    for (double age = 70 * day; age > 0; age -= day) events.push_back(spent(now - age + 12 * hour, 1));
    return events;
}

void expectEqual(const Points& points, const Points& expected) {
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i].t, expected[i].t) << i;
        EXPECT_NEAR(points[i].used, expected[i].used, 1e-9) << i;
    }
}

TEST(WeekSeriesBuilding, WithoutAWeekThereIsNone) {
    const Scene scene;
    const auto series = scene.withFacts([&](const Facts& facts) {
        return buildWeekSeries({.facts = facts,
                                .sessionAnchors = SessionAnchors(facts.anchors),
                                .blocks = {},
                                .capScale = {},
                                .session5h = nullptr,
                                .weekly = nullptr});
    });
    EXPECT_FALSE(series);
}

TEST(WeekSeriesBuilding, WithoutAResetTheWeekEndsNowAndHasNoForecast) {
    const WeekSeries series = drawn({.events = {spent(now - day, 1), spent(now - 60.0, 0)}});
    EXPECT_EQ(series.windowStart, now - week);
    EXPECT_EQ(series.windowEnd, now);
    EXPECT_EQ(series.now, now);
    EXPECT_EQ(series.scale, SeriesScale::typicalWeeks);
    EXPECT_FALSE(series.limitLevel);
    EXPECT_TRUE(series.boundaryEstimated);
    EXPECT_TRUE(series.baseline.empty());
    EXPECT_TRUE(series.forecastLikely.empty() && series.forecastHigh.empty() && series.forecastLow.empty());
    EXPECT_EQ(series.usedNow, 1);
    EXPECT_EQ(series.coneLikelyEnd, (SeriesPoint{now, 1}));
    EXPECT_EQ(series.coneFastEnd, (SeriesPoint{now, 1}));
    EXPECT_EQ(series.intensity, 1);
    EXPECT_FALSE(series.intensityIsMeaningful);
    EXPECT_FALSE(series.whatIf);
    EXPECT_FALSE(series.crossing);
    EXPECT_FALSE(series.breaches);
}

TEST(WeekSeriesBuilding, AnAnchorsResetGivesAForecastInLogUnits) {
    Scene scene{.events = steadyNoons(), .anchors = {resetTold(WindowKind::weeklyAll, now - hour, weekEnd)}};
    scene.weights.input = 0.125;
    const WeekSeries series = drawn(scene);
    EXPECT_TRUE(series.boundaryEstimated);
    EXPECT_EQ(series.scale, SeriesScale::typicalWeeks);
    EXPECT_FALSE(series.limitLevel);
    EXPECT_EQ(series.usedNow, 0.5) << "four noons of an eighth";
    EXPECT_NEAR(series.coneLikelyEnd.used, 0.875, 1e-9);
    EXPECT_FALSE(series.forecastLikely.empty());
    EXPECT_NEAR(series.intensity, 1, 1e-9);
    EXPECT_TRUE(series.intensityIsMeaningful);
    EXPECT_TRUE(series.whatIf);
}

TEST(WeekSeriesBuilding, AReadingFromBeforeTheWeekGivesItsEdgesButNoLimit) {
    const WeekSeries series = drawn({.events = {spent(now - day, 1)}, .gauge = weekRead(weekStart - 1.0, 30)});
    EXPECT_EQ(series.windowEnd, weekEnd);
    EXPECT_FALSE(series.boundaryEstimated);
    EXPECT_EQ(series.scale, SeriesScale::typicalWeeks);
    EXPECT_FALSE(series.limitLevel);
    EXPECT_EQ(series.usedNow, 1);
}

TEST(WeekSeriesBuilding, AReadingInTheWeekGivesFractionsOfTheLimit) {
    const Scene scene{.events = steadyNoons(), .gauge = weekRead(now, 40)};
    const WeekSeries series = drawn(scene);
    EXPECT_EQ(series.scale, SeriesScale::capFraction);
    EXPECT_EQ(series.limitLevel, 1.0);
    EXPECT_EQ(series.usedNow, 0.4);
    EXPECT_NEAR(series.actual.back().used, 0.4, 1e-9);
    EXPECT_EQ(series.baseline.front(), (SeriesPoint{weekStart, 0}));
    EXPECT_EQ(series.baseline.back().t, weekEnd);
    EXPECT_NEAR(series.baseline.back().used, 0.7, 1e-9);
    EXPECT_EQ(series.forecastLikely.front(), (SeriesPoint{now, 0.4}));
    EXPECT_EQ(series.forecastLikely.back().t, weekEnd);
    EXPECT_NEAR(series.coneLikelyEnd.used, 0.7, 1e-9);
    EXPECT_EQ(series.coneLikelyEnd.t, weekEnd);
    EXPECT_EQ(series.coneFastEnd.t, weekEnd);
    EXPECT_NEAR(series.intensity, 1, 1e-9);
    EXPECT_FALSE(series.breaches);
    EXPECT_EQ(series.norm.samples, (std::vector<double>{7, 7, 7, 7}));
}

TEST(WeekSeriesBuilding, ABottomUpForecastIsDrawnAsItIs) {
    Scene scene{.events = steadyNoons(), .gauge = weekRead(now, 60)};
    for (double age = 7 * day; age < 70 * day; age += 21 * day) scene.events.push_back(spent(now - age, 40));
    const WeekSeries series = drawn(scene);
    const WindowCompute weekly = scene.window(WindowKind::weeklyAll);
    EXPECT_EQ(series.forecastLikely, weekly.bottomUp->curve);
    EXPECT_EQ(series.forecastHigh, weekly.bottomUp->high);
    EXPECT_EQ(series.forecastLow, weekly.bottomUp->low);
    EXPECT_EQ(series.coneLikelyEnd.used, weekly.bottomUp->landing());
    EXPECT_EQ(series.coneFastEnd.used, weekly.bottomUp->high.back().used);
    EXPECT_GT(series.coneFastEnd.used, series.coneLikelyEnd.used);
    EXPECT_EQ(series.intensity, weekly.bottomUp->landing() / weekly.bottomUp->typicalWeekTotal);
    EXPECT_EQ(series.crossing, weekly.projection.likelyEmpty);
    EXPECT_EQ(series.breaches, weekly.projection.willBreachBeforeReset);
    EXPECT_TRUE(series.breaches);
    EXPECT_EQ(series.whatIf, weekly.whatIf);
    EXPECT_EQ(series.norm, weekly.norm);
}

TEST(WeekSeriesBuilding, WithoutATypicalWeekTheForecastsOwnIntensityIsTold) {
    const Chart chart{.scene = {.events = {spent(now, 1)}, .gauge = weekRead(now + hour, 40), .now = now + hour},
                      .cap = {},
                      .change = [](WindowCompute& weekly) {
                          ASSERT_EQ(weekly.bottomUp->typicalWeekTotal, 0);
                          weekly.bottomUp->intensity = 7;
                      }};
    EXPECT_EQ(chart.series()->intensity, 7);
    EXPECT_FALSE(chart.series()->intensityIsMeaningful);
}

TEST(WeekSeriesBuilding, TheLineSoFarGoesByHoursOfTheWindow) {
    const Scene scene{.events = {spent(now - 2.5 * hour, 1), spent(now - 1.5 * hour, 2), spent(now, 4),
                                 spent(now - 3 * hour, 8), spent(now + 1.0, 16)},
                      .gauge = reading(now - day, {{"seven_day", told({}, now + (week - 2.5 * hour))}})};
    const Date start = now - 2.5 * hour;
    EXPECT_EQ(drawn(scene).actual, (Points{{start, 0}, {start + hour, 1}, {start + 2 * hour, 3}, {now, 3}}));
}

TEST(WeekSeriesBuilding, AWeekThatIsYetToBeginHasNoLine) {
    const WeekSeries series =
        drawn({.events = {spent(now - hour, 1)}, .gauge = reading(now, {{"seven_day", told(5, now + 30 * day)}})});
    EXPECT_EQ(series.windowStart, now + 23 * day);
    EXPECT_EQ(series.actual, (Points{{now + 23 * day, 0}}));
    EXPECT_EQ(series.usedNow, 0);
}

TEST(WeekSeriesBuilding, SharesAreThoseOfTheWeek) {
    Scene scene{.events = {spent(now - hour, 4), spent(now - hour, 2, ModelClass::fable),
                           spent(now - hour, 2, ModelClass::sonnet)},
                .gauge = weekRead(now, 40)};
    scene.events[0].output = 8;
    EXPECT_EQ(drawn(scene).opusShare, 0.875);
    EXPECT_EQ(drawn(scene).outputShare, 0.5);
}

// The forecasts that stand behind the bottom-up one.

/// Half of a typical window by now, the rest evenly over its second half.
ForecastShape halfway(double typicalTotal, double intensity) {
    return {.cumulativeShare = {{weekStart, 0}, {now, 0.5}, {weekEnd, 1}},
            .typicalTotal = typicalTotal,
            .intensity = intensity,
            .rawIntensity = intensity,
            .coneHigh = 1.25,
            .coneLow = 0.5,
            .isMeaningful = true};
}

Chart withShape(std::optional<double> percent) {
    return {.scene = {.events = {spent(now - hour, 1)}, .gauge = weekRead(now, percent)},
            .cap = {},
            .change = [](WindowCompute& weekly) {
                weekly.bottomUp.reset();
                weekly.profile.reset();
                weekly.shape = halfway(0.8, 1.5);
                weekly.shareNow = 0.5;
            }};
}

TEST(WeekSeriesBuilding, AShapeIsStretchedFromNowOn) {
    const WeekSeries series = *withShape(60).series();
    expectEqual(series.baseline, {{weekStart, 0}, {now, 0.4}, {weekEnd, 0.8}});
    expectEqual(series.forecastLikely, {{now, 0.6}, {weekEnd, 1.2}});
    expectEqual(series.forecastHigh, {{now, 0.6}, {weekEnd, 1.35}});
    expectEqual(series.forecastLow, {{now, 0.6}, {weekEnd, 0.9}});
    EXPECT_NEAR(series.coneLikelyEnd.used, 1.2, 1e-9);
    EXPECT_NEAR(series.coneFastEnd.used, 1.35, 1e-9);
    EXPECT_EQ(series.intensity, 1.5);
    EXPECT_TRUE(series.intensityIsMeaningful);
    EXPECT_EQ(series.scale, SeriesScale::capFraction);
}

TEST(WeekSeriesBuilding, WithoutAReadingAShapeIsToldInTypicalWeeks) {
    const WeekSeries series = *withShape({}).series();
    EXPECT_EQ(series.scale, SeriesScale::typicalWeeks);
    EXPECT_EQ(series.usedNow, 1.25) << "one log unit of eight tenths";
    expectEqual(series.baseline, {{weekStart, 0}, {now, 0.5}, {weekEnd, 1}});
    expectEqual(series.forecastLikely, {{now, 1.25}, {weekEnd, 2}});
    expectEqual(series.forecastHigh, {{now, 1.25}, {weekEnd, 2.1875}});
    expectEqual(series.forecastLow, {{now, 1.25}, {weekEnd, 1.625}});
    EXPECT_NEAR(series.coneLikelyEnd.used, 2, 1e-9);
    EXPECT_NEAR(series.coneFastEnd.used, 2.1875, 1e-9);
    EXPECT_EQ(series.actual.back().used, 1.25);
    EXPECT_EQ(series.sessions.front().weeklyCost, 1.25);
}

Chart withComposite(std::optional<double> percent) {
    Chart chart = withShape(percent);
    chart.change = [](WindowCompute& weekly) {
        weekly.bottomUp.reset();
        weekly.profile.reset();
        weekly.shape = halfway(100, 100);
        weekly.composite = CompositeForecast{};
        weekly.composite->components = {
            {.bucket = ModelBucket::opusClass, .shape = halfway(0.8, 1.5), .usedNow = 0.5, .sNow = 0.5},
            {.bucket = ModelBucket::sonnet, .shape = halfway(0.2, 0.5), .usedNow = 0.1, .sNow = 0.75}};
    };
    return chart;
}

TEST(WeekSeriesBuilding, ACompositeIsTheSumOfItsParts) {
    const WeekSeries series = *withComposite(60).series();
    expectEqual(series.baseline, {{weekStart, 0}, {now, 0.5}, {weekEnd, 1}});
    expectEqual(series.forecastLikely, {{now, 0.6}, {weekEnd, 1.225}});
    expectEqual(series.forecastHigh, {{now, 0.6}, {weekEnd, 1.38125}});
    expectEqual(series.forecastLow, {{now, 0.6}, {weekEnd, 0.9125}});
    EXPECT_NEAR(series.coneLikelyEnd.used, 1.225, 1e-9);
    EXPECT_NEAR(series.coneFastEnd.used, 1.38125, 1e-9);
    EXPECT_NEAR(series.intensity, 1.3, 1e-9);
    EXPECT_TRUE(series.intensityIsMeaningful);
    EXPECT_EQ(series.usedNow, 0.6);
}

TEST(WeekSeriesBuilding, WithoutAReadingACompositeIsToldInItsTypicalWeeks) {
    const WeekSeries series = *withComposite({}).series();
    EXPECT_EQ(series.usedNow, 1) << "eight tenths and two tenths make a week";
    EXPECT_NEAR(series.coneLikelyEnd.used, 1.225, 1e-9);
}

TEST(WeekSeriesBuilding, WithoutAForecastTheLastHourGoesOn) {
    Chart chart = withShape(10);
    chart.scene.events = {spent(now - 2 * hour, 1), spent(now - hour, 3), spent(now - 900.0, 1), spent(now, 1)};
    chart.change = [](WindowCompute& weekly) {
        weekly.bottomUp.reset();
        weekly.profile.reset();
        weekly.scale = 1e-3;
    };
    const WeekSeries series = *chart.series();
    EXPECT_NEAR(series.coneLikelyEnd.used, 0.1 + 5e-3 * 84, 1e-9);
    EXPECT_NEAR(series.coneFastEnd.used, 0.1 + 8e-3 * 84, 1e-9) << "two in a quarter of an hour";
    EXPECT_TRUE(series.baseline.empty() && series.forecastLikely.empty());
    EXPECT_EQ(series.intensity, 1);
    EXPECT_FALSE(series.intensityIsMeaningful);
    chart.scene.events = {spent(now - hour, 3)};
    EXPECT_EQ(chart.series()->coneFastEnd.used, chart.series()->coneLikelyEnd.used) << "the fast pace is no slower";
}

// A bar for each session.

/// A session that ended yesterday, and one that runs and was read at 30 percent.
Scene twoSessions() {
    return {.events = {spent(now - day, 3), spent(now - day, 1, ModelClass::sonnet), spent(now - hour, 2)},
            .gauge = reading(now, {{"five_hour", told(30, now + hour)}, {"seven_day", told(60, weekEnd)}})};
}

TEST(SessionBars, WithoutAnythingAreInLogUnits) {
    Scene scene = twoSessions();
    scene.gauge->windows.erase("five_hour");
    const auto bars = Chart{.scene = scene, .cap = {}, .sessionInForce = false}.series()->sessions;
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_EQ(bars[0], (UsageModel::SessionBar{
                           .start = now - day,
                           .end = now - day + 5 * hour,
                           .fillFraction = 4,
                           .weeklyCost = 4 * (0.6 / 6),
                           .byModelClass = {{ModelClass::opus, 0.75}, {ModelClass::sonnet, 0.25}},
                           .isCurrent = false,
                           .capBasis = SessionCapBasis::uncalibrated,
                       }));
    EXPECT_TRUE(bars[1].isCurrent);
    EXPECT_EQ(bars[1].capBasis, SessionCapBasis::uncalibrated);
    EXPECT_EQ(bars[1].fillFraction, 2);
}

TEST(SessionBars, TheRunningOneIsWhatTheMeterSays) {
    const auto bars = Chart{.scene = twoSessions(), .cap = 16.0}.series()->sessions;
    EXPECT_EQ(bars[0].fillFraction, 0.25);
    EXPECT_EQ(bars[0].capBasis, SessionCapBasis::learnedScale);
    EXPECT_EQ(bars[1].fillFraction, 0.3);
    EXPECT_EQ(bars[1].capBasis, SessionCapBasis::liveGauge);
}

TEST(SessionBars, AMeterThatIsNotAnchoredFillsNothing) {
    Scene scene = twoSessions();
    scene.gauge->windows["five_hour"].usedPercentage = {};
    const auto bars = Chart{.scene = scene, .cap = 16.0}.series()->sessions;
    EXPECT_EQ(bars[1].fillFraction, 0.125);
    EXPECT_EQ(bars[1].capBasis, SessionCapBasis::learnedScale);
}

TEST(SessionBars, AnAnchorOfTheSessionBeatsMeterAndCap) {
    Scene scene = twoSessions();
    scene.anchors = {sessionFull(now - 0.5 * hour), sessionAt(now - day + hour, 0.5)};
    const auto bars = Chart{.scene = scene, .cap = 16.0}.series()->sessions;
    EXPECT_EQ(bars[0].fillFraction, 0.5);
    EXPECT_EQ(bars[0].capBasis, SessionCapBasis::ownCeiling);
    EXPECT_EQ(bars[1].fillFraction, 1);
    EXPECT_EQ(bars[1].capBasis, SessionCapBasis::ownCeiling);
}

TEST(SessionBars, OneThatWeighsNothingHasNoShares) {
    const auto bars = drawn({.events = {spent(now - day, 0), spent(now - day, 0, ModelClass::haiku)}}).sessions;
    EXPECT_EQ(bars[0].byModelClass,
              (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 0.0}, {ModelClass::haiku, 0.0}}));
    const auto negative = drawn({.events = {spent(now - day, -4)}}).sessions;
    EXPECT_EQ(negative[0].byModelClass, (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 0.0}}));
}

} // namespace
} // namespace UsageEngine
