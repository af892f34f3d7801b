#include "HarrowlaneApp/Alerts/NotificationCoordinator.h"

#include <gmock/gmock.h>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Alerts/Snapshots.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using UsageEngine::AlertLevel;

class NotificationCoordinatorTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder folder;
    std::filesystem::path path = folder / "Brindlewick/notification-state.json";
    FakeNotificationService service;

    [[nodiscard]] std::unique_ptr<NotificationCoordinator> started(Bundle bundle = Bundle::present) {
        return std::make_unique<NotificationCoordinator>(
            NotificationCoordinator::Surroundings{.service = service, .stateURL = path, .bundle = bundle});
    }
    /// One that has asked and been answered.
    [[nodiscard]] std::unique_ptr<NotificationCoordinator> allowed() {
        auto coordinator = started();
        service.answerPermission({.granted = true});
        service.answerStatus(AuthorizationStatus::authorized);
        return coordinator;
    }
    [[nodiscard]] PersistedState stored() const { return AlertStateFile(path).load(); }
};

TEST_F(NotificationCoordinatorTest, AsksOnceForPermissionAndThenLooksWhatCameOfIt) {
    const auto coordinator = started();
    EXPECT_THAT(service.permissionQuestions, SizeIs(1));
    EXPECT_THAT(service.statusQuestions, IsEmpty()) << "not before the user has answered";
    EXPECT_EQ(coordinator->authorization(), AuthorizationStatus::notDetermined);

    service.answerPermission({.granted = false, .error = "no"});
    EXPECT_THAT(service.statusQuestions, SizeIs(1)) << "whatever the answer";
    service.answerStatus(AuthorizationStatus::denied);
    EXPECT_EQ(coordinator->authorization(), AuthorizationStatus::denied);
    EXPECT_THAT(service.permissionQuestions, IsEmpty());
}

TEST_F(NotificationCoordinatorTest, FindsAServiceThatComesLaterThanTheProgram) {
    const auto coordinator = started();
    service.answerPermission({.granted = false});
    service.answerStatus(AuthorizationStatus::notDetermined);
    coordinator->handle({}, {});
    service.answerStatus(AuthorizationStatus::authorized);
    coordinator->handle(red(), {});
    EXPECT_THAT(service.posted, SizeIs(1));
    EXPECT_THAT(service.statusQuestions, IsEmpty()) << "it is known by now";
}

TEST_F(NotificationCoordinatorTest, OutsideOfABundleNeverTalksToTheService) {
    const auto coordinator = started(Bundle::absent);
    bool done = false;
    coordinator->refreshAuthorization([&] { done = true; });
    coordinator->handle(red(), {});
    EXPECT_TRUE(done);
    EXPECT_THAT(service.permissionQuestions, IsEmpty());
    EXPECT_THAT(service.statusQuestions, IsEmpty());
    EXPECT_THAT(service.posted, IsEmpty());
    EXPECT_EQ(stored().fsm.highestFired, AlertLevel::critical) << "but the state moves on";
}

TEST_F(NotificationCoordinatorTest, TellsWhenItKnowsTheAuthorization) {
    const auto coordinator = allowed();
    bool done = false;
    coordinator->refreshAuthorization([&] { done = true; });
    EXPECT_FALSE(done);
    EXPECT_EQ(coordinator->authorization(), AuthorizationStatus::authorized);
    service.answerStatus(AuthorizationStatus::denied);
    EXPECT_TRUE(done);
    EXPECT_EQ(coordinator->authorization(), AuthorizationStatus::denied);
}

TEST_F(NotificationCoordinatorTest, MayBeGoneWhenAnAnswerComes) {
    auto coordinator = started();
    bool done = false;
    coordinator->refreshAuthorization([&] { done = true; });
    coordinator.reset();
    service.answerStatus(AuthorizationStatus::authorized);
    service.answerPermission({.granted = true});
    EXPECT_FALSE(done);
    EXPECT_THAT(service.statusQuestions, IsEmpty());
}

