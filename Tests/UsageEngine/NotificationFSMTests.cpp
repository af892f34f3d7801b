#include "UsageEngine/NotificationFSM.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using UsageModel::Severity;
namespace Json = UsageModel::Json;

using enum AlertLevel;

/// One update, so many seconds after the first.
struct Step {
    double at = 0;
    bool breaching = true;
    Severity severity = Severity::amber;
    std::optional<double> secondsToEmpty;
    NotificationDecision expected;
};

constexpr NotificationDecision silent(AlertLevel level) {
    return {.level = level, .fireBanner = false};
}

constexpr NotificationDecision banner(AlertLevel level) {
    return {.level = level, .fireBanner = true};
}

void run(NotificationFSM& machine, const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        const NotificationDecision decision = machine.update({.breaching = step.breaching,
                                                              .severity = step.severity,
                                                              .secondsToEmpty = step.secondsToEmpty,
                                                              .now = sunday + step.at});
        EXPECT_EQ(decision.level, step.expected.level) << "after " << step.at << " seconds";
        EXPECT_EQ(decision.fireBanner, step.expected.fireBanner) << "after " << step.at << " seconds";
        EXPECT_EQ(machine.level, step.expected.level) << "after " << step.at << " seconds";
    }
}

struct Story : TestSupport::Named {
    std::vector<Step> steps;
    double sustainSeconds = 1800;
};

class NotificationStory : public testing::TestWithParam<Story> {};

TEST_P(NotificationStory, HasItsBanners) {
    NotificationFSM machine{.sustainSeconds = GetParam().sustainSeconds};
    run(machine, GetParam().steps);
}

INSTANTIATE_TEST_SUITE_P(
    Breaches, NotificationStory,
    testing::Values(
        Story{"nothing is going to run out",
              {{.at = 0, .breaching = false, .expected = silent(normal)},
               {.at = 9000, .breaching = false, .expected = silent(normal)}}},
        Story{"half an hour of it is worth one word",
              {{.at = 0, .expected = silent(advisory)},
               {.at = 1799, .expected = silent(advisory)},
               {.at = 1800, .expected = banner(headsUp)},
               {.at = 1801, .expected = silent(headsUp)},
               {.at = 90000, .expected = silent(headsUp)}}},
        Story{"one quiet update restarts the half hour",
              {{.at = 0, .expected = silent(advisory)},
               {.at = 1700, .breaching = false, .expected = silent(normal)},
               {.at = 1800, .expected = silent(advisory)},
               {.at = 3599, .expected = silent(advisory)},
               {.at = 3600, .expected = banner(headsUp)}}},
        Story{"a new breach is told anew",
              {{.at = 0, .expected = silent(advisory)},
               {.at = 1800, .expected = banner(headsUp)},
               {.at = 1830, .breaching = false, .expected = silent(normal)},
               {.at = 1860, .expected = silent(advisory)},
               {.at = 3660, .expected = banner(headsUp)}}},
        Story{"red is critical at first sight",
              {{.at = 0, .severity = Severity::red, .expected = banner(critical)},
               {.at = 30, .severity = Severity::red, .expected = silent(critical)}}},
        Story{"red without a breach is nothing",
              {{.at = 0,
                .breaching = false,
                .severity = Severity::red,
                .secondsToEmpty = 5,
                .expected = silent(normal)}}},
        Story{"a day to the end is not yet critical",
              {{.at = 0, .secondsToEmpty = 86400, .expected = silent(advisory)},
               {.at = 30, .secondsToEmpty = 86399.999, .expected = banner(critical)}}},
        Story{"past the end is critical", {{.at = 0, .secondsToEmpty = -5, .expected = banner(critical)}}},
        Story{"without an end only red is critical",
              {{.at = 0, .severity = Severity::green, .expected = silent(advisory)},
               {.at = 1e6, .severity = Severity::amber, .expected = banner(headsUp)}}},
        Story{"each of the two levels has its banner",
              {{.at = 0, .expected = silent(advisory)},
               {.at = 1800, .expected = banner(headsUp)},
               {.at = 1830, .severity = Severity::red, .expected = banner(critical)},
               {.at = 1860, .severity = Severity::red, .expected = silent(critical)}}},
        Story{"a fall and rise inside one breach stays silent",
              {{.at = 0, .severity = Severity::red, .expected = banner(critical)},
               {.at = 30, .expected = silent(advisory)},
               {.at = 1800, .expected = silent(headsUp)},
               {.at = 1830, .severity = Severity::red, .expected = silent(critical)}}},
        Story{"with nothing to wait for a breach speaks at once",
              {{.at = 0, .expected = banner(headsUp)}, {.at = 30, .expected = silent(headsUp)}},
              0},
        Story{"a clock set back makes the breach wait",
              {{.at = 0, .expected = silent(advisory)},
               {.at = -7200, .expected = silent(advisory)},
               {.at = 1800, .expected = banner(headsUp)}}},
        Story{"an end that is no number is none",
              {{.at = 0, .secondsToEmpty = std::numeric_limits<double>::quiet_NaN(), .expected = silent(advisory)}}},
        Story{"an end that never comes is none",
              {{.at = 0, .secondsToEmpty = std::numeric_limits<double>::infinity(), .expected = silent(advisory)}}}),
    TestSupport::rowName);

