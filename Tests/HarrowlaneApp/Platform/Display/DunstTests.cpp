#include <optional>

#include <QDBusVariant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Linux/BusNotificationService.h"
#include "HarrowlaneApp/Platform/Linux/PrivateBus.h"

namespace HarrowlaneApp {

namespace {

using Identifiers = std::vector<std::string>;

/// A real notification service, which shows its banners on the display.
class DunstTest : public testing::Test {
protected:
    void SetUp() override {
        start();
        ASSERT_TRUE(becomes([this] { return status() == AuthorizationStatus::authorized; })) << "is dunst installed?";
    }

    void start() {
        dunst = std::make_unique<ChildProcess>(
            ChildProcess::Start{.program = "dunst",
                                .arguments = {"-config", "/dev/null"},
                                .variables = {{"DBUS_SESSION_BUS_ADDRESS", bus.address()}}});
    }

    [[nodiscard]] AuthorizationStatus status() {
        std::optional<AuthorizationStatus> told;
        service.authorizationStatus([&told](AuthorizationStatus status) { told = status; });
        EXPECT_TRUE(becomes([&told] { return told.has_value(); }));
        return told.value_or(AuthorizationStatus::denied);
    }
    [[nodiscard]] std::optional<std::string> post(const Banner& banner) {
        std::optional<std::optional<std::string>> told;
        service.post(banner, [&told](const std::optional<std::string>& error) { told = error; });
        EXPECT_TRUE(becomes([&told] { return told.has_value(); }));
        return told.value_or("no answer");
    }
    [[nodiscard]] Identifiers delivered() {
        Identifiers told;
        service.delivered([&told](const Identifiers& identifiers) { told = identifiers; });
        return told;
    }
    [[nodiscard]] uint shown() {
        QDBusMessage message =
            QDBusMessage::createMethodCall("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                           "org.freedesktop.DBus.Properties", "Get");
        message << "org.dunstproject.cmd0"
                << "displayedLength";
        return desktop.call(message).arguments().value(0).value<QDBusVariant>().variant().toUInt();
    }
    void closeAll() {
        desktop.call(QDBusMessage::createMethodCall("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                                    "org.dunstproject.cmd0", "NotificationCloseAll"));
    }

    PrivateBus bus;
    BusNotificationService service{bus.connect()};
    QDBusConnection desktop = bus.connect();
    std::unique_ptr<ChildProcess> dunst;
};

TEST_F(DunstTest, ShowsBannersUntilTheyArePutAway) {
    EXPECT_EQ(
        post({.identifier = "a", .title = "90%", .body = "<b> & more", .urgency = Banner::Urgency::timeSensitive}),
        std::nullopt);
    EXPECT_EQ(post({.identifier = "b", .title = "95%"}), std::nullopt);
    EXPECT_THAT(delivered(), testing::ElementsAre("a", "b"));
    EXPECT_TRUE(becomes([this] { return shown() == 2; }));
    closeAll();
    EXPECT_TRUE(becomes([this] { return delivered().empty(); }));
}

TEST_F(DunstTest, ShowsOneBannerOfAnIdentifier) {
    for (const char* title : {"first", "second", "third"}) {
        EXPECT_EQ(post({.identifier = "same", .title = title}), std::nullopt);
    }
    EXPECT_TRUE(becomes([this] { return shown() == 1; }));
    EXPECT_THAT(delivered(), testing::ElementsAre("same"));
}

TEST_F(DunstTest, IsFoundAgainWhenItRestarts) {
    EXPECT_EQ(post({.identifier = "a", .title = "A"}), std::nullopt);
    dunst->kill();
    EXPECT_TRUE(becomes([this] { return delivered().empty(); }));
    EXPECT_TRUE(post({.identifier = "b", .title = "B"}));
    EXPECT_EQ(status(), AuthorizationStatus::notDetermined);
    start();
    ASSERT_TRUE(becomes([this] { return status() == AuthorizationStatus::authorized; }));
    EXPECT_EQ(post({.identifier = "c", .title = "C"}), std::nullopt);
    EXPECT_THAT(delivered(), testing::ElementsAre("c"));
}

} // namespace

} // namespace HarrowlaneApp
