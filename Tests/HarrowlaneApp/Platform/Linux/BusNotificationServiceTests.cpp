#include "HarrowlaneApp/Platform/Linux/BusNotificationService.h"

#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Linux/Bus.h"
#include "HarrowlaneApp/Platform/Linux/PrivateBus.h"
#include "HarrowlaneApp/Platform/Linux/StubService.h"

namespace HarrowlaneApp {

namespace {

using testing::ElementsAre;

/// A notification service that gives its banners the numbers 1, 2, 3, … and can name what it is able to do.
class StubNotifications : public StubService {
public:
    explicit StubNotifications(QDBusConnection bus, QStringList capabilities = {"body"})
        : StubService(std::move(bus),
                      {.name = "org.freedesktop.Notifications",
                       .path = "/org/freedesktop/Notifications",
                       .interface = "org.freedesktop.Notifications"},
                      [this](const QDBusMessage& message) { return replyTo(message); }),
          capabilities_(std::move(capabilities)) {}

    [[nodiscard]] std::optional<Reply> replyTo(const QDBusMessage& message) {
        if (message.member() == "GetCapabilities") return Reply{.values = {capabilities_}};
        const uint replaced = message.arguments().value(1).toUInt();
        return Reply{.values = {replaced != 0 ? replaced : ++last_}};
    }

    void close(uint id) {
        constexpr uint dismissed = 2;
        tell("NotificationClosed", {id, dismissed});
    }

    /// Of the n-th banner that was posted.
    [[nodiscard]] QVariantList posted(qsizetype index) const { return callsOf("Notify").value(index).arguments(); }
    [[nodiscard]] QVariantMap hints(qsizetype index) const { return qdbus_cast<QVariantMap>(posted(index).value(6)); }

private:
    QStringList capabilities_;
    uint last_ = 0;
};

std::optional<StubService::Reply> silence(const QDBusMessage&) {
    return std::nullopt;
}

class BusNotificationServiceTest : public testing::Test {
protected:
    struct Outcome {
        bool answered = false;
        std::optional<std::string> error;
    };

    void post(const Banner& banner) {
        const std::size_t index = outcomes.size();
        outcomes.emplace_back();
        service.post(banner, [this, index](const std::optional<std::string>& error) {
            EXPECT_FALSE(outcomes[index].answered) << "a second answer";
            outcomes[index] = {.answered = true, .error = error};
        });
    }
    [[nodiscard]] bool allAnswered() {
        return becomes([this] { return std::ranges::all_of(outcomes, &Outcome::answered); });
    }
    [[nodiscard]] AuthorizationStatus status() {
        std::optional<AuthorizationStatus> told;
        service.authorizationStatus([&told](AuthorizationStatus status) { told = status; });
        EXPECT_TRUE(becomes([&told] { return told.has_value(); }));
        return told.value_or(AuthorizationStatus::denied);
    }
    [[nodiscard]] std::vector<std::string> delivered() {
        std::optional<std::vector<std::string>> told;
        service.delivered([&told](const std::vector<std::string>& identifiers) { told = identifiers; });
        EXPECT_TRUE(becomes([&told] { return told.has_value(); }));
        return told.value_or(std::vector<std::string>{"no answer"});
    }