TEST(AlertLevel, RisesInItsOrder) {
    EXPECT_LT(normal, advisory);
    EXPECT_LT(advisory, headsUp);
    EXPECT_LT(headsUp, critical);
    EXPECT_LE(critical, critical);
    EXPECT_GT(critical, normal);
    EXPECT_GE(headsUp, headsUp);
}

TEST(NotificationFSM, StartsQuietWithTheValuesItIsBuiltWith) {
    const NotificationFSM machine{.sustainSeconds = 5, .criticalWithinSeconds = 7};
    EXPECT_EQ(machine.sustainSeconds, 5);
    EXPECT_EQ(machine.criticalWithinSeconds, 7);
    EXPECT_EQ(machine.level, normal);
    EXPECT_EQ(machine.highestFired, normal);
    EXPECT_FALSE(machine.overSince);
    EXPECT_FALSE(machine.snoozeUntil);
}

TEST(NotificationFSM, AnInfiniteSpanMakesEveryKnownEndCriticalAndNoUnknownOneMoreThanThat) {
    NotificationFSM machine{.criticalWithinSeconds = std::numeric_limits<double>::max()};
    run(machine,
        {{.at = 0, .expected = silent(advisory)}, {.at = 1, .secondsToEmpty = 1e9, .expected = banner(critical)}});
}

TEST(Snooze, HoldsABannerBackForGood) {
    NotificationFSM machine;
    machine.snooze(sunday + hour);
    run(machine, {{.at = 0, .expected = silent(advisory)},
                  {.at = 1800, .expected = silent(headsUp)},
                  {.at = 3600, .expected = silent(headsUp)}});
    EXPECT_EQ(machine.highestFired, headsUp) << "it counts as announced";
}

TEST(Snooze, HoldsBackNothingFromItsEndOn) {
    NotificationFSM machine;
    machine.snooze(sunday + hour);
    run(machine, {{.at = 3599.9, .severity = Severity::amber, .expected = silent(advisory)},
                  {.at = 3600, .severity = Severity::red, .expected = banner(critical)}});
}

TEST(Snooze, LetsAHigherLevelSpeakAfterwards) {
    NotificationFSM machine;
    machine.snooze(sunday + 1801);
    run(machine, {{.at = 0, .expected = silent(advisory)},
                  {.at = 1800, .expected = silent(headsUp)},
                  {.at = 1830, .severity = Severity::red, .expected = banner(critical)}});
}

TEST(Snooze, OutlastsTheBreachAndIsReplacedByTheNext) {
    NotificationFSM machine;
    machine.snooze(sunday + hour);
    run(machine, {{.at = 0, .breaching = false, .expected = silent(normal)},
                  {.at = 30, .severity = Severity::red, .expected = silent(critical)},
                  {.at = 60, .breaching = false, .expected = silent(normal)}});
    EXPECT_EQ(machine.snoozeUntil, StoredInstant{sunday + hour});
    machine.snooze(sunday);
    EXPECT_EQ(machine.snoozeUntil, StoredInstant{sunday});
    run(machine, {{.at = 90, .severity = Severity::red, .expected = banner(critical)}});
}