TEST_F(NotificationCoordinatorTest, PostsWhatIsDecided) {
    const auto coordinator = allowed();
    coordinator->handle(metered({meter(UsageModel::WindowKind::weeklyAll, 0.91)}, red()), {});
    ASSERT_THAT(service.posted, SizeIs(2));
    EXPECT_EQ(service.posted[0], Banners::pace(red(), AlertLevel::critical));
    EXPECT_EQ(service.posted[1].identifier, "hwl-level-weeklyAll-90-492312");
}

TEST_F(NotificationCoordinatorTest, SavesBeforeAnyBannerGoesOut) {
    const auto coordinator = allowed();
    std::vector<AlertLevel> storedAtPost;
    service.onPost = [&] { storedAtPost.push_back(stored().fsm.highestFired); };
    coordinator->handle(red(), {});
    EXPECT_THAT(storedAtPost, ElementsAre(AlertLevel::critical));
}

TEST_F(NotificationCoordinatorTest, SavesAlsoWhereNothingHappened) {
    const auto coordinator = started();
    coordinator->handle(calm(), {});
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(stored(), PersistedState{});
}

TEST_F(NotificationCoordinatorTest, RepeatsNothingAfterARestart) {
    allowed()->handle(metered({meter(UsageModel::WindowKind::weeklyAll, 0.96)}, red()), {});
    service.posted.clear();
    allowed()->handle(metered({meter(UsageModel::WindowKind::weeklyAll, 0.96)}, red(moment + 600.0)), {});
    EXPECT_THAT(service.posted, IsEmpty());
}

TEST_F(NotificationCoordinatorTest, CountsABreachOnAcrossARestart) {
    allowed()->handle(breaching(), {});
    EXPECT_THAT(service.posted, IsEmpty());
    allowed()->handle(breaching(moment + 1800.0), {});
    EXPECT_THAT(service.posted, ElementsAre(Banners::pace(breaching(moment + 1800.0), AlertLevel::headsUp)));
}

TEST_F(NotificationCoordinatorTest, DoesNotBringBackWhatWasForbidden) {
    const auto coordinator = started();
    service.answerPermission({});
    service.answerStatus(AuthorizationStatus::denied);
    coordinator->handle(breaching(), {});
    coordinator->handle(breaching(moment + 1800.0), {});
    EXPECT_EQ(stored().fsm.highestFired, AlertLevel::headsUp);

    coordinator->refreshAuthorization();
    service.answerStatus(AuthorizationStatus::authorized);
    coordinator->handle(breaching(moment + 1830.0), {});
    EXPECT_THAT(service.posted, IsEmpty());
}

TEST_F(NotificationCoordinatorTest, FollowsTheSwitchOfTheLevelsFromOneSnapshotToTheNext) {
    const auto coordinator = allowed();
    const auto snapshot = metered({meter(UsageModel::WindowKind::weeklyAll, 0.96)});
    coordinator->handle(snapshot, {.thresholdAlertsEnabled = false});
    EXPECT_THAT(service.posted, IsEmpty());
    coordinator->handle(snapshot, {.thresholdAlertsEnabled = true});
    EXPECT_THAT(service.posted, SizeIs(1));
}

TEST_F(NotificationCoordinatorTest, PostsThoughTheStateCannotBeSaved) {
    TestSupport::writeFile(folder / "Brindlewick", "in the way");
    const auto coordinator = allowed();
    coordinator->handle(red(), {});
    EXPECT_THAT(service.posted, SizeIs(1));
    coordinator->handle(red(moment + 30.0), {});
    EXPECT_THAT(service.posted, SizeIs(1)) << "what is in memory counts";
}

TEST_F(NotificationCoordinatorTest, SendsATestBannerWhateverIsAllowed) {
    const auto coordinator = started(Bundle::absent);
    coordinator->sendTestNotification(moment);
    EXPECT_THAT(service.posted, ElementsAre(Banners::test(moment)));
    EXPECT_EQ(coordinator->state(), PersistedState{});
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace
} // namespace HarrowlaneApp
