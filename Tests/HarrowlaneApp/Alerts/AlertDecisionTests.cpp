#include "HarrowlaneApp/Alerts/AlertDecision.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Alerts/Snapshots.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UsageEngine::AlertLevel;
using UsageModel::Date;
using UsageModel::UsageSnapshot;
using enum UsageModel::WindowKind;

/// A bundled program whose banners are allowed, refresh by refresh.
struct Refreshes {
    PersistedState state;
    AlertSettings settings;
    Bundle bundle = Bundle::present;
    AuthorizationStatus authorization = AuthorizationStatus::authorized;

    /// The titles of the banners.
    std::vector<std::string> titles(const UsageSnapshot& snapshot) {
        std::vector<std::string> all;
        for (const Banner& banner : banners(snapshot)) all.push_back(banner.title);
        return all;
    }
    std::vector<Banner> banners(const UsageSnapshot& snapshot) {
        AlertDecision decision = decide({.state = state,
                                         .snapshot = snapshot,
                                         .settings = settings,
                                         .bundle = bundle,
                                         .authorization = authorization});
        state = decision.state;
        return decision.banners;
    }
};

TEST(Decide, StartsWithHalfAnHourADayAndThreeLevels) {
    const PersistedState fresh;
    EXPECT_EQ(fresh.fsm.sustainSeconds, 1800);
    EXPECT_EQ(fresh.fsm.criticalWithinSeconds, 86400);
    EXPECT_THAT(fresh.thresholds.thresholds, ElementsAre(90, 95, 99));
    EXPECT_THAT(fresh.thresholds.episodes, IsEmpty());
}

TEST(Decide, IsSilentWhileAllIsWell) {
    Refreshes run;
    EXPECT_THAT(run.titles(calm()), IsEmpty());
    EXPECT_EQ(run.state, PersistedState{});
}

TEST(Decide, IsSilentWhileWarmingUp) {
    Refreshes run;
    EXPECT_THAT(run.titles(UsageSnapshot::warmingUp(moment)), IsEmpty());
}

TEST(Decide, SpeaksOfABreachOfHalfAnHour) {
    Refreshes run;
    EXPECT_THAT(run.titles(breaching()), IsEmpty());
    EXPECT_THAT(run.titles(breaching(moment + 1799.0)), IsEmpty());
    EXPECT_THAT(run.banners(breaching(moment + 1800.0)),
                ElementsAre(Banners::pace(breaching(moment + 1800.0), AlertLevel::headsUp)));
    EXPECT_THAT(run.titles(breaching(moment + 1830.0)), IsEmpty());
}

TEST(Decide, SpeaksOfARedVerdictAtOnce) {
    Refreshes run;
    EXPECT_THAT(run.banners(red()), ElementsAre(Banners::pace(red(), AlertLevel::critical)));
}

TEST(Decide, CountsTheTimeLeftFromTheSnapshotsOwnClock) {
    UsageSnapshot snapshot = breaching();
    snapshot.bindingProjection.likelyEmpty = moment + 86400.0;
    Refreshes onTheDay;
    EXPECT_THAT(onTheDay.titles(snapshot), IsEmpty());
    snapshot.bindingProjection.likelyEmpty = moment + 86399.0;
    Refreshes within;
    EXPECT_THAT(within.titles(snapshot), ElementsAre("Weekly runs out Tuesday"));
    snapshot.bindingProjection.likelyEmpty = moment - 5.0;
    Refreshes past;
    EXPECT_THAT(past.titles(snapshot), ElementsAre("Weekly runs out Tuesday"));
}

TEST(Decide, WithoutATimeLeftOnlyWaitsForTheHalfHour) {
    Refreshes run;
    UsageSnapshot snapshot = breaching();
    snapshot.bindingProjection.earliestEmpty = moment + 60.0;
    EXPECT_THAT(run.titles(snapshot), IsEmpty());
    EXPECT_EQ(run.state.fsm.level, AlertLevel::advisory);
}

TEST(Decide, SpeaksOfTheForecastFirstAndThenOfLevelsLowestFirst) {
    Refreshes run;
    EXPECT_THAT(
        run.titles(metered({meter(weeklyAll, 0.99), meter(session5h, 0.91)}, red())),
        ElementsAre("Weekly runs out Tuesday", "90% of your session limit used", "99% of your weekly limit used"));
}

