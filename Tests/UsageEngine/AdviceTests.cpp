#include "UsageEngine/Advice.h"

#include <gtest/gtest.h>

#include "UsageEngine/Scene.h"
#include "UsageModel/Json.h"

namespace UsageModel {

void PrintTo(const Recommendation& advice, std::ostream* out) {
    *out << Json::toText(Json::encode(advice));
}

} // namespace UsageModel

namespace UsageEngine {
namespace {

using UsageModel::EffortLevel;
using UsageModel::LiveModel;
using UsageModel::ModelClass;
using UsageModel::Recommendation;
using UsageModel::WhatIfSpace;
using UsageModel::WindowKind;

constexpr UsageModel::Date now = sunday;

WhatIfSpace spaceOf(ModelClass modelClass, std::optional<EffortLevel> effort, double outputShare) {
    return {.byFamily = {{modelClass, 1.0}},
            .familyMultiplier = UsageModel::CategoryWeights::pricePriors(),
            .outputShare = outputShare,
            .effortMix = {},
            .currentEffort = effort,
            .effortMultiplier = UsageModel::effortOutputPriors()};
}

/// A window that has used a part of its limit and is to end at another, in 100,000 seconds.
WindowCompute heading(WindowKind kind, double used, double endFraction, WhatIfSpace space = {}) {
    WindowCompute compute{.whatIf = std::move(space)};
    compute.state.kind = kind;
    compute.state.used = used;
    compute.state.resetsAt = now + 100000.0;
    compute.projection.window = kind;
    compute.projection.endFraction = endFraction;
    compute.projection.willBreachBeforeReset = endFraction > 1;
    return compute;
}

// Easing off.

/// Nothing to step down to: Haiku at low effort.
WhatIfSpace cheapest() {
    return spaceOf(ModelClass::haiku, EffortLevel::low, 0.5);
}

TEST(EaseOff, IsForAWindowThatRunsOutBeforeAKnownReset) {
    WindowCompute compute = heading(WindowKind::weeklyAll, 0.5, 1.2, cheapest());
    EXPECT_TRUE(Advice::easeOff(compute, now));
    compute.state.resetsAt = {};
    EXPECT_FALSE(Advice::easeOff(compute, now));
    compute = heading(WindowKind::weeklyAll, 0.5, 1.2, cheapest());
    compute.projection.willBreachBeforeReset = false;
    EXPECT_FALSE(Advice::easeOff(compute, now));
    compute = heading(WindowKind::weeklyAll, 0.5, 1.0, cheapest());
    compute.projection.willBreachBeforeReset = true;
    EXPECT_FALSE(Advice::easeOff(compute, now)) << "it lands on the limit, not beyond";
}

struct NameRow {
    WindowKind kind;
    const char* name;
};

class EaseOffOf : public testing::TestWithParam<NameRow> {};

TEST_P(EaseOffOf, ASpentWindowWaitsForItsReset) {
    const auto& [kind, name] = GetParam();
    WindowCompute compute = heading(kind, 0.98, 1.2, spaceOf(ModelClass::opus, {}, 0.5));
    compute.state.resetsAt = now + 7500.0;
    EXPECT_EQ(Advice::easeOff(compute, now),
              (Recommendation{.kind = Recommendation::Kind::easeOff,
                              .title = std::string(name) + " is spent",
                              .detail = "Nothing gets you back inside before it resets in 2h 5m. It refills then.",
                              .impact = "wait for the reset",
                              .command = {}}));
}

TEST_P(EaseOffOf, APauseIsTheLastResort) {
    const auto& [kind, name] = GetParam();
    EXPECT_EQ(
        Advice::easeOff(heading(kind, 0.5, 1.2, cheapest()), now),
        (Recommendation{.kind = Recommendation::Kind::easeOff,
                        .title = "Pause for about 7h",
                        .detail = std::string(name) +
                                  " is projected to hit 120% by reset, and no model or effort change is enough on its "
                                  "own. That break puts you back inside, if you pick up at the same pace.",
                        .impact = "avoids a lockout",
                        .command = {}}));
}

TEST_P(EaseOffOf, AChangeTellsWhereItLands) {
    const auto& [kind, name] = GetParam();
    EXPECT_EQ(
        Advice::easeOff(heading(kind, 0.5, 1.01, spaceOf(ModelClass::opus, EffortLevel::high, 1)), now),
        (Recommendation{.kind = Recommendation::Kind::easeOff,
                        .title = "Lower effort: High -> Medium",
                        .detail = std::string(name) + " is projected to hit 101% by reset; this lands it around 88%.",
                        .impact = "back inside the cap",
                        .command = "/effort medium"}));
}

INSTANTIATE_TEST_SUITE_P(Windows, EaseOffOf,
                         testing::Values(NameRow{WindowKind::session5h, "This session"},
                                         NameRow{WindowKind::weeklyAll, "This week"},
                                         NameRow{WindowKind::weeklyOpus, "Your Opus week"}));

TEST(EaseOff, HalfOfTheTimeLeftIsNoPause) {
    EXPECT_EQ(Advice::easeOff(heading(WindowKind::weeklyAll, 0.5, 2.5, cheapest()), now)->title, "This week is spent");
}

struct ChangeRow {
    const char* name;
    ModelClass model;
    std::optional<EffortLevel> effort;
    double outputShare;
    double endFraction;
    const char* title;
    const char* command;
    const char* detail;
};

class Change : public testing::TestWithParam<ChangeRow> {};

TEST_P(Change, IsToldToTheLetter) {
    const auto& row = GetParam();
    const auto advice = Advice::easeOff(
        heading(WindowKind::weeklyAll, 0.5, row.endFraction, spaceOf(row.model, row.effort, row.outputShare)), now);
    EXPECT_EQ(advice->title, row.title);
    EXPECT_EQ(advice->command, row.command);
    EXPECT_EQ(advice->detail, row.detail);
    EXPECT_EQ(advice->impact, "back inside the cap");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Change,
    testing::Values(
        ChangeRow{"an unknown effort is taken for high",
                  ModelClass::opus,
                  {},
                  1,
                  1.1,
                  "Lower effort: High -> Medium",
                  "/effort medium",
                  "This week is projected to hit 110% by reset; this lands it around 95%."},
        ChangeRow{"the level as it is shown", ModelClass::opus, EffortLevel::max, 1, 1.05,
                  "Lower effort: Max -> X-High", "/effort xhigh",
                  "This week is projected to hit 105% by reset; this lands it around 95%."},
        ChangeRow{"the text of a level as a command", ModelClass::haiku, EffortLevel::xhigh, 1, 1.1,
                  "Lower effort: X-High -> High", "/effort high",
                  "This week is projected to hit 110% by reset; this lands it around 96%."},
        ChangeRow{
            "a model where effort does nothing", ModelClass::opus, EffortLevel::high, 0, 1.1,
            "Route the rest to Sonnet", "/model sonnet",
            "This week is projected to hit 110% by reset; this lands it around 86%. Lowering effort alone doesn't "
            "get you there."},
        ChangeRow{"a model where effort cannot be lowered", ModelClass::opus, EffortLevel::low, 0, 1.1,
                  "Route the rest to Sonnet", "/model sonnet",
                  "This week is projected to hit 110% by reset; this lands it around 86%."},
        ChangeRow{"a model though effort alone would do", ModelClass::fable, EffortLevel::max, 1, 1.4,
                  "Route the rest to Opus", "/model opus",
                  "This week is projected to hit 140% by reset; this lands it around 95%."},
        ChangeRow{"both", ModelClass::sonnet, EffortLevel::xhigh, 0.5, 2.2, "Haiku at medium effort", "/model haiku",
                  "This week is projected to hit 220% by reset; this lands it around 95%. Lowering effort alone "
                  "doesn't get you there."}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(EaseOff, AResetThatIsDueStillLeavesAMinute) {
    WindowCompute compute = heading(WindowKind::weeklyAll, 0.5, 1.2, cheapest());
    compute.state.resetsAt = now + 20.0;
    EXPECT_EQ(Advice::easeOff(compute, now)->title, "Pause for about 1m");
    compute.state.resetsAt = now - 20.0;
    EXPECT_EQ(Advice::easeOff(compute, now)->title, "Pause for about 1m") << "not given up for want of time";
}

TEST(EaseOff, PercentsAreRoundedHalvesUpAndNotGrouped) {
    EXPECT_EQ(Advice::easeOff(heading(WindowKind::weeklyAll, 0.5, 1.125, cheapest()), now)->detail.substr(0, 36),
              "This week is projected to hit 113% b");
    const auto huge = Advice::easeOff(
        heading(WindowKind::weeklyAll, 0, 12345.678, spaceOf(ModelClass::fable, EffortLevel::low, 0)), now);
    EXPECT_EQ(huge->title, "This week is spent");
    WhatIfSpace free = spaceOf(ModelClass::fable, EffortLevel::low, 0);
    free.familyMultiplier = {{ModelClass::fable, 1.0}, {ModelClass::opus, 1e-5}};
    EXPECT_EQ(Advice::easeOff(heading(WindowKind::weeklyAll, 0, 12345.678, free), now)->detail,
              "This week is projected to hit 1234568% by reset; this lands it around 12%.");
}

// Spending more.

LiveModel runs(ModelClass modelClass, std::optional<EffortLevel> effort, int sessions = 1) {
    LiveModel live{.outputShare = 0.5, .weight = 1, .turns = 3, .lastTurn = now - 60.0};
    for (int i = 0; i < sessions; ++i)
        live.sessions.push_back({.modelClass = modelClass, .lastTurn = now, .weight = 1});
    live.byClass = {{modelClass, 1.0}};
    if (effort) live.byEffort = {{*effort, 1.0}};
    return live;
}

/// The first window binds.
std::optional<Recommendation> roomIn(const std::vector<WindowCompute>& computed, const LiveModel& live) {
    return Advice::spendMore({.computed = computed, .binding = computed.front(), .live = live, .now = now});
}

WindowCompute roomy(WindowKind kind, double endFraction = 0.11) {
    return heading(kind, 0.1, endFraction, spaceOf(ModelClass::opus, {}, 0));
}

struct UpgradeRow {
    const char* name;
    LiveModel live;
    double endFraction;
    const char* title;
    const char* command;
    const char* detail;
};

class SpendMore : public testing::TestWithParam<UpgradeRow> {};

TEST_P(SpendMore, IsToldToTheLetter) {
    const auto& row = GetParam();
    EXPECT_EQ(roomIn({roomy(WindowKind::weeklyAll, row.endFraction)}, row.live),
              (Recommendation{.kind = Recommendation::Kind::spendMore,
                              .title = row.title,
                              .detail = row.detail,
                              .impact = "uses the room you have",
                              .command = row.command}));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SpendMore,
    testing::Values(
        UpgradeRow{"model and effort", runs(ModelClass::sonnet, EffortLevel::high), 0.11,
                   "Room for Fable at max effort", "/model fable",
                   "You're on Sonnet at high effort. This week lands at 11% at this pace; this takes it to about 14% — "
                   "still inside."},
        UpgradeRow{"a model alone", runs(ModelClass::haiku, {}), 0.11, "Room to move up to Fable", "/model fable",
                   "You're on Haiku. This week lands at 11% at this pace; this takes it to about 20% — still inside."},
        UpgradeRow{
            "effort alone", runs(ModelClass::fable, EffortLevel::medium), 0.5, "Room to raise effort to Max",
            "/effort max",
            "You're on Fable at medium effort. This week lands at 50% at this pace; this takes it to about 73% — "
            "still inside."},
        UpgradeRow{"effort as shown", runs(ModelClass::fable, EffortLevel::high, 2), 0.7,
                   "Room to raise effort to X-High", "/effort xhigh",
                   "You're on Fable at high effort across 2 live sessions. This week lands at 70% at this pace; this "
                   "takes it to about 79% — still inside."},
        UpgradeRow{
            "sessions without an effort", runs(ModelClass::haiku, {}, 3), 0.2, "Room to move up to Opus", "/model opus",
            "You're on Haiku across 3 live sessions. This week lands at 20% at this pace; this takes it to about "
            "60% — still inside."},
        UpgradeRow{"effort in small letters", runs(ModelClass::opus, EffortLevel::xhigh), 0.625,
                   "Room to raise effort to Max", "/effort max",
                   "You're on Opus at x-high effort. This week lands at 63% at this pace; this takes it to about 69% — "
                   "still inside."}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

class SpendMoreIn : public testing::TestWithParam<NameRow> {};

TEST_P(SpendMoreIn, NamesTheWindowAndTheOthers) {
    const auto& [kind, name] = GetParam();
    std::vector<WindowCompute> computed{roomy(kind)};
    const LiveModel live = runs(ModelClass::opus, {});
    const std::string words =
        "You're on Opus. " + std::string(name) + " lands at 11% at this pace; this takes it to about 12% — ";
    EXPECT_EQ(roomIn(computed, live)->detail, words + "still inside.");
    computed.push_back(roomy(kind == WindowKind::session5h ? WindowKind::weeklyAll : WindowKind::session5h));
    EXPECT_EQ(roomIn(computed, live)->detail, words + "and every other window stays inside too.");
}

INSTANTIATE_TEST_SUITE_P(Windows, SpendMoreIn,
                         testing::Values(NameRow{WindowKind::session5h, "This session"},
                                         NameRow{WindowKind::weeklyAll, "This week"},
                                         NameRow{WindowKind::weeklyOpus, "Your Opus week"}));

TEST(SpendMore, NeedsAModelThatIsSettled) {
    LiveModel live = runs(ModelClass::sonnet, {});
    const std::vector<WindowCompute> computed{roomy(WindowKind::weeklyAll)};
    live.byClass = {{ModelClass::sonnet, 0.9}, {ModelClass::opus, 0.1}};
    EXPECT_TRUE(roomIn(computed, live));
    live.byClass = {{ModelClass::sonnet, 0.89}, {ModelClass::opus, 0.11}};
    EXPECT_FALSE(roomIn(computed, live));
    EXPECT_FALSE(roomIn(computed, runs(ModelClass::other, {}))) << "no step leads up from an unknown model";
    EXPECT_FALSE(roomIn(computed, {}));
}

TEST(SpendMore, NeedsThreeTurns) {
    LiveModel live = runs(ModelClass::sonnet, {});
    live.turns = 2;
    EXPECT_FALSE(roomIn({roomy(WindowKind::weeklyAll)}, live));
}

TEST(SpendMore, AnEffortThatIsNotSettledIsNeitherToldNorRaised) {
    LiveModel live = runs(ModelClass::fable, {});
    live.byEffort = {{EffortLevel::low, 0.89}, {EffortLevel::high, 0.11}};
    EXPECT_FALSE(roomIn({roomy(WindowKind::weeklyAll)}, live)) << "and no model lies above";
    live = runs(ModelClass::opus, {});
    live.byEffort = {{EffortLevel::low, 0.89}, {EffortLevel::high, 0.11}};
    EXPECT_EQ(roomIn({roomy(WindowKind::weeklyAll)}, live)->title, "Room to move up to Fable");
    live.byEffort = {{EffortLevel::low, 0.9}, {EffortLevel::high, 0.1}};
    EXPECT_EQ(roomIn({roomy(WindowKind::weeklyAll)}, live)->title, "Room for Fable at max effort");
}

TEST(SpendMore, EveryWindowMustAffordIt) {
    const LiveModel live = runs(ModelClass::opus, {});
    const auto with = [&](double used, double endFraction) {
        WindowCompute other = roomy(WindowKind::weeklyAll, endFraction);
        other.state.used = used;
        return roomIn({roomy(WindowKind::session5h), other}, live).has_value();
    };
    EXPECT_TRUE(with(0.25, 0.5));
    EXPECT_FALSE(with(0.25, 0.6)) << "twice the price takes it to 95 percent";
    EXPECT_FALSE(with(1.0, 1.0));
}

TEST(SpendMore, PricesAreThoseOfWhatRunsNow) {
    WindowCompute week = roomy(WindowKind::weeklyAll, 0.5);
    week.whatIf.byFamily = {{ModelClass::haiku, 1.0}};
    EXPECT_EQ(roomIn({week}, runs(ModelClass::sonnet, {}))->detail,
              "You're on Sonnet. This week lands at 50% at this pace; this takes it to about 77% — still inside.");
}

TEST(SpendMore, OfAnOpusWeekOnlyOpusIsSpent) {
    const auto advice =
        roomIn({roomy(WindowKind::weeklyOpus), roomy(WindowKind::weeklyAll)}, runs(ModelClass::haiku, {}));
    EXPECT_EQ(advice->title, "Room to move up to Sonnet") << "how much Opus a step up would be cannot be told";
    EXPECT_NE(advice->detail.find("takes it to about 10%"), std::string::npos);
}

// Which of the two.

TEST(Recommend, SavesWhereTheWindowRunsOutAndElseLooksForRoom) {
    const LiveModel live = runs(ModelClass::sonnet, {});
    const auto recommended = [&](const WindowCompute& binding) {
        const std::vector computed{binding};
        return Advice::recommend({.computed = computed, .binding = computed.front(), .live = live, .now = now});
    };
    EXPECT_EQ(recommended(heading(WindowKind::weeklyAll, 0.5, 1.2, cheapest()))->kind, Recommendation::Kind::easeOff);
    EXPECT_EQ(recommended(roomy(WindowKind::weeklyAll))->kind, Recommendation::Kind::spendMore);
    WindowCompute breaching = roomy(WindowKind::weeklyAll);
    breaching.projection.willBreachBeforeReset = true;
    EXPECT_FALSE(recommended(breaching)) << "what is to be saved is not spent";
    WindowCompute unsure = heading(WindowKind::weeklyAll, 0.5, 1.2, cheapest());
    unsure.projection.willBreachBeforeReset = false;
    EXPECT_FALSE(recommended(unsure)) << "nor is there room where it ends beyond the limit";
}

} // namespace
} // namespace UsageEngine
