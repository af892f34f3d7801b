#include "UsageEngine/Aggregator.h"

#include <gtest/gtest.h>

#include "UsageEngine/Scene.h"

namespace UsageEngine {
namespace {

using UsageModel::Confidence;
using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::GaugeReading;
using UsageModel::ModelClass;
using UsageModel::Recommendation;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;

constexpr Date now = sunday;

std::vector<WindowKind> kindsOf(const UsageSnapshot& snapshot) {
    std::vector<WindowKind> kinds;
    for (const auto& meter : snapshot.meters) kinds.push_back(meter.kind);
    return kinds;
}

std::vector<WindowKind> projectedKindsOf(const UsageSnapshot& snapshot) {
    std::vector<WindowKind> kinds;
    for (const auto& projection : snapshot.projections) kinds.push_back(projection.window);
    return kinds;
}

TEST(Aggregator, WithNothingAtAllThreeMetersRest) {
    const UsageSnapshot snapshot = Scene{}.snapshot();
    EXPECT_EQ(kindsOf(snapshot), (std::vector{WindowKind::session5h, WindowKind::weeklyAll, WindowKind::weeklyOpus}));
    EXPECT_EQ(projectedKindsOf(snapshot), kindsOf(snapshot));
    for (const auto& meter : snapshot.meters) {
        EXPECT_EQ(meter.used, 0);
        EXPECT_EQ(meter.confidence, Confidence::unknown());
    }
    EXPECT_EQ(snapshot.generatedAt, now);
    EXPECT_EQ(snapshot.binding, WindowKind::session5h) << "the first of equals";
    EXPECT_EQ(snapshot.verdict,
              (UsageModel::Verdict{.headline = "On track",
                                   .consequence = UsageModel::Consequence::fine,
                                   .severity = UsageModel::Severity::green,
                                   .subtext = "Projected to reach about 0% by reset — with headroom."}));
    EXPECT_EQ(snapshot.bindingProjection, snapshot.projections.front());
    EXPECT_TRUE(snapshot.weekSessions.empty());
    EXPECT_TRUE(snapshot.calendar.empty());
    EXPECT_TRUE(snapshot.models.byClass.empty());
    EXPECT_FALSE(snapshot.sessionCapInLogUnits);
    EXPECT_FALSE(snapshot.recommendation);
    EXPECT_EQ(snapshot.live, (UsageModel::LiveModel{.lookback = 2700}));
    ASSERT_TRUE(snapshot.weekSeries);
    EXPECT_EQ(snapshot.weekSeries->windowStart, now - week);
    EXPECT_EQ(snapshot.weekSeries->windowEnd, now);
}

TEST(Aggregator, AGaugeWithoutWindowsLeavesNone) {
    const Scene scene{.events = {spent(now - hour, 5)}, .gauge = reading(now, {})};
    const UsageSnapshot snapshot = scene.snapshot();
    EXPECT_TRUE(snapshot.meters.empty());
    EXPECT_TRUE(snapshot.projections.empty());
    EXPECT_EQ(snapshot.binding, WindowKind::weeklyAll);
    EXPECT_EQ(snapshot.verdict.headline, "On track");
    EXPECT_EQ(snapshot.verdict.subtext, "Nothing projected to run out before reset.");
    EXPECT_EQ(snapshot.bindingProjection, (UsageModel::Projection{.window = WindowKind::weeklyAll,
                                                                  .earliestEmpty = {},
                                                                  .likelyEmpty = {},
                                                                  .endFraction = 0,
                                                                  .willBreachBeforeReset = false}));
    EXPECT_FALSE(snapshot.weekSeries);
    EXPECT_FALSE(snapshot.recommendation);
    EXPECT_EQ(snapshot.weekSessions.size(), 1U) << "what was spent is told all the same";
}

TEST(Aggregator, TheGaugeTellsWhichLimitsThereAre) {
    const UsageSnapshot snapshot =
        Scene{.gauge = reading(now, {{"seven_day", told(10, now + day)}, {"five_hour", told(10, now + hour)}})}
            .snapshot();
    EXPECT_EQ(kindsOf(snapshot), (std::vector{WindowKind::session5h, WindowKind::weeklyAll}));
    EXPECT_EQ(projectedKindsOf(snapshot), kindsOf(snapshot));
    EXPECT_EQ(kindsOf(Scene{.gauge = reading(now, {{"seven_day_opus", {}}})}.snapshot()),
              std::vector{WindowKind::weeklyOpus})
        << "by name alone";
    EXPECT_TRUE(Scene{.gauge = reading(now, {{"weeklyAll", told(1, now)}})}.snapshot().meters.empty());
}

TEST(Aggregator, WithoutAWeekThereIsNoChartButItsSessions) {
    const Scene scene{.events = {spent(now - 6 * day, 1), spent(now - 8 * day, 2)},
                      .gauge = reading(now, {{"five_hour", told(10, now + hour)}})};
    const UsageSnapshot snapshot = scene.snapshot();
    EXPECT_FALSE(snapshot.weekSeries);
    EXPECT_EQ(snapshot.weekSessions.size(), 1U);
    EXPECT_EQ(snapshot.models.byClass, (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 1.0}}));
    EXPECT_EQ(snapshot.calendar.size(), 2U);
}

