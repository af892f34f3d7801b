#include "HarrowlaneApp/Alerts/NotificationProbe.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Alerts/Snapshots.h"

namespace HarrowlaneApp::NotificationProbe {
namespace {

TEST(NotificationProbe, HasASampleForEachWindow) {
    EXPECT_EQ(banner(samples[0], moment),
              (Banner{.identifier = "hwl-probe-session5h-90-1772323200",
                      .title = "90% of your session limit used",
                      .body = "Hitting 100% pauses Claude until the 5-hour session resets in 1h 20m.",
                      .urgency = Banner::Urgency::active}));
    EXPECT_EQ(banner(samples[1], moment),
              (Banner{.identifier = "hwl-probe-weeklyAll-95-1772323200",
                      .title = "95% of your weekly limit used",
                      .body = "Hitting 100% locks you out until the weekly window resets in 2d.",
                      .urgency = Banner::Urgency::active,
                      .delaySeconds = 3}));
    EXPECT_EQ(banner(samples[2], moment),
              (Banner{.identifier = "hwl-probe-weeklyOpus-99-1772323200",
                      .title = "99% of your Opus weekly limit used",
                      .body = "Hitting 100% drops Opus to Sonnet until the Opus window resets in 2d.",
                      .urgency = Banner::Urgency::timeSensitive,
                      .delaySeconds = 6}));
}

TEST(NotificationProbe, TellsTheAnswerToItsQuestion) {
    EXPECT_EQ(permissionLine({.granted = true}), "requestAuthorization granted=true");
    EXPECT_EQ(permissionLine({.granted = false}), "requestAuthorization granted=false");
    EXPECT_EQ(permissionLine({.granted = false, .error = "no service"}), "requestAuthorization failed: no service");
    EXPECT_EQ(statusLine(AuthorizationStatus::provisional), "authorizationStatus=provisional");
}

TEST(NotificationProbe, TellsWhatWasPosted) {
    EXPECT_EQ(postLines(samples[1], banner(samples[1], moment), {}),
              "posted 95% weeklyAll (+3s): 95% of your weekly limit used\n"
              "Hitting 100% locks you out until the weekly window resets in 2d.");
    EXPECT_EQ(postLines(samples[0], banner(samples[0], moment), "gone"), "FAILED 90% session5h: gone");
}

TEST(NotificationProbe, ListsWhatIsStillThere) {
    EXPECT_EQ(deliveredLines({}), "delivered and sitting in Notification Center: 0.");
    EXPECT_EQ(deliveredLines({"a", "b"}), "delivered and sitting in Notification Center: 2.\n  · a\n  · b");
}

} // namespace
} // namespace HarrowlaneApp::NotificationProbe
