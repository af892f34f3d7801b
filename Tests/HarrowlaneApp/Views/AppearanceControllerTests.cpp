#include "HarrowlaneApp/Views/AppearanceController.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/DesktopDisplay.h"
#include "HarrowlaneApp/Platform/Fakes.h"

namespace {

using namespace HarrowlaneApp;

class AppearanceControl : public testing::Test {
protected:
    FakeDesktopAppearance desktop;
    DisplayOptions options{std::make_unique<DesktopDisplay>(desktop)};
    ApplicationLook look{desktop, options};
    FakePreferences preferences;
    AppearanceController controller{preferences, look};
    int redraws = 0;

    void SetUp() override {
        QObject::connect(&look, &ApplicationLook::changed, [this] { ++redraws; });
    }
};

TEST_F(AppearanceControl, DoesNothingBeforeTheLaunch) {
    preferences.setAppearancePreference(QStringLiteral("dark"));
    EXPECT_EQ(look.look().appearance, Appearance::light);
    controller.applicationDidFinishLaunching();
    EXPECT_EQ(look.look().appearance, Appearance::dark);
}

TEST_F(AppearanceControl, ForcesWhatWasChosenAgainstTheDesktop) {
    controller.applicationDidFinishLaunching();
    preferences.setAppearancePreference(QStringLiteral("dark"));
    EXPECT_EQ(look.look().appearance, Appearance::dark);
    desktop.show({.appearance = Appearance::dark});
    preferences.setAppearancePreference(QStringLiteral("light"));
    EXPECT_EQ(look.look().appearance, Appearance::light);
}

TEST_F(AppearanceControl, FollowsTheDesktopLiveWhereItIsToMatch) {
    controller.applicationDidFinishLaunching();
    desktop.show({.appearance = Appearance::dark});
    EXPECT_EQ(look.look().appearance, Appearance::dark);
    desktop.show({.appearance = Appearance::light});
    EXPECT_EQ(look.look().appearance, Appearance::light);
    EXPECT_EQ(redraws, 2);
}

TEST_F(AppearanceControl, ForcedItIgnoresTheDesktopUntilItMatchesAgain) {
    preferences.setAppearancePreference(QStringLiteral("light"));
    controller.applicationDidFinishLaunching();
    desktop.show({.appearance = Appearance::dark});
    EXPECT_EQ(look.look().appearance, Appearance::light);
    EXPECT_EQ(redraws, 0);
    preferences.setAppearancePreference(QStringLiteral("system"));
    EXPECT_EQ(look.look().appearance, Appearance::dark);
    EXPECT_EQ(look.forced(), std::nullopt);
}

TEST_F(AppearanceControl, TakesAnUnknownPreferenceForSystem) {
    preferences.setAppearancePreference(QStringLiteral("sepia"));
    desktop.shown.appearance = Appearance::dark;
    controller.applicationDidFinishLaunching();
    EXPECT_EQ(currentAppearance(preferences), AppearancePreference::system);
    EXPECT_EQ(look.forced(), std::nullopt);
}

TEST_F(AppearanceControl, AnotherPreferenceRedrawsNothing) {
    preferences.setAppearancePreference(QStringLiteral("dark"));
    controller.applicationDidFinishLaunching();
    EXPECT_EQ(redraws, 1);
    preferences.setThresholdAlertsEnabled(false);
    preferences.setThresholdAlertsEnabled(true);
    EXPECT_EQ(redraws, 1);
}

TEST_F(AppearanceControl, TheDisplayOptionsReachTheLookWhateverIsForced) {
    preferences.setAppearancePreference(QStringLiteral("dark"));
    controller.applicationDidFinishLaunching();
    desktop.show({.increasesContrast = true, .reducesTransparency = true});
    EXPECT_EQ(look.look(),
              (Look{.appearance = Appearance::dark, .reduceTransparency = true, .increaseContrast = true}));
}

TEST_F(AppearanceControl, LaunchedTwiceItListensOnce) {
    controller.applicationDidFinishLaunching();
    controller.applicationDidFinishLaunching();
    preferences.setAppearancePreference(QStringLiteral("dark"));
    EXPECT_EQ(redraws, 1);
}

} // namespace
