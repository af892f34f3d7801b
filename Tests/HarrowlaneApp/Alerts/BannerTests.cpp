#include "HarrowlaneApp/Alerts/Banner.h"

#include <limits>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Alerts/Snapshots.h"

namespace HarrowlaneApp {
namespace {

using UsageEngine::AlertLevel;
using UsageEngine::ThresholdAlert;
using UsageModel::Date;
using UsageModel::WindowKind;

TEST(PaceBanner, SpeaksAsTheVerdictDoes) {
    EXPECT_EQ(Banners::pace(breaching(), AlertLevel::headsUp), (Banner{.identifier = "hwl-pace-1772323200",
                                                                       .title = "Weekly runs out Tuesday",
                                                                       .body = "A day early",
                                                                       .urgency = Banner::Urgency::active}));
}

TEST(PaceBanner, IsUrgentWhereItIsCritical) {
    EXPECT_EQ(Banners::pace(red(), AlertLevel::critical).urgency, Banner::Urgency::timeSensitive);
}

TEST(PaceBanner, PassesHostileWordsOnAsTheyAre) {
    UsageModel::UsageSnapshot snapshot = breaching();
    snapshot.verdict.headline = "<b>%s</b>\n\"";
    snapshot.verdict.subtext = "";
    const Banner banner = Banners::pace(snapshot, AlertLevel::headsUp);
    EXPECT_EQ(banner.title, "<b>%s</b>\n\"");
    EXPECT_EQ(banner.body, "");
}

TEST(LevelBanner, SpeaksAsTheAlertDoes) {
    const ThresholdAlert alert{
        .window = WindowKind::session5h, .threshold = 95, .used = 0.96, .resetsAt = moment + 7200.0};
    EXPECT_EQ(Banners::level(alert, moment),
              (Banner{.identifier = "hwl-level-session5h-95-492312",
                      .title = "95% of your session limit used",
                      .body = "Hitting 100% pauses Claude until the 5-hour session resets in 2h.",
                      .urgency = Banner::Urgency::active}));
}

TEST(LevelBanner, IsUrgentFrom99On) {
    EXPECT_EQ(Banners::level({.threshold = 98}, moment).urgency, Banner::Urgency::active);
    EXPECT_EQ(Banners::level({.threshold = 99}, moment).urgency, Banner::Urgency::timeSensitive);
    EXPECT_EQ(Banners::level({.threshold = 100}, moment).urgency, Banner::Urgency::timeSensitive);
}

TEST(LevelBanner, IsAnotherFromHourToHour) {
    const auto identifier = [](double seconds) { return Banners::level({.threshold = 90}, Date{seconds}).identifier; };
    EXPECT_EQ(identifier(3599.999), "hwl-level-weeklyAll-90-0");
    EXPECT_EQ(identifier(3600), "hwl-level-weeklyAll-90-1");
    EXPECT_EQ(identifier(7199), "hwl-level-weeklyAll-90-1");
    EXPECT_EQ(identifier(7200), "hwl-level-weeklyAll-90-2");
}

TEST(TestBanner, IsASampleOfAWeeklyLevel) {
    EXPECT_EQ(Banners::test(moment), (Banner{.identifier = "hwl-test-1772323200",
                                             .title = "90% of your weekly limit used",
                                             .body = "Hitting 100% locks you out until the weekly window resets in 2d.",
                                             .urgency = Banner::Urgency::active}));
}

TEST(WholeNumber, CutsFractionsOffTowardsZero) {
    EXPECT_EQ(wholeNumber(0), "0");
    EXPECT_EQ(wholeNumber(1.999), "1");
    EXPECT_EQ(wholeNumber(-1.999), "-1");
    EXPECT_EQ(wholeNumber(1e300), "9000000000000000");
    EXPECT_EQ(wholeNumber(-std::numeric_limits<double>::infinity()), "-9000000000000000");
    EXPECT_EQ(wholeNumber(std::numeric_limits<double>::quiet_NaN()), "0");
}

} // namespace
} // namespace HarrowlaneApp
