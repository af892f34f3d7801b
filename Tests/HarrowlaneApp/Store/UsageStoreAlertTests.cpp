// What a store tells its user, and what a view learns of that.

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QTest>

#include "HarrowlaneApp/Store/StoreOnFakes.h"

namespace HarrowlaneApp {
namespace {

using StoreAlertTest = StoreOnFakes;

TEST_F(StoreAlertTest, AlertsOnTheSnapshotThatItHasJustPublished) {
    writeGauge(96.0);
    UsageStore& store = open();
    service_.answerPermission({.granted = true});
    service_.answerStatus(AuthorizationStatus::authorized);
    double shown = 0.0;
    service_.onPost = [&] { shown = store.snapshot().meters.at(0).used; };
    ASSERT_TRUE(runs(1));
    ASSERT_EQ(levelBanners().size(), 1U);
    EXPECT_THAT(levelBanners()[0], testing::StartsWith("hwl-level-session5h-95-"));
    EXPECT_NEAR(shown, 0.96, 1e-9);
    store.refresh();
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(levelBanners().size(), 1U) << "once a level and episode";
}

TEST_F(StoreAlertTest, AsksAtEachRunWhetherTheUserWantsTheLevels) {
    writeGauge(96.0);
    settings_.thresholdAlertsEnabled = false;
    UsageStore& store = open();
    service_.answerPermission({.granted = true});
    service_.answerStatus(AuthorizationStatus::authorized);
    ASSERT_TRUE(runs(1));
    EXPECT_TRUE(levelBanners().empty());
    settings_.thresholdAlertsEnabled = true;
    store.refresh();
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(levelBanners().size(), 1U);
}

TEST_F(StoreAlertTest, TheStateOfTheAlertsThoughInTheWatchedFolderDoesNotKeepItRunning) {
    open();
    ASSERT_TRUE(runs(1));
    ASSERT_TRUE(std::filesystem::exists(paths_.notificationState()));
    const auto isQuiet = [&] {
        const int before = published_;
        QTest::qWait(static_cast<int>(UsageGauge::GaugeWatcher::debounceSeconds * 2000));
        return published_ == before;
    };
    EXPECT_TRUE(becomes(isQuiet));
}

TEST_F(StoreAlertTest, TellsTheViewsWhetherBannersAreAllowed) {
    UsageStore& store = open();
    const QSignalSpy changes(&store, &UsageStore::notificationAuthorizationChanged);
    store.refreshNotificationAuthorization();
    EXPECT_EQ(store.notificationAuthorization(), AuthorizationStatus::notDetermined);
    service_.answerStatus(AuthorizationStatus::denied);
    EXPECT_EQ(store.notificationAuthorization(), AuthorizationStatus::denied);
    EXPECT_EQ(changes.count(), 1);
}

} // namespace
} // namespace HarrowlaneApp