    PrivateBus bus;
    BusNotificationService service{bus.connect()};
    QDBusConnection desktop = bus.connect();
    std::vector<Outcome> outcomes;
};

TEST_F(BusNotificationServiceTest, IsAuthorizedWhereAServiceRuns) {
    EXPECT_EQ(status(), AuthorizationStatus::notDetermined);
    {
        const StubNotifications stub(desktop);
        EXPECT_EQ(status(), AuthorizationStatus::authorized);
    }
    EXPECT_EQ(status(), AuthorizationStatus::notDetermined);
}

TEST_F(BusNotificationServiceTest, GrantsWhatNobodyRefuses) {
    const StubNotifications stub(desktop);
    std::optional<PermissionAnswer> told;
    service.requestAuthorization([&told](const PermissionAnswer& answer) { told = answer; });
    ASSERT_TRUE(becomes([&told] { return told.has_value(); }));
    EXPECT_TRUE(told->granted);
    EXPECT_FALSE(told->error);
}

TEST_F(BusNotificationServiceTest, GrantsNothingWithoutAService) {
    std::optional<PermissionAnswer> told;
    service.requestAuthorization([&told](const PermissionAnswer& answer) { told = answer; });
    ASSERT_TRUE(becomes([&told] { return told.has_value(); }));
    EXPECT_FALSE(told->granted);
    EXPECT_FALSE(told->error);
}

TEST_F(BusNotificationServiceTest, SaysThatThereIsNoBus) {
    BusNotificationService lonely{QDBusConnection::connectToBus("unix:path=/nonexistent", "nowhere")};
    std::optional<PermissionAnswer> told;
    lonely.requestAuthorization([&told](const PermissionAnswer& answer) { told = answer; });
    ASSERT_TRUE(becomes([&told] { return told.has_value(); }));
    EXPECT_FALSE(told->granted);
    EXPECT_EQ(told->error, "there is no session bus");
    std::optional<AuthorizationStatus> status;
    lonely.authorizationStatus([&status](AuthorizationStatus now) { status = now; });
    EXPECT_TRUE(becomes([&status] { return status == AuthorizationStatus::notDetermined; }));
    std::optional<std::string> error;
    lonely.post({.identifier = "a"}, [&error](const std::optional<std::string>& words) { error = words; });
    EXPECT_TRUE(becomes([&error] { return error.has_value(); }));
    QDBusConnection::disconnectFromBus("nowhere");
}

TEST_F(BusNotificationServiceTest, HandsABannerOver) {
    const StubNotifications stub(desktop);
    post({.identifier = "level-1", .title = "90% of the week", .body = "Resets in 2d"});
    ASSERT_TRUE(allAnswered());
    EXPECT_FALSE(outcomes[0].error);
    const QVariantList banner = stub.posted(0);
    EXPECT_EQ(banner[0], "Brindlewick");
    EXPECT_EQ(banner[1], 0U);
    EXPECT_EQ(banner[3], "90% of the week");
    EXPECT_EQ(banner[4], "Resets in 2d");
    EXPECT_EQ(banner[7], -1);
    EXPECT_EQ(stub.hints(0)["urgency"], QVariant::fromValue(uchar{1}));
    EXPECT_THAT(delivered(), ElementsAre("level-1"));
}

TEST_F(BusNotificationServiceTest, ATimeSensitiveOneIsCritical) {
    const StubNotifications stub(desktop);
    post({.identifier = "a", .urgency = Banner::Urgency::timeSensitive});
    post({.identifier = "b", .urgency = Banner::Urgency::active});
    ASSERT_TRUE(allAnswered());
    EXPECT_EQ(stub.hints(0)["urgency"], QVariant::fromValue(uchar{2}));
    EXPECT_EQ(stub.hints(1)["urgency"], QVariant::fromValue(uchar{1}));
    EXPECT_NE(stub.hints(0)["sound-name"], stub.hints(1)["sound-name"]);
}

TEST_F(BusNotificationServiceTest, ALaterBannerOfTheSameIdentifierTakesItsPlace) {
    StubNotifications stub(desktop);
    // At once, so that the second is asked for before the first one's number is known.
    post({.identifier = "same", .title = "first"});
    post({.identifier = "same", .title = "second"});
    post({.identifier = "other"});
    ASSERT_TRUE(allAnswered());
    EXPECT_EQ(stub.posted(1)[1], 1U);
    EXPECT_EQ(stub.posted(2)[1], 0U);
    EXPECT_THAT(delivered(), ElementsAre("same", "other"));
    stub.close(1);
    EXPECT_TRUE(becomes([&] { return delivered() == std::vector<std::string>{"other"}; }));
    post({.identifier = "same"});
    ASSERT_TRUE(allAnswered());
    EXPECT_EQ(stub.posted(3)[1], 0U) << "what was put away cannot be replaced";
}

TEST_F(BusNotificationServiceTest, BannersThatWerePutAwayAreNotDelivered) {
    StubNotifications stub(desktop);
    for (const char* identifier : {"a", "b", "c"}) post({.identifier = identifier});
    ASSERT_TRUE(allAnswered());
    stub.close(2);
    stub.close(77);
    EXPECT_TRUE(becomes([&] { return delivered() == std::vector<std::string>{"a", "c"}; }));
}

TEST_F(BusNotificationServiceTest, WhatLooksLikeMarkupIsShownAsItIs) {
    {
        const StubNotifications stub(desktop, {"body", "body-markup"});
        post({.identifier = "a", .title = "<b>&", .body = "<b>5 < 6 & \"7\"</b>"});
        ASSERT_TRUE(allAnswered());
        EXPECT_EQ(stub.posted(0)[3], "<b>&");
        EXPECT_EQ(stub.posted(0)[4], "&lt;b&gt;5 &lt; 6 &amp; &quot;7&quot;&lt;/b&gt;");
    }
    ASSERT_TRUE(becomes([&] { return delivered().empty(); }));
    const StubNotifications plain(desktop);
    post({.identifier = "a", .body = "5 < 6"});
    ASSERT_TRUE(allAnswered());
    EXPECT_EQ(plain.posted(0)[4], "5 < 6") << "the next service was not asked what it can do";
}

TEST_F(BusNotificationServiceTest, HostileTextGoesThrough) {
    const StubNotifications stub(desktop);
    post({.identifier = "a", .title = std::string("\xff\xfe\0x", 4), .body = std::string(1 << 20, 'x')});
    ASSERT_TRUE(allAnswered());
    EXPECT_FALSE(outcomes[0].error);
    EXPECT_EQ(stub.posted(0)[4].toString().size(), 1 << 20);
}

TEST_F(BusNotificationServiceTest, AServiceTakesItsBannersWithIt) {
    {
        const StubNotifications stub(desktop);
        post({.identifier = "a"});
        ASSERT_TRUE(allAnswered());
    }
    EXPECT_TRUE(becomes([&] { return delivered().empty(); }));
    const StubNotifications next(desktop);
    post({.identifier = "a"});
    ASSERT_TRUE(allAnswered());
    EXPECT_EQ(next.posted(0)[1], 0U) << "a number of the former service";
}

TEST_F(BusNotificationServiceTest, TellsThatNobodyIsThere) {
    post({.identifier = "a"});
    post({.identifier = "b"});
    ASSERT_TRUE(allAnswered());
    EXPECT_THAT(outcomes[0].error.value_or(""), testing::HasSubstr("org.freedesktop.Notifications"));
    EXPECT_TRUE(outcomes[1].error);
    EXPECT_THAT(delivered(), ElementsAre());
}

TEST_F(BusNotificationServiceTest, AServiceThatHangsHoldsUpNothingAndIsGivenUp) {
    StubNotifications stub(desktop);
    stub.breakSilence(silence);
    QElapsedTimer clock;
    clock.start();
    post({.identifier = "a"});
    EXPECT_EQ(status(), AuthorizationStatus::authorized);
    EXPECT_THAT(delivered(), ElementsAre());
    EXPECT_LT(clock.elapsed(), Bus::answerMilliseconds / 2);
    ASSERT_TRUE(allAnswered());
    EXPECT_TRUE(outcomes[0].error);
    EXPECT_GE(clock.elapsed(), Bus::answerMilliseconds * 9 / 10) << "timers of this length are coarse";
}

TEST_F(BusNotificationServiceTest, AServiceThatHangsAtABannerMayDoTheNextOne) {
    StubNotifications stub(desktop);
    post({.identifier = "a"});
    ASSERT_TRUE(allAnswered());
    stub.breakSilence(silence);
    post({.identifier = "b"});
    ASSERT_TRUE(allAnswered());
    EXPECT_TRUE(outcomes[1].error);
    stub.breakSilence([&](const QDBusMessage& message) { return stub.replyTo(message); });
    post({.identifier = "c"});
    ASSERT_TRUE(allAnswered());
    EXPECT_FALSE(outcomes[2].error);
}

TEST_F(BusNotificationServiceTest, AServiceThatDiesAtABannerMakesAnErrorOfIt) {
    auto other = std::make_unique<StubNotifications>(bus.connect());
    other->breakSilence(silence);
    post({.identifier = "a"});
    ASSERT_TRUE(becomes([&] { return !other->calls.isEmpty(); }));
    bus.kill();
    ASSERT_TRUE(allAnswered());
    EXPECT_TRUE(outcomes[0].error);
}

TEST_F(BusNotificationServiceTest, ADelayedBannerIsTakenAtOnceAndShownLater) {
    const StubNotifications stub(desktop);
    QElapsedTimer clock;
    clock.start();
    post({.identifier = "late", .delaySeconds = 0.3});
    EXPECT_TRUE(outcomes[0].answered);
    post({.identifier = "now"});
    ASSERT_TRUE(becomes([&] { return delivered().size() == 2; }));
    EXPECT_GE(clock.elapsed(), 300);
    EXPECT_THAT(delivered(), ElementsAre("now", "late"));
}

TEST_F(BusNotificationServiceTest, AnAnswerNobodyWaitsForMayBeEmpty) {
    const StubNotifications stub(desktop);
    service.requestAuthorization({});
    service.authorizationStatus({});
    service.delivered({});
    service.post({.identifier = "a"}, {});
    service.post({.identifier = "b", .delaySeconds = 0.01}, {});
    EXPECT_TRUE(becomes([&] { return delivered().size() == 2; }));
}

TEST_F(BusNotificationServiceTest, AnswersNothingAfterItsEnd) {
    StubNotifications stub(desktop);
    stub.breakSilence(silence);
    auto brief = std::make_unique<BusNotificationService>(bus.connect());
    bool answered = false;
    brief->post({.identifier = "a"}, [&](const auto&) { answered = true; });
    brief->post({.identifier = "b", .delaySeconds = 0.01}, {});
    ASSERT_TRUE(becomes([&] { return !stub.calls.isEmpty(); }));
    brief.reset();
    stub.breakSilence([&](const QDBusMessage& message) { return stub.replyTo(message); });
    EXPECT_EQ(status(), AuthorizationStatus::authorized);
    EXPECT_FALSE(answered);
}

TEST_F(BusNotificationServiceTest, MayBeAskedAgainByAnAnswer) {
    const StubNotifications stub(desktop);
    service.post({.identifier = "a"}, [this](const auto&) { post({.identifier = "b"}); });
    EXPECT_TRUE(becomes([&] { return delivered().size() == 2; }));
}

} // namespace

} // namespace HarrowlaneApp