TEST(Aggregator, ModelsAreThoseOfTheWeekUpToNow) {
    const Scene scene{.events = {spent(now, 1), spent(now - 1.0, 2, ModelClass::sonnet), spent(now - day, 4),
                                 spent(now - day - 1.0, 8)},
                      .gauge = reading(now, {{"seven_day", told(10, now + 6 * day)}})};
    EXPECT_EQ(scene.snapshot().models.byClass,
              (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 4.0}, {ModelClass::sonnet, 2.0}}));
}

TEST(Aggregator, TheCalendarIsLocal) {
    Scene scene{.events = {spent(now - 2 * hour, 1), spent(now - 0.5 * hour, 1)}};
    EXPECT_EQ(scene.snapshot().calendar.size(), 1U);
    scene.calendar = *UsageModel::Calendar::inZone("Europe/Berlin");
    EXPECT_EQ(scene.snapshot().calendar.size(), 2U);
    EXPECT_EQ(scene.snapshot().calendar.back().day, now - hour);
}

TEST(Aggregator, WhatRunsIsReadOverFortyFiveMinutes) {
    const Scene scene{.events = {spent(now - 2700.0, 1), spent(now - 2699.0, 2), spent(now, 4), spent(now + 1.0, 8)}};
    const UsageModel::LiveModel live = scene.snapshot().live;
    EXPECT_EQ(live.weight, 6);
    EXPECT_EQ(live.turns, 2);
    EXPECT_EQ(live.lookback, 2700);
}

TEST(Aggregator, TheImportsProgressIsHandedOn) {
    const UsageModel::IngestProgress progress{.bytesDone = 3, .bytesTotal = 7, .complete = false};
    EXPECT_EQ(
        Aggregator{}
            .snapshot({.events = {}, .anchors = {}, .gauge = {}, .now = now, .ingest = progress, .heldSessionCap = {}})
            .ingest,
        progress);
}

TEST(Aggregator, ThePricesOfALiveProgramAreItsOwn) {
    const Aggregator aggregator;
    EXPECT_EQ(aggregator.weights, UsageModel::CategoryWeights::priors(1e-7));
}

TEST(Aggregator, EventsNeedNotStandByTime) {
    Scene scene{
        .events = {spent(now - hour, 1), spent(now - 9 * hour, 2), spent(now - 8 * day, 4), spent(now - 2 * hour, 8)}};
    const UsageSnapshot snapshot = scene.snapshot();
    std::ranges::sort(scene.events, {}, &UsageModel::UsageEvent::ts);
    EXPECT_EQ(scene.snapshot(), snapshot);
}

// The cap of a session.

TEST(SessionCap, IsLearntFromTheSessionThatTheGaugeWasReadIn) {
    const Scene scene{.events = {spent(now - 2 * hour, 30), spent(now - hour, 30), spent(now - 3.5 * hour, 99)},
                      .gauge = reading(now - 0.5 * hour, {{"five_hour", told(50, now + 2 * hour)}})};
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 120);
    EXPECT_EQ(scene.snapshot().meters.front().used, 0.5);
}

TEST(SessionCap, AnOldReadingFindsItsOwnSessionOnTheGrid) {
    // The session in force began three hours ago: the reading is of the one before.
    const Scene scene{.events = {spent(now - 7 * hour, 30), spent(now - 8.5 * hour, 99), spent(now - 5.5 * hour, 99)},
                      .gauge = reading(now - 6 * hour, {{"five_hour", told(50, now - 3 * hour)}})};
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 60);
}

TEST(SessionCap, WithoutAResetTheGridEndsNow) {
    const Scene scene{.events = {spent(now - 9 * hour, 30), spent(now - 11 * hour, 99)},
                      .gauge = reading(now - 7 * hour, {{"five_hour", told(50, {})}})};
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 60);
}

