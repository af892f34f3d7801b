#include "UsageEngine/BindingResolver.h"

#include <limits>

#include <gtest/gtest.h>

#include "UsageEngine/Turns.h"
#include "UsageModel/Rows.h"

namespace UsageEngine {
namespace {

using BindingResolver::Input;
using BindingResolver::resolve;
using BindingResolver::verdict;
using UsageModel::Consequence;
using UsageModel::Date;
using UsageModel::Severity;
using UsageModel::Verdict;
using UsageModel::WindowKind;

constexpr double infinity = std::numeric_limits<double>::infinity();
const Date now = sunday;

/// A window that breaches in so many seconds; without any at a time that is not known.
Input breaching(WindowKind kind, std::optional<double> in, std::optional<double> resetsIn = week) {
    Input input{.state = {.kind = kind}, .projection = {.window = kind, .willBreachBeforeReset = true}};
    if (in) input.projection.likelyEmpty = now + *in;
    if (resetsIn) input.state.resetsAt = now + *resetsIn;
    return input;
}

Input landing(WindowKind kind, double endFraction) {
    return {.state = {.kind = kind, .resetsAt = now + week},
            .projection = {.window = kind, .endFraction = endFraction}};
}

constexpr auto session = WindowKind::session5h;
constexpr auto weekly = WindowKind::weeklyAll;
constexpr auto opus = WindowKind::weeklyOpus;

struct BindingRow : TestSupport::Named {
    std::vector<Input> inputs;
    WindowKind binding;
};

class BindingTest : public testing::TestWithParam<BindingRow> {};

TEST_P(BindingTest, IsTheFirstToStopTheUser) {
    EXPECT_EQ(resolve(GetParam().inputs), GetParam().binding);
}

Input breachingAndLanding(WindowKind kind, double in, double endFraction) {
    Input input = breaching(kind, in);
    input.projection.endFraction = endFraction;
    return input;
}

/// Empty before its reset by a forecast that raises no alarm.
Input emptyWithoutABreach(WindowKind kind, double in, double endFraction) {
    Input input = breachingAndLanding(kind, in, endFraction);
    input.projection.willBreachBeforeReset = false;
    return input;
}

INSTANTIATE_TEST_SUITE_P(
    Windows, BindingTest,
    testing::Values(
        BindingRow{"no window", {}, weekly}, BindingRow{"one window", {landing(opus, 0.1)}, opus},
        BindingRow{"the week before the session",
                   {breaching(session, 3 * hour, 4 * hour), breaching(weekly, 2 * hour, 3 * day)},
                   weekly},
        BindingRow{"the session before the week", {breaching(session, hour), breaching(weekly, 2 * hour)}, session},
        BindingRow{"the last of three",
                   {breaching(session, 3 * hour), breaching(weekly, 2 * hour), breaching(opus, hour)},
                   opus},
        BindingRow{"all at once", {breaching(session, hour), breaching(weekly, hour), breaching(opus, hour)}, session},
        BindingRow{"two at once", {landing(session, 3), breaching(weekly, hour), breaching(opus, hour)}, weekly},
        BindingRow{"a known time before an unknown",
                   {breaching(session, {}), breaching(weekly, 1000 * day), breaching(opus, {})},
                   weekly},
        BindingRow{"a known time before a later unknown", {breaching(weekly, day), breaching(opus, {})}, weekly},
        BindingRow{"unknown times only", {landing(session, 3), breaching(weekly, {}), breaching(opus, {})}, weekly},
        BindingRow{"a time that has passed", {breaching(session, 0.0), breaching(weekly, -hour)}, weekly},
        BindingRow{"a breach before a fuller end", {landing(session, 3), breachingAndLanding(opus, day, 1.1)}, opus},
        BindingRow{"breaches go by time and not by their ends",
                   {breachingAndLanding(session, 2 * hour, 3), breachingAndLanding(weekly, hour, 1.1)},
                   weekly},
        BindingRow{"the fullest end", {landing(session, 0.4), landing(weekly, 0.7), landing(opus, 0.6)}, weekly},
        BindingRow{"a fuller end by a hair", {landing(session, 0.7), landing(weekly, 0.7000000001)}, weekly},
        BindingRow{"equal ends", {landing(session, 0.5), landing(weekly, 0.5), landing(opus, 0.5)}, session},
        BindingRow{
            "equal ends behind a lower", {landing(session, 0.4), landing(weekly, 0.5), landing(opus, 0.5)}, weekly},
        BindingRow{"ends below nothing", {landing(session, -2), landing(weekly, -1), landing(opus, -3)}, weekly},
        BindingRow{"an endless end", {landing(session, 5), landing(opus, infinity)}, opus},
        BindingRow{"empty without a breach goes by its end",
                   {emptyWithoutABreach(session, hour, 0.4), landing(weekly, 0.5)},
                   weekly}),
    TestSupport::rowName);

TEST(Binding, IsTheStatesWindow) {
    Input odd = landing(opus, 0.5);
    odd.projection.window = session;
    EXPECT_EQ(resolve(std::vector{odd}), opus);
    odd.projection.willBreachBeforeReset = true;
    EXPECT_EQ(resolve(std::vector{odd}), opus);
    EXPECT_EQ(verdict(session, std::vector{odd}, now).subtext, "Nothing projected to run out before reset.");
}

Verdict onTrack(std::string_view subtext) {
    return {.headline = "On track",
            .consequence = Consequence::fine,
            .severity = Severity::green,
            .subtext = std::string(subtext)};
}

TEST(Verdict, WithoutTheBindingWindowIsOnTrack) {
    EXPECT_EQ(verdict(weekly, {}, now), onTrack("Nothing projected to run out before reset."));
    EXPECT_EQ(verdict(weekly, std::vector{breaching(session, hour)}, now),
              onTrack("Nothing projected to run out before reset."));
}

TEST(Verdict, ASessionThatRunsOutIsAPause) {
    EXPECT_EQ(verdict(session, std::vector{breaching(session, 2.5 * hour, 4 * hour)}, now),
              (Verdict{.headline = "Session limit in ~2h 30m",
                       .consequence = Consequence::sessionPause,
                       .severity = Severity::amber,
                       .subtext = "A short pause until the 5-hour window resets in 4h."}));
}

TEST(Verdict, AWeekThatRunsOutIsALockout) {
    EXPECT_EQ(verdict(weekly, std::vector{breaching(weekly, day, 3 * day + hour)}, now),
              (Verdict{.headline = "Locked out in ~1d",
                       .consequence = Consequence::lockout,
                       .severity = Severity::red,
                       .subtext = "Full lockout until reset in 3d 1h. Ease off to make it."}));
}

TEST(Verdict, AnOpusWeekThatRunsOutIsAStepDown) {
    EXPECT_EQ(verdict(opus, std::vector{breaching(opus, 45 * 60, 2 * day)}, now),
              (Verdict{.headline = "Opus dry in ~45m",
                       .consequence = Consequence::downgradeToSonnet,
                       .severity = Severity::amber,
                       .subtext = "Drops to Sonnet-only, then resets in 2d. Weekly lockout not projected."}));
}

struct SeverityRow : TestSupport::Named {
    WindowKind kind;
    double in;
    Severity severity;
};

class SeverityTest : public testing::TestWithParam<SeverityRow> {};

TEST_P(SeverityTest, FollowsWhatTheLimitCosts) {
    const Verdict told = verdict(GetParam().kind, std::vector{breaching(GetParam().kind, GetParam().in)}, now);
    EXPECT_EQ(told.severity, GetParam().severity);
}

INSTANTIATE_TEST_SUITE_P(Breaches, SeverityTest,
                         testing::Values(SeverityRow{"a session in half an hour", session, 1800, Severity::amber},
                                         SeverityRow{"a session a little sooner", session, 1799.9, Severity::red},
                                         SeverityRow{"a session now", session, 0, Severity::red},
                                         SeverityRow{"a session in the past", session, -day, Severity::red},
                                         SeverityRow{"a week in days", weekly, 6 * day, Severity::red},
                                         SeverityRow{"a week now", weekly, 0, Severity::red},
                                         SeverityRow{"opus now", opus, 0, Severity::amber},
                                         SeverityRow{"opus in days", opus, 6 * day, Severity::amber}),
                         TestSupport::rowName);

TEST(Verdict, AResetThatIsNotKnownIsADash) {
    const auto subtext = [](WindowKind kind) {
        return verdict(kind, std::vector{breaching(kind, hour, std::nullopt)}, now).subtext;
    };
    EXPECT_EQ(subtext(session), "A short pause until the 5-hour window resets in —.");
    EXPECT_EQ(subtext(weekly), "Full lockout until reset in —. Ease off to make it.");
    EXPECT_EQ(subtext(opus), "Drops to Sonnet-only, then resets in —. Weekly lockout not projected.");
}

TEST(Verdict, TimesThatHavePassedAreAMinute) {
    const Verdict told = verdict(session, std::vector{breaching(session, -day, -hour)}, now);
    EXPECT_EQ(told.headline, "Session limit in ~1m");
    EXPECT_EQ(told.subtext, "A short pause until the 5-hour window resets in 1m.");
}

TEST(Verdict, ABreachAtNoKnownTimeIsOnTrack) {
    Input input = breaching(weekly, {});
    input.projection.endFraction = 1.2;
    EXPECT_EQ(verdict(weekly, std::vector{input}, now),
              onTrack("Projected to reach about 120% by reset — with headroom."));
}

TEST(Verdict, AnEmptyTimeWithoutABreachIsOnTrack) {
    EXPECT_EQ(verdict(session, std::vector{emptyWithoutABreach(session, hour, 0.9)}, now),
              onTrack("Projected to reach about 90% by reset — with headroom."));
}

TEST(Verdict, OfTwoInputsOfOneWindowTheFirst) {
    const std::vector inputs{landing(session, 0.1), landing(weekly, 0.2), landing(weekly, 0.3)};
    EXPECT_EQ(verdict(weekly, inputs, now), onTrack("Projected to reach about 20% by reset — with headroom."));
}

struct HeadroomRow {
    double endFraction;
    const char* percent;
};

class HeadroomTest : public testing::TestWithParam<HeadroomRow> {};

TEST_P(HeadroomTest, IsToldInWholePercent) {
    EXPECT_EQ(verdict(weekly, std::vector{landing(weekly, GetParam().endFraction)}, now),
              onTrack("Projected to reach about " + std::string(GetParam().percent) + "% by reset — with headroom."));
}

INSTANTIATE_TEST_SUITE_P(Ends, HeadroomTest,
                         testing::Values(HeadroomRow{0, "0"}, HeadroomRow{0.004, "0"}, HeadroomRow{0.005, "1"},
                                         HeadroomRow{0.7, "70"}, HeadroomRow{0.995, "100"}, HeadroomRow{1.5, "150"},
                                         HeadroomRow{-0.004, "0"}, HeadroomRow{-0.5, "0"}, HeadroomRow{-1e300, "0"},
                                         HeadroomRow{12345.67, "1234567"}));

} // namespace
} // namespace UsageEngine
