#include "HarrowlaneApp/Platform/Desktop.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Waiting.h"
#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {

namespace {

// These tests run without a session bus, without a panel and with a home of their own.

TEST(Desktop, TellsWhichItIs) {
    EXPECT_EQ(Desktop::platformName(), BRINDLEWICK_PLATFORM);
}

TEST(Desktop, WithoutAPanelTheItemIsAbsentAndBannersAreNotDetermined) {
    const auto item = Desktop::makeStatusItem();
    EXPECT_EQ(item->presence(), StatusItem::Presence::pending);
    item->setFace({});
    EXPECT_TRUE(becomes([&] { return item->presence() == StatusItem::Presence::absent; }));
    const auto service = Desktop::makeNotificationService(*item);
    std::optional<AuthorizationStatus> status;
    service->authorizationStatus([&status](AuthorizationStatus now) { status = now; });
    EXPECT_TRUE(becomes([&] { return status == AuthorizationStatus::notDetermined; }));
    std::optional<std::string> error;
    service->post({.identifier = "a"}, [&error](const auto& words) { error = words; });
    EXPECT_TRUE(becomes([&] { return error.has_value(); }));
}

TEST(Desktop, RunsOnceWithoutABus) {
    const TestSupport::TemporaryFolder support;
    const auto first = Desktop::makeSingleInstance(support.path());
    const auto second = Desktop::makeSingleInstance(support.path());
    EXPECT_EQ(first->claim(), SingleInstance::Claim::first);
    EXPECT_EQ(second->claim(), SingleInstance::Claim::shownElsewhere);
}

TEST(Desktop, KeepsPreferencesInTheUsersConfiguration) {
    const TestSupport::TemporaryFolder config;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(config.path().string()));
    Desktop::makePreferences()->setThresholdAlertsEnabled(false);
    EXPECT_FALSE(Desktop::makePreferences()->thresholdAlertsEnabled());
    Desktop::makeAutostart()->setEnabled(true);
    EXPECT_EQ(Desktop::makeAutostart()->isEnabled(), Desktop::makeAutostart()->isAvailable());
}

TEST(Desktop, HasAnAlarmThatMayEndWhenItRings) {
    std::unique_ptr<QObject> alarm;
    alarm = Desktop::makeAlarm(0.01, [&] { alarm.reset(); });
    ASSERT_NE(alarm, nullptr) << "it rings later";
    EXPECT_TRUE(becomes([&] { return alarm == nullptr; }));
}

TEST(Desktop, HasALook) {
    EXPECT_FALSE(Desktop::makeAppearance()->increasesContrast());
}

} // namespace

} // namespace HarrowlaneApp