TEST(SessionCap, AReadingAtTheStartOfItsSessionTellsNothing) {
    const Scene scene{.events = {spent(now - 5.5 * hour, 30)},
                      .gauge = reading(now - 5 * hour, {{"five_hour", told(50, {})}})};
    EXPECT_FALSE(scene.snapshot().sessionCapInLogUnits);
}

TEST(SessionCap, TheGridIsFollowedFourThousandWindowsBack) {
    const auto capReadAt = [](Date captured) {
        return Scene{.events = {spent(captured - 0.5, 30)}, .gauge = reading(captured, {{"five_hour", told(50, {})}})}
            .snapshot()
            .sessionCapInLogUnits;
    };
    const Date furthest = now - 4097 * 5 * hour;
    EXPECT_EQ(capReadAt(furthest + 1.0), 60);
    EXPECT_FALSE(capReadAt(furthest - 1.0));
}

TEST(SessionCap, AReadingFromTheFutureTellsNothing) {
    Scene scene{.events = {spent(now - hour, 30)},
                .gauge = reading(now + 1.0, {{"five_hour", told(50, now + 2 * hour)}}),
                .heldCap = 77};
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 77);
    scene.heldCap = {};
    EXPECT_FALSE(scene.snapshot().sessionCapInLogUnits);
    scene.anchors = {sessionFull(now - 0.5 * hour)};
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 30) << "but a ceiling does";
    scene.gauge->capturedAt = now.secondsSince1970;
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 45) << "and so does a reading of this instant";
}

TEST(SessionCap, TheOneLearntBeforeIsTheLastResort) {
    Scene scene{.events = {spent(now - hour, 30)}, .heldCap = 120};
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 120);
    EXPECT_EQ(scene.snapshot().meters.front().used, 0.25);
    scene.gauge = reading(now, {{"five_hour", told(50, now + hour)}});
    EXPECT_EQ(scene.snapshot().sessionCapInLogUnits, 60);
    for (const double unsound : {0.0, -1.0}) {
        scene = {.events = {spent(now - hour, 30)}, .heldCap = unsound};
        EXPECT_FALSE(scene.snapshot().sessionCapInLogUnits) << unsound;
    }
}

// The sessions of the week.

TEST(WeekSessions, EndInTheWeekEvenWhereTheyBeganBefore) {
    const auto sessionsEnding = [](double afterWeekStart) {
        return Scene{.events = {spent(now - week + (afterWeekStart - 5 * hour), 3)}}.snapshot().weekSessions.size();
    };
    EXPECT_EQ(sessionsEnding(1), 1U);
    EXPECT_EQ(sessionsEnding(0), 1U);
    EXPECT_EQ(sessionsEnding(-1), 0U);
}

TEST(WeekSessions, AreInLogUnitsWhereNothingTellsTheCap) {
    const Scene scene{.events = {spent(now - 12 * hour, 3), spent(now - hour, 4, ModelClass::sonnet)}};
    const auto sessions = scene.snapshot().weekSessions;
    ASSERT_EQ(sessions.size(), 2U);
    EXPECT_EQ(sessions[0], (UsageModel::SessionBlock{.start = now - 12 * hour,
                                                     .end = now - 7 * hour,
                                                     .usedFraction = 3,
                                                     .byModelClass = {{ModelClass::opus, 3.0}},
                                                     .isCurrent = false}));
    EXPECT_TRUE(sessions[1].isCurrent);
}

TEST(WeekSessions, AreScaledByTheCapWithAllTheirModels) {
    const Scene scene{.events = {spent(now - hour, 3), spent(now - hour, 1, ModelClass::sonnet)}, .heldCap = 8};
    const auto sessions = scene.snapshot().weekSessions;
    EXPECT_EQ(sessions[0].usedFraction, 0.5);
    EXPECT_EQ(sessions[0].byModelClass,
              (UsageModel::EnumMap<ModelClass, double>{{ModelClass::opus, 0.375}, {ModelClass::sonnet, 0.125}}));
}

TEST(WeekSessions, ACeilingMakesWhatWasSpentByThenFull) {
    const Scene scene{.events = {spent(now - 12 * hour, 3), spent(now - 10 * hour, 1), spent(now - 8 * hour, 4)},
                      .anchors = {sessionFull(now - 9 * hour)},
                      .heldCap = 100};
    EXPECT_EQ(scene.snapshot().weekSessions[0].usedFraction, 2);
}

