#include "HarrowlaneApp/Shell/NotifyTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Alerts/NotificationProbe.h"
#include "HarrowlaneApp/Store/UsageStoreFakes.h"

namespace HarrowlaneApp {
namespace {

class NotifyTest : public testing::Test {
protected:
    FakeNotificationService service_;
    HandTurnedClock clock_{UsageModel::Date{1772323200}};
    std::vector<std::string> lines_;
    std::function<void(const std::string&)> print_ = [this](const std::string& line) { lines_.push_back(line); };
};

TEST_F(NotifyTest, PostsThreeBannersOneAfterTheOtherAndCountsThemInTheEnd) {
    const auto probe = probeNotifications(service_, clock_, print_);
    EXPECT_TRUE(lines_.empty());
    service_.answerPermission({.granted = true});
    service_.answerStatus(AuthorizationStatus::authorized);
    ASSERT_EQ(service_.posted.size(), 3U);
    EXPECT_EQ(service_.posted[0].delaySeconds, 0);
    EXPECT_EQ(service_.posted[1].delaySeconds, 3);
    EXPECT_EQ(service_.posted[2].delaySeconds, 6);
    EXPECT_EQ(lines_.size(), 5U);
    EXPECT_EQ(lines_[0], "requestAuthorization granted=true");
    EXPECT_EQ(lines_[1], "authorizationStatus=authorized");
    EXPECT_THAT(lines_[2], testing::StartsWith("posted 90% session5h (+0s): 90% of your session limit used\n"));

    EXPECT_FALSE(probe.isReady()) << "the delayed ones are still to come";
    clock_.turn(9.0);
    EXPECT_TRUE(probe.isReady());
    EXPECT_EQ(lines_.back(), "delivered and sitting in Notification Center: 0.");
}

TEST_F(NotifyTest, PostsNothingWhereBannersAreNotAllowed) {
    const auto probe = probeNotifications(service_, clock_, print_);
    service_.answerPermission({.granted = false});
    service_.answerStatus(AuthorizationStatus::denied);
    EXPECT_TRUE(probe.isReady());
    EXPECT_TRUE(service_.posted.empty());
    EXPECT_EQ(lines_.back(), "not authorized — no banners will be posted");
}

TEST_F(NotifyTest, TellsWhyPermissionCouldNotBeAsked) {
    const auto probe = probeNotifications(service_, clock_, print_);
    service_.answerPermission({.granted = false, .error = "no service"});
    EXPECT_EQ(lines_, std::vector<std::string>{"requestAuthorization failed: no service"});
    service_.answerStatus(AuthorizationStatus::notDetermined);
    EXPECT_TRUE(probe.isReady());
}

} // namespace
} // namespace HarrowlaneApp
