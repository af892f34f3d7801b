#include "UsageEngine/ThresholdAlerts.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "UsageEngine/Turns.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UsageModel::Date;
using UsageModel::WindowKind;
using UsageModel::WindowState;
namespace Json = UsageModel::Json;

using enum WindowKind;

WindowState meter(WindowKind kind, double used, Date windowStart = sunday) {
    return {.kind = kind, .used = used, .windowStart = windowStart, .confidence = {.anchored = true}};
}

/// "session5h 95" for each alert.
std::vector<std::string> told(ThresholdAlerts& machine, const std::vector<WindowState>& meters,
                              std::optional<Date> snoozedUntil = {}) {
    std::vector<std::string> names;
    for (const ThresholdAlert& alert :
         machine.update({.meters = meters, .now = sunday + hour, .snoozedUntil = snoozedUntil})) {
        names.push_back(std::string(text(alert.window)) + " " + std::to_string(alert.threshold));
    }
    return names;
}

struct LevelRow : TestSupport::Named {
    double used;
    std::vector<std::string> told;
};

class ReachedLevel : public testing::TestWithParam<LevelRow> {};

TEST_P(ReachedLevel, IsTold) {
    ThresholdAlerts machine;
    EXPECT_EQ(told(machine, {meter(weeklyAll, GetParam().used)}), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(Fractions, ReachedLevel,
                         testing::Values(LevelRow{"nothing", 0, {}}, LevelRow{"just below", 0.89999, {}},
                                         LevelRow{"exactly 90", 0.9, {"weeklyAll 90"}},
                                         LevelRow{"exactly 95", 0.95, {"weeklyAll 95"}},
                                         LevelRow{"between", 0.97, {"weeklyAll 95"}},
                                         LevelRow{"exactly 99", 0.99, {"weeklyAll 99"}},
                                         LevelRow{"beyond the limit", 1.5, {"weeklyAll 99"}},
                                         LevelRow{"endless", HUGE_VAL, {"weeklyAll 99"}}, LevelRow{"negative", -1, {}},
                                         LevelRow{"no number", std::numeric_limits<double>::quiet_NaN(), {}}),
                         TestSupport::rowName);

TEST(ThresholdAlerts, CarryWhatTheMeterShows) {
    ThresholdAlerts machine;
    WindowState opus = meter(weeklyOpus, 0.96);
    opus.resetsAt = sunday + day;
    const std::vector<WindowState> meters{opus};
    EXPECT_THAT(
        machine.update({.meters = meters, .now = sunday}),
        ElementsAre(ThresholdAlert{.window = weeklyOpus, .threshold = 95, .used = 0.96, .resetsAt = sunday + day}));
}

TEST(ThresholdAlerts, EachLevelIsToldOnceInAnEpisode) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {meter(session5h, 0.91)}), ElementsAre("session5h 90"));
    EXPECT_THAT(told(machine, {meter(session5h, 0.93)}), IsEmpty());
    EXPECT_THAT(told(machine, {meter(session5h, 0.2)}), IsEmpty());
    EXPECT_THAT(told(machine, {meter(session5h, 0.92)}), IsEmpty()) << "a fall re-arms nothing";
    EXPECT_THAT(told(machine, {meter(session5h, 0.995)}), ElementsAre("session5h 99"));
    EXPECT_THAT(told(machine, {meter(session5h, 0.96)}), IsEmpty()) << "a lower level is passed";
    EXPECT_EQ(machine.fired(session5h), 99);
}

TEST(ThresholdAlerts, AJumpIsToldByItsHighestLevel) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.85)}), IsEmpty());
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.97)}), ElementsAre("weeklyAll 95"));
}

TEST(ThresholdAlerts, WithoutAnOfficialReadingNothingIsEvenSeen) {
    ThresholdAlerts machine;
    WindowState estimated = meter(session5h, 0.99);
    estimated.confidence.anchored = false;
    EXPECT_THAT(told(machine, {estimated}), IsEmpty());
    EXPECT_THAT(machine.episodes, IsEmpty());
    EXPECT_EQ(machine.fired(session5h), 0);

    EXPECT_THAT(told(machine, {meter(session5h, 0.91)}), ElementsAre("session5h 90"));
    estimated.windowStart = sunday + week;
    EXPECT_THAT(told(machine, {estimated}), IsEmpty());
    EXPECT_EQ(machine.fired(session5h), 90) << "its episode is left alone";
}

TEST(ThresholdAlerts, AWindowSeenOnceHasAnEpisode) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.1)}), IsEmpty());
    ASSERT_TRUE(machine.episodes.contains("weeklyAll"));
    EXPECT_EQ(machine.episodes.at("weeklyAll"), (ThresholdAlerts::Episode{.windowStart = {sunday}}));
}

struct DriftRow : TestSupport::Named {
    WindowKind kind;
    double drift;
    bool isNewEpisode;
};

class WindowDrift : public testing::TestWithParam<DriftRow> {};