TEST(WeekSessions, AnAnchorThatMakesALogUnitWorthOneCountsAsNone) {
    const Scene scene{.events = {spent(now - 12 * hour, 2)}, .anchors = {sessionAt(now - 9 * hour, 2.0)}, .heldCap = 8};
    EXPECT_EQ(scene.snapshot().weekSessions[0].usedFraction, 0.25);
}

// What binds, and what is advised.

TEST(Binding, IsWhatRunsOutFirst) {
    // The session is at 95 % after an hour, the week at 50 % after six days.
    const Scene scene{.events = {spent(now - 0.5 * hour, 10)},
                      .gauge =
                          reading(now, {{"five_hour", told(95, now + 4 * hour)}, {"seven_day", told(50, now + day)}})};
    const UsageSnapshot snapshot = scene.snapshot();
    EXPECT_EQ(snapshot.binding, WindowKind::session5h);
    EXPECT_EQ(snapshot.bindingProjection, snapshot.projections[0]);
    EXPECT_TRUE(snapshot.bindingProjection.willBreachBeforeReset);
    EXPECT_EQ(snapshot.verdict.headline, "Session limit in ~3m");
    EXPECT_EQ(snapshot.verdict.subtext, "A short pause until the 5-hour window resets in 4h.");
    EXPECT_EQ(snapshot.verdict.severity, UsageModel::Severity::red);
    ASSERT_TRUE(snapshot.recommendation);
    EXPECT_EQ(snapshot.recommendation->kind, Recommendation::Kind::easeOff);
}

TEST(Binding, IsElseWhatEndsHighest) {
    const UsageSnapshot snapshot =
        Scene{.gauge = reading(now, {{"five_hour", told(1, now + 4 * hour)}, {"seven_day", told(50, now + day)}})}
            .snapshot();
    EXPECT_EQ(snapshot.binding, WindowKind::weeklyAll);
    EXPECT_EQ(snapshot.bindingProjection, snapshot.projections[1]);
    EXPECT_EQ(snapshot.verdict.subtext, "Projected to reach about 50% by reset — with headroom.");
}

/// Three turns of Sonnet a quarter of an hour ago, in a week that is nearly over with much to spare.
Scene withRoom() {
    Scene scene{.gauge = reading(now, {{"five_hour", told(10, now + hour)}, {"seven_day", told(40, now + day)}})};
    for (const double age : {903.0, 902.0, 901.0}) scene.events.push_back(spent(now - age, 1, ModelClass::sonnet));
    scene.weights.classMultiplier = UsageModel::CategoryWeights::pricePriors();
    return scene;
}

TEST(Advised, IsWhatTheRoomAllows) {
    const auto advice = withRoom().snapshot().recommendation;
    ASSERT_TRUE(advice);
    EXPECT_EQ(advice->title, "Room to move up to Fable");
    EXPECT_EQ(advice->command, "/model fable");
    EXPECT_EQ(advice->detail.substr(0, 61), "You're on Sonnet. This week lands at 40% at this pace; this t");
    EXPECT_TRUE(advice->detail.ends_with("% — and every other window stays inside too."));
}

TEST(Advised, IsNothingWhereTwoSessionsDisagree) {
    Scene scene = withRoom();
    scene.events[0].sessionId = "b";
    scene.events[0].modelClass = ModelClass::opus;
    EXPECT_EQ(scene.snapshot().live.sessions.size(), 2U);
    EXPECT_FALSE(scene.snapshot().recommendation);
}

TEST(Advised, IsNothingWhereNothingRuns) {
    Scene scene = withRoom();
    for (auto& event : scene.events) event.ts = event.ts - 3 * hour;
    EXPECT_FALSE(scene.snapshot().recommendation);
}

TEST(Advised, OfALowEffortIsNotThatLoweringItDoesNotDo) {
    Scene scene{.events = {spent(now - 0.5 * hour, 10, ModelClass::opus, EffortLevel::low)},
                .gauge = reading(now, {{"five_hour", told(25, now + 4 * hour)}})};
    scene.weights.classMultiplier = UsageModel::CategoryWeights::pricePriors();
    const auto advice = scene.snapshot().recommendation;
    ASSERT_TRUE(advice);
    EXPECT_EQ(advice->command, "/model sonnet");
    EXPECT_EQ(advice->detail.find("Lowering effort"), std::string::npos);
    scene.events[0].effort = EffortLevel::medium;
    EXPECT_TRUE(scene.snapshot().recommendation->detail.ends_with(" Lowering effort alone doesn't get you there."));
}

} // namespace
} // namespace UsageEngine