TEST(NotificationFSMForm, LeavesOutWhatIsAbsent) {
    EXPECT_EQ(Json::encode(NotificationFSM{}), nlohmann::json::parse(R"({"sustainSeconds":1800,
        "criticalWithinSeconds":86400,"level":0,"highestFired":0})"));
}

TEST(NotificationFSMForm, CountsInstantsFromTheYear2001) {
    const NotificationFSM machine{.sustainSeconds = 60,
                                  .level = critical,
                                  .overSince = StoredInstant{UsageModel::Date{978307200 + 5.5}},
                                  .highestFired = headsUp,
                                  .snoozeUntil = StoredInstant{UsageModel::Date{0}}};
    EXPECT_EQ(Json::encode(machine), nlohmann::json::parse(R"({"sustainSeconds":60,"criticalWithinSeconds":86400,
        "level":3,"overSince":5.5,"highestFired":2,"snoozeUntil":-978307200})"));
    EXPECT_EQ(Json::decode<NotificationFSM>(Json::encode(machine)), machine);
}

TEST(NotificationFSMForm, OfAnyPresentInstantComesBackToTheLastBit) {
    for (const double seconds : {1772323200.1, 1790000000.123456, 1999999999.999999, 978307200.7}) {
        const NotificationFSM machine{.overSince = StoredInstant{UsageModel::Date{seconds}}};
        EXPECT_EQ(Json::decodeText<NotificationFSM>(Json::toText(Json::encode(machine))), machine) << seconds;
    }
}

TEST(NotificationFSMForm, GoesOnWhereItWasStored) {
    NotificationFSM before;
    run(before, {{.at = 0, .expected = silent(advisory)}, {.at = 1000, .expected = silent(advisory)}});
    auto after = Json::decodeText<NotificationFSM>(Json::toText(Json::encode(before)));
    ASSERT_TRUE(after);
    run(*after, {{.at = 1800, .expected = banner(headsUp)}});
    after = Json::decodeText<NotificationFSM>(Json::toText(Json::encode(*after)));
    ASSERT_TRUE(after);
    run(*after, {{.at = 1830, .expected = silent(headsUp)}});
}

TEST(NotificationFSMForm, OfWhatIsNoInstantIsRefused) {
    for (const double seconds :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), -HUGE_VAL}) {
        const NotificationFSM machine{.overSince = StoredInstant{UsageModel::Date{seconds}}};
        EXPECT_THROW((void)Json::encode(machine), Json::Error) << seconds;
    }
}

struct Form : TestSupport::Named {
    const char* text;
    bool isRead;
};

class StoredMachine : public testing::TestWithParam<Form> {};

TEST_P(StoredMachine, IsReadOrRefused) {
    EXPECT_EQ(Json::decodeText<NotificationFSM>(GetParam().text).has_value(), GetParam().isRead);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, StoredMachine,
    testing::Values(
        Form{"whole", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":0,"highestFired":3})", true},
        Form{"null for an optional", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":0,"highestFired":3,
             "overSince":null,"snoozeUntil":null})",
             true},
        Form{"a member more", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":0,"highestFired":3,"x":[]})",
             true},
        Form{"a level as 2.0", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":2.0,"highestFired":3})", true},
        Form{"no level", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"highestFired":3})", false},
        Form{"no highest", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":0})", false},
        Form{"no span", R"({"criticalWithinSeconds":2,"level":0,"highestFired":3})", false},
        Form{"no critical span", R"({"sustainSeconds":1,"level":0,"highestFired":3})", false},
        Form{"a null level", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":null,"highestFired":3})", false},
        Form{"a level too high", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":4,"highestFired":3})", false},
        Form{"a level too low", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":0,"highestFired":-1})", false},
        Form{"half a level", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":0.5,"highestFired":3})", false},
        Form{"a huge level", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":1e300,"highestFired":3})", false},
        Form{"a level by name", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":"normal","highestFired":3})",
             false},
        Form{"an instant as text", R"({"sustainSeconds":1,"criticalWithinSeconds":2,"level":0,"highestFired":3,
             "overSince":"2026-03-01"})",
             false}),
    TestSupport::rowName);

} // namespace
} // namespace UsageEngine