TEST(Decide, GivesLevelsTheirUrgencyAndTheSnapshotsClock) {
    Refreshes run;
    const auto banners = run.banners(metered({meter(session5h, 0.91), meter(weeklyOpus, 1)}));
    ASSERT_EQ(banners.size(), 2U);
    EXPECT_EQ(banners[0].urgency, Banner::Urgency::active);
    EXPECT_EQ(banners[0].identifier, "hwl-level-session5h-90-492312");
    EXPECT_EQ(banners[0].body, "Hitting 100% pauses Claude until the 5-hour session resets in 2h.");
    EXPECT_EQ(banners[1].urgency, Banner::Urgency::timeSensitive);
    EXPECT_EQ(banners[1].identifier, "hwl-level-weeklyOpus-99-492312");
}

TEST(Decide, WithLevelsSwitchedOffLeavesThemToBeToldLater) {
    Refreshes run;
    run.settings.thresholdAlertsEnabled = false;
    EXPECT_THAT(run.titles(metered({meter(weeklyAll, 0.96)})), IsEmpty());
    EXPECT_THAT(run.state.thresholds.episodes, IsEmpty()) << "nothing advances";
    run.settings.thresholdAlertsEnabled = true;
    EXPECT_THAT(run.titles(metered({meter(weeklyAll, 0.96)})), ElementsAre("95% of your weekly limit used"));
}

TEST(Decide, WithLevelsSwitchedOffStillSpeaksOfTheForecast) {
    Refreshes run;
    run.settings.thresholdAlertsEnabled = false;
    EXPECT_THAT(run.titles(metered({meter(weeklyAll, 0.96)}, red())), ElementsAre("Weekly runs out Tuesday"));
}

TEST(Decide, HoldsLevelsBackInTheSnoozeOfTheForecast) {
    Refreshes run;
    run.state.fsm.snooze(moment + 1.0);
    EXPECT_THAT(run.titles(metered({meter(weeklyAll, 0.96)}, red())), IsEmpty());
    EXPECT_EQ(run.state.thresholds.fired(weeklyAll), 95);
    EXPECT_EQ(run.state.fsm.highestFired, AlertLevel::critical);
}

class NoBanners : public testing::TestWithParam<std::pair<Bundle, AuthorizationStatus>> {};

TEST_P(NoBanners, AreHeldForLater) {
    Refreshes run;
    std::tie(run.bundle, run.authorization) = GetParam();
    EXPECT_THAT(run.titles(breaching()), IsEmpty());
    EXPECT_THAT(run.titles(metered({meter(weeklyAll, 0.96)}, breaching(moment + 1800.0))), IsEmpty());
    EXPECT_EQ(run.state.fsm.highestFired, AlertLevel::headsUp);
    EXPECT_EQ(run.state.thresholds.fired(weeklyAll), 95);

    run.bundle = Bundle::present;
    run.authorization = AuthorizationStatus::authorized;
    EXPECT_THAT(run.titles(metered({meter(weeklyAll, 0.96)}, breaching(moment + 1830.0))), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Reasons, NoBanners,
                         testing::Values(std::pair{Bundle::present, AuthorizationStatus::notDetermined},
                                         std::pair{Bundle::present, AuthorizationStatus::denied},
                                         std::pair{Bundle::present, AuthorizationStatus::ephemeral},
                                         std::pair{Bundle::absent, AuthorizationStatus::authorized}));

TEST(Decide, PostsWhereBannersAreAllowedForATrial) {
    Refreshes run{.authorization = AuthorizationStatus::provisional};
    EXPECT_THAT(run.titles(red()), ElementsAre("Weekly runs out Tuesday"));
}

TEST(Decide, GoesOnFromTheStateThatItIsGiven) {
    Refreshes before;
    EXPECT_THAT(before.titles(metered({meter(weeklyAll, 0.96)}, red())).size(), 2U);
    Refreshes after{.state = before.state};
    EXPECT_THAT(after.titles(metered({meter(weeklyAll, 0.97)}, red(moment + 30.0))), IsEmpty());
}

} // namespace
} // namespace HarrowlaneApp