TEST_P(WindowDrift, EndsTheEpisodeFromHalfTheWindowOn) {
    const DriftRow& row = GetParam();
    const Date moved = sunday + row.drift;
    ThresholdAlerts machine;
    (void)told(machine, {meter(row.kind, 0.91)});
    EXPECT_EQ(!told(machine, {meter(row.kind, 0.91, moved)}).empty(), row.isNewEpisode);
    EXPECT_EQ(machine.episodes.at(std::string(text(row.kind))).windowStart,
              StoredInstant{row.isNewEpisode ? moved : sunday});
}

INSTANTIATE_TEST_SUITE_P(Drifts, WindowDrift,
                         testing::Values(DriftRow{{"session by seconds"}, session5h, 5, false},
                                         DriftRow{{"session by 8999"}, session5h, 8999, false},
                                         DriftRow{{"session by 9000"}, session5h, 9000, true},
                                         DriftRow{{"session back by 8999"}, session5h, -8999, false},
                                         DriftRow{{"session back by 9000"}, session5h, -9000, true},
                                         DriftRow{{"week by 302399"}, weeklyAll, 302399, false},
                                         DriftRow{{"week by 302400"}, weeklyAll, 302400, true},
                                         DriftRow{{"opus by 302399"}, weeklyOpus, 302399, false},
                                         DriftRow{{"opus by 302400"}, weeklyOpus, -302400, true}),
                         TestSupport::rowName);

TEST(ThresholdAlerts, SmallDriftsDoNotAddUp) {
    ThresholdAlerts machine;
    (void)told(machine, {meter(session5h, 0.91)});
    EXPECT_THAT(told(machine, {meter(session5h, 0.91, sunday + 8000.0)}), IsEmpty());
    EXPECT_THAT(told(machine, {meter(session5h, 0.91, sunday + 8999.0)}), IsEmpty());
    EXPECT_THAT(told(machine, {meter(session5h, 0.91, sunday + 9000.0)}), ElementsAre("session5h 90"))
        << "the start that counts is the episode's own";
}

TEST(ThresholdAlerts, AResetBelowEveryLevelRearmsThemAll) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {meter(session5h, 0.99)}), ElementsAre("session5h 99"));
    EXPECT_THAT(told(machine, {meter(session5h, 0.01, sunday + 5 * hour)}), IsEmpty());
    EXPECT_EQ(machine.fired(session5h), 0);
    EXPECT_THAT(told(machine, {meter(session5h, 0.9, sunday + 5 * hour)}), ElementsAre("session5h 90"));
}

TEST(ThresholdAlerts, WindowsHaveEpisodesOfTheirOwn) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.9)}), ElementsAre("weeklyAll 90"));
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.9), meter(weeklyOpus, 0.9)}), ElementsAre("weeklyOpus 90"));
    EXPECT_EQ(machine.fired(session5h), 0);
}

TEST(ThresholdAlerts, OfOneLevelComeInTheOrderOfTheMeters) {
    ThresholdAlerts machine;
    const std::vector<WindowState> meters{meter(session5h, 0.99), meter(weeklyAll, 0.99), meter(weeklyOpus, 0.99)};
    const auto alerts = machine.update({.meters = meters, .now = sunday});
    ASSERT_EQ(alerts.size(), 3U);
    EXPECT_EQ(alerts[0].window, session5h);
    EXPECT_EQ(alerts[1].window, weeklyAll);
    EXPECT_EQ(alerts[2].window, weeklyOpus);
    for (const ThresholdAlert& alert : alerts) EXPECT_TRUE(alert.isCritical());
}

TEST(ThresholdAlerts, ComeLowestLevelFirst) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {meter(weeklyOpus, 0.99), meter(weeklyAll, 0.9), meter(session5h, 0.91)}),
                ElementsAre("weeklyAll 90", "session5h 90", "weeklyOpus 99"));
}

TEST(ThresholdAlerts, WhatIsReachedInASnoozeIsNeverTold) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.95)}, sunday + hour + 1.0), IsEmpty());
    EXPECT_EQ(machine.fired(weeklyAll), 95);
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.95)}), IsEmpty());
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.99)}, sunday + hour), ElementsAre("weeklyAll 99"))
        << "a higher one is, from the very end of the snooze on";
}

TEST(ThresholdAlerts, WithoutMetersOrLevelsAreSilent) {
    ThresholdAlerts machine;
    EXPECT_THAT(told(machine, {}), IsEmpty());
    ThresholdAlerts none{.thresholds = {}};
    EXPECT_THAT(told(none, {meter(weeklyAll, 1)}), IsEmpty());
    EXPECT_TRUE(none.episodes.contains("weeklyAll"));
}

TEST(ThresholdAlerts, TakeTheHighestLevelInWhateverOrderTheyWereStored) {
    ThresholdAlerts machine{.thresholds = {99, -5, 50, 0}};
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.1)}), IsEmpty()) << "a level that was never to be told";
    EXPECT_THAT(told(machine, {meter(weeklyAll, 0.6)}), ElementsAre("weeklyAll 50"));
    EXPECT_THAT(told(machine, {meter(weeklyAll, 1)}), ElementsAre("weeklyAll 99"));
}

