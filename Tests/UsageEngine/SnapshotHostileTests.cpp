#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/RandomScenes.h"
#include "UsageEngine/SnapshotChecks.h"
#include "UsageModel/CategoryWeights.h"

namespace UsageEngine {
namespace {

using UsageModel::Anchor;
using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;

constexpr double largest = std::numeric_limits<double>::max();
constexpr std::int64_t mostTokens = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t fewestTokens = std::numeric_limits<std::int64_t>::min();

/// Instants that a clock, a log or a gauge may tell by mistake, from `now` on.
Date oddInstant(Draw& draw, Date now) {
    const std::array<Date, 20> instants{
        now,           now + 1e-7,  now - 1e-7,  now + hour,   now - hour,    now + 365 * day, now + 401 * day,
        now - 3 * day, Date{0},     Date{-1},    Date{-1e9},   Date{2.2e9},   Date{4.2e9},     Date{-62135596800},
        Date{1e13},    Date{-1e13}, Date{1e300}, Date{-1e300}, Date{largest}, Date{-largest}};
    if (draw.oneIn(5) && std::abs(now.secondsSince1970) < 1e14) return Date{now.secondsSince1970 * 1000};
    return draw.oneOf(instants);
}

double oddFraction(Draw& draw) {
    constexpr std::array<double, 16> fractions{0,     1e-320, 1e-300, 1e-9, 0.14,   0.15,  0.5,     1,
                                               1.001, 1.5,    -1,     1e9,  -1e300, 1e300, largest, -largest};
    return draw.oneOf(fractions);
}

UsageModel::UsageEvent oddEvent(Draw& draw, Date now) {
    constexpr auto classes = UsageModel::allCases<ModelClass>;
    constexpr std::array<std::int64_t, 9> counts{0, 0, 1, 1000, 1'000'000, -1, -1'000'000, mostTokens, fewestTokens};
    return {.ts = draw.oneIn(2) ? now - draw.between(-hour, 9 * week) : oddInstant(draw, now),
            .sessionId = std::string(draw.below(3), 'x'),
            .modelClass = draw.oneOf(classes),
            .input = draw.oneOf(counts),
            .output = draw.oneOf(counts),
            .cacheCreation = draw.oneOf(counts),
            .cacheRead = draw.oneOf(counts),
            .effort = draw.oneIn(2) ? std::optional(UsageModel::EffortLevel::max) : std::nullopt};
}

Anchor oddAnchor(Draw& draw, Date now) {
    constexpr auto kinds = UsageModel::allCases<WindowKind>;
    Anchor anchor =
        draw.oneIn(2) ? sessionFull(oddInstant(draw, now)) : sessionAt(oddInstant(draw, now), oddFraction(draw));
    if (draw.oneIn(2)) anchor.ts = now - draw.between(0, week);
    anchor.window = draw.oneOf(kinds);
    if (draw.oneIn(2)) anchor.resetsAt = oddInstant(draw, now);
    return anchor;
}

UsageModel::GaugeReading oddGauge(Draw& draw, Date now) {
    auto gauge = reading(draw.oneIn(2) ? now - draw.between(0, 2 * hour) : oddInstant(draw, now), {{"", {}}});
    for (const WindowKind kind : UsageModel::allCases<WindowKind>) {
        if (draw.oneIn(6)) continue;
        auto& window = gauge.windows[std::string(statusLineKey(kind))];
        if (!draw.oneIn(4)) window.usedPercentage = 100 * oddFraction(draw);
        if (!draw.oneIn(4)) window.resetsAt = oddInstant(draw, now).secondsSince1970;
        if (window.usedPercentage && !std::isfinite(*window.usedPercentage)) window.usedPercentage = largest;
    }
    return gauge;
}

Scene oddScene(Draw& draw) {
    Scene scene = randomScene(draw);
    if (draw.oneIn(2)) scene.now = oddInstant(draw, scene.now);
    if (draw.oneIn(2)) scene.weights = UsageModel::CategoryWeights::priors(UsageModel::liveWeightScale);
    if (draw.oneIn(2)) scene.events.clear();
    for (std::size_t i = draw.below(12); i > 0; --i) scene.events.push_back(oddEvent(draw, scene.now));
    if (!draw.oneIn(4)) scene.gauge = oddGauge(draw, scene.now);
    for (std::size_t i = draw.below(5); i > 0; --i) scene.anchors.push_back(oddAnchor(draw, scene.now));
    if (draw.oneIn(2)) scene.heldCap = oddFraction(draw);
    return scene;
}

TEST(SnapshotHostile, NoNumberEverLeavesTheRange) {
    Draw draw(11);
    for (int round = 0; round < 4000 && !HasFailure(); ++round) {
        const Scene scene = oddScene(draw);
        SCOPED_TRACE("round " + std::to_string(round));
        expectFinite(scene.snapshot());
    }
}

struct MomentRow {
    const char* name;
    double now;
};

class Moment : public testing::TestWithParam<MomentRow> {};

TEST_P(Moment, IsAsGoodAsAnyOther) {
    const Date now{GetParam().now};
    const Scene nothing{.now = now};
    expectSound(nothing.snapshot());
    Scene scene{.gauge = reading(now - hour, {{"five_hour", told(30, now + hour)},
                                              {"seven_day", told(40, now + day)},
                                              {"seven_day_opus", told(50, now - 30 * day)}}),
                .now = now};
    for (double age = 40 * day; age > -day; age -= 5 * hour) scene.events.push_back(spent(now - age, 3));
    expectSound(scene.snapshot());
    EXPECT_EQ(scene.snapshot().meters.size(), 3U);
    EXPECT_TRUE(scene.snapshot().weekSeries->intensityIsMeaningful);
}

INSTANTIATE_TEST_SUITE_P(Moments, Moment,
                         testing::Values(MomentRow{"long before 1970", -4e9}, MomentRow{"before 1970", -1e6},
                                         MomentRow{"1970", 0}, MomentRow{"after 2037", 2.2e9},
                                         MomentRow{"after 2106", 4.3e9}, MomentRow{"after 9999", 2.6e11}));

TEST(SnapshotHostile, AClockBeyondTheCalendarStillHasASnapshot) {
    for (const double now : {4e12, 1e17, 1e20, 1e300, largest, -4e12, -1e20, -largest}) {
        SCOPED_TRACE(now);
        const Date later{now};
        const Scene scene{
            .events = {spent(sunday, 1), spent(later - day, 1), spent(later, 1)},
            .anchors = {resetTold(WindowKind::weeklyAll, later, later + day)},
            .gauge = reading(later, {{"five_hour", told(30, later + hour)}, {"seven_day", told(40, later + day)}}),
            .now = later};
        expectFinite(scene.snapshot());
        Scene withoutGauge = scene;
        withoutGauge.gauge.reset();
        expectFinite(withoutGauge.snapshot());
    }
}

TEST(SnapshotHostile, AnOddHeldCapScalesNothing) {
    Scene scene{.events = {spent(sunday - hour, 3)}};
    const UsageSnapshot plain = scene.snapshot();
    for (const double cap : {0.0, -0.0, -1.0, -1e300, 1e-320, 1e-101}) {
        scene.heldCap = cap;
        const UsageSnapshot snapshot = scene.snapshot();
        EXPECT_EQ(snapshot.meters, plain.meters) << cap;
        EXPECT_EQ(snapshot.weekSessions, plain.weekSessions) << cap;
        EXPECT_EQ(snapshot.weekSeries, plain.weekSeries) << cap;
    }
    scene.heldCap = 1e300;
    EXPECT_EQ(scene.snapshot().meters.front().used, 3e-300);
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 1e300);
}

TEST(SnapshotHostile, MillisecondsTakenForSecondsTellNoReset) {
    const Date now = sunday;
    const Date wrong{(now + hour).secondsSince1970 * 1000};
    const Scene scene{.events = {spent(now - hour, 3)},
                      .gauge = reading(now, {{"five_hour", told(30, wrong)}, {"seven_day", told(40, wrong)}})};
    const UsageSnapshot snapshot = scene.snapshot();
    expectSound(snapshot);
    for (const auto& meter : snapshot.meters) {
        EXPECT_FALSE(meter.resetsAt);
        EXPECT_TRUE(meter.confidence.anchored) << "the percentage counts all the same";
    }
}

// None of these may take long; what would is ended by the time limit of the tests.

TEST(SnapshotIsQuick, WithAResetAYearAhead) {
    const Date reset = sunday + 365 * day;
    Scene scene{.events = {spent(sunday - hour, 3)},
                .gauge = reading(sunday, {{"five_hour", told(30, reset)},
                                          {"seven_day", told(40, reset)},
                                          {"seven_day_opus", told(40, reset)}})};
    for (const auto* zone : {"UTC", "Australia/Lord_Howe", "America/Havana"}) {
        scene.calendar = *UsageModel::Calendar::inZone(zone);
        const UsageSnapshot snapshot = scene.snapshot();
        expectFinite(snapshot);
        EXPECT_EQ(snapshot.weekSeries->forecastLikely.size(), 365U * 24 + 1) << zone;
        EXPECT_EQ(snapshot.weekSeries->actual.size(), 1U);
    }
}

TEST(SnapshotIsQuick, WithAReadingFromBeforeTheWorldBegan) {
    for (const double captured : {-1e300, -1e18, 0.0}) {
        const Scene scene{.events = {spent(sunday - hour, 3)},
                          .gauge = reading(Date{captured}, {{"five_hour", told(30, sunday + hour)}})};
        EXPECT_FALSE(scene.snapshot().sessionCapInLogUnits);
        EXPECT_FALSE(scene.snapshot().meters.front().confidence.anchored);
    }
}

TEST(SnapshotIsQuick, WithEachTurnOnADayOfItsOwn) {
    constexpr int days = 200'000;
    Scene scene;
    for (int i = 0; i < days; ++i) scene.events.push_back(spent(sunday - i * day, 1));
    scene.calendar = *UsageModel::Calendar::inZone("Europe/Berlin");
    const UsageSnapshot snapshot = scene.snapshot();
    EXPECT_EQ(snapshot.calendar.size(), static_cast<std::size_t>(days));
    expectSound(snapshot);
}

TEST(SnapshotIsQuick, WithSessionsAndAnchorsThatAreYetToCome) {
    constexpr int sessions = 200'000;
    constexpr int anchors = 10'000;
    Scene scene{.heldCap = 5};
    for (int i = 0; i < sessions; ++i) scene.events.push_back(spent(sunday + i * 5 * hour, 2));
    for (int i = 0; i < anchors; ++i) scene.anchors.push_back(sessionFull(sunday + (i * 5 * hour + 1)));
    const UsageSnapshot snapshot = scene.snapshot();
    ASSERT_EQ(snapshot.weekSessions.size(), static_cast<std::size_t>(sessions));
    EXPECT_EQ(snapshot.weekSeries->sessions[anchors - 1].capBasis, UsageModel::SessionCapBasis::ownCeiling);
    EXPECT_EQ(snapshot.weekSeries->sessions[anchors].capBasis, UsageModel::SessionCapBasis::learnedScale);
    EXPECT_EQ(snapshot.sessionCapInLogUnits, 2);
    expectFinite(snapshot);
}

TEST(SnapshotIsQuick, WithAllTurnsAndAnchorsInOneInstant) {
    Scene scene;
    for (int i = 0; i < 200'000; ++i) scene.events.push_back(spent(sunday - hour, 1));
    for (int i = 0; i < 10'000; ++i) scene.anchors.push_back(sessionAt(sunday - 0.5 * hour, 0.5));
    const UsageSnapshot snapshot = scene.snapshot();
    EXPECT_EQ(snapshot.weekSessions.front().usedFraction, 0.5);
    expectSound(snapshot);
}

TEST(SnapshotIsQuick, WithThousandsOfSessionsAtOnce) {
    Scene scene;
    for (int i = 0; i < 100'000; ++i) {
        scene.events.push_back(spent(sunday - 60.0, 1));
        scene.events.back().sessionId = std::to_string(i);
    }
    EXPECT_EQ(scene.snapshot().live.sessions.size(), 100'000U);
}

} // namespace
} // namespace UsageEngine
