#include "HarrowlaneApp/Copy/SettingsTexts.h"

#include <gtest/gtest.h>

namespace HarrowlaneApp {
namespace {

using SettingsTexts::Badge;
using SettingsTexts::BadgeIcon;
using SettingsTexts::BadgeTone;
using SettingsTexts::HelperRows;
using SettingsTexts::Permission;
using SettingsTexts::PermissionRows;

TEST(Appearance, FollowsTheSystemUnlessItIsTold) {
    EXPECT_EQ(SettingsTexts::appearance({}), AppearancePreference::system);
    EXPECT_EQ(SettingsTexts::appearance("sepia"), AppearancePreference::system);
    EXPECT_EQ(SettingsTexts::appearance("Dark"), AppearancePreference::system) << "not its text form";
    EXPECT_EQ(SettingsTexts::appearance("light"), AppearancePreference::light);
    EXPECT_EQ(SettingsTexts::appearance("dark"), AppearancePreference::dark);
}

TEST(Appearance, HasItsNames) {
    EXPECT_EQ(label(AppearancePreference::system), "Match system");
    EXPECT_EQ(label(AppearancePreference::light), "Light");
    EXPECT_EQ(label(AppearancePreference::dark), "Dark");
    EXPECT_EQ(UsageModel::text(AppearancePreference::system), "system");
}

TEST(HelperRows, OfferWhatTheStateAsksFor) {
    EXPECT_EQ(SettingsTexts::helperRows(HelperState::notInstalled),
              (HelperRows{.badge = {"Not installed", BadgeIcon::dashedCircle, BadgeTone::secondary},
                          .button = "Install helper",
                          .action = HelperRows::Action::install,
                          .isProminent = true}));
    EXPECT_EQ(SettingsTexts::helperRows(HelperState::installed),
              (HelperRows{.badge = {"Installed", BadgeIcon::sealCheck, BadgeTone::good},
                          .button = "Remove helper",
                          .action = HelperRows::Action::uninstall,
                          .smallText = "Run a Claude Code session to refresh the gauge."}));
    EXPECT_EQ(SettingsTexts::helperRows(HelperState::conflict),
              (HelperRows{.badge = {"Needs attention", BadgeIcon::warning, BadgeTone::caution},
                          .button = "Reinstall helper",
                          .action = HelperRows::Action::install,
                          .smallText = "Your statusLine changed outside the app."}));
}

TEST(PermissionRows, LetTestOnlyWhatIsAllowed) {
    const Badge allowed{"Allowed", BadgeIcon::sealCheck, BadgeTone::good};
    EXPECT_EQ(SettingsTexts::permissionRows(Permission::authorized),
              (PermissionRows{.badge = allowed, .isTestEnabled = true}));
    EXPECT_EQ(SettingsTexts::permissionRows(Permission::provisional), (PermissionRows{.badge = allowed}));
    EXPECT_EQ(SettingsTexts::permissionRows(Permission::denied),
              (PermissionRows{.badge = {"Blocked in System Settings", BadgeIcon::bellSlash, BadgeTone::caution},
                              .offersSystemSettings = true}));
    EXPECT_EQ(SettingsTexts::permissionRows(Permission::undetermined),
              (PermissionRows{.badge = {"Not yet granted", BadgeIcon::dashedCircle, BadgeTone::secondary}}));
}

} // namespace
} // namespace HarrowlaneApp