struct WordingRow : TestSupport::Named {
    WindowKind window;
    std::int64_t threshold;
    std::optional<double> secondsToReset;
    const char* title;
    const char* body;
};

class AlertWording : public testing::TestWithParam<WordingRow> {};

TEST_P(AlertWording, NamesTheLimitAndWhatHappensAtIt) {
    const WordingRow& row = GetParam();
    ThresholdAlert alert{.window = row.window, .threshold = row.threshold};
    if (row.secondsToReset) alert.resetsAt = sunday + *row.secondsToReset;
    EXPECT_EQ(alert.title(), row.title);
    EXPECT_EQ(alert.body(sunday), row.body);
}

INSTANTIATE_TEST_SUITE_P(
    Windows, AlertWording,
    testing::Values(WordingRow{{"session"},
                               session5h,
                               90,
                               4800,
                               "90% of your session limit used",
                               "Hitting 100% pauses Claude until the 5-hour session resets in 1h 20m."},
                    WordingRow{{"week"},
                               weeklyAll,
                               95,
                               172800,
                               "95% of your weekly limit used",
                               "Hitting 100% locks you out until the weekly window resets in 2d."},
                    WordingRow{{"opus"},
                               weeklyOpus,
                               99,
                               100000,
                               "99% of your Opus weekly limit used",
                               "Hitting 100% drops Opus to Sonnet until the Opus window resets in 1d 3h."},
                    WordingRow{{"without a reset"},
                               weeklyAll,
                               90,
                               {},
                               "90% of your weekly limit used",
                               "Hitting 100% locks you out until the weekly window resets at the next reset."},
                    WordingRow{{"past the reset"},
                               session5h,
                               90,
                               -500,
                               "90% of your session limit used",
                               "Hitting 100% pauses Claude until the 5-hour session resets in 1m."}),
    TestSupport::rowName);

TEST(ThresholdAlert, IsCriticalFrom99On) {
    EXPECT_FALSE(ThresholdAlert{.threshold = 98}.isCritical());
    EXPECT_TRUE(ThresholdAlert{.threshold = 99}.isCritical());
    EXPECT_TRUE(ThresholdAlert{.threshold = 100}.isCritical());
}

TEST(ThresholdAlertsForm, HoldsLevelsAndEpisodes) {
    ThresholdAlerts machine;
    EXPECT_EQ(Json::encode(machine), nlohmann::json::parse(R"({"thresholds":[90,95,99],"episodes":{}})"));
    (void)told(machine, {meter(session5h, 0.96, Date{978307200 + 0.25})});
    const auto expected = nlohmann::json::parse(
        R"({"thresholds":[90,95,99],"episodes":{"session5h":{"windowStart":0.25,"highestFired":95}}})");
    EXPECT_EQ(Json::encode(machine), expected);
    EXPECT_EQ(Json::decode<ThresholdAlerts>(expected), machine);
}

TEST(ThresholdAlertsForm, StaysSilentAboutWhatWasToldBeforeARestart) {
    auto machine = Json::decodeText<ThresholdAlerts>(
        R"({"thresholds":[90,95,99],"episodes":{"weeklyAll":{"windowStart":794016000,"highestFired":95}}})");
    ASSERT_TRUE(machine);
    EXPECT_THAT(told(*machine, {meter(weeklyAll, 0.96)}), IsEmpty());
    EXPECT_THAT(told(*machine, {meter(weeklyAll, 0.99)}), ElementsAre("weeklyAll 99"));
}

TEST(ThresholdAlertsForm, KeepsAWindowItDoesNotKnow) {
    const auto stored =
        nlohmann::json::parse(R"({"thresholds":[90],"episodes":{"monthly":{"windowStart":5.0,"highestFired":90}}})");
    EXPECT_EQ(Json::encode(Json::decode<ThresholdAlerts>(stored)), stored);
}

class NoThresholdAlerts : public testing::TestWithParam<const char*> {};

TEST_P(NoThresholdAlerts, AreRefused) {
    EXPECT_FALSE(Json::decodeText<ThresholdAlerts>(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, NoThresholdAlerts,
    testing::Values(R"({})", R"([])", R"({"thresholds":[90]})", R"({"episodes":{}})",
                    R"({"thresholds":[0.5],"episodes":{}})", R"({"thresholds":["90"],"episodes":{}})",
                    R"({"thresholds":null,"episodes":{}})", R"({"thresholds":[90],"episodes":[]})",
                    R"({"thresholds":[90],"episodes":{"weeklyAll":{"highestFired":90}}})",
                    R"({"thresholds":[90],"episodes":{"weeklyAll":{"windowStart":5}}})",
                    R"({"thresholds":[90],"episodes":{"weeklyAll":{"windowStart":null,"highestFired":90}}})"));

} // namespace
} // namespace UsageEngine
