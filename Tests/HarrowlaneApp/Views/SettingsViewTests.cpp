#include "HarrowlaneApp/Views/SettingsView.h"

#include <fstream>
#include <sstream>

#include <QScrollBar>
#include <QTest>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Alerts/FakeNotificationService.h"
#include "HarrowlaneApp/Platform/Fakes.h"
#include "HarrowlaneApp/Platform/Portable/SettingsPreferences.h"
#include "HarrowlaneApp/Views/AppearanceController.h"
#include "HarrowlaneApp/Views/HUDScrollArea.h"
#include "HarrowlaneApp/Views/ProseLabel.h"
#include "HarrowlaneApp/Views/Watching.h"
#include "Support/TemporaryFolder.h"

namespace {

using namespace HarrowlaneApp;
using namespace ViewTests;
using UsageModel::AppPaths;
using UsageModel::UsageSnapshot;
using State = UsageGauge::StatusLineInstaller::State;

std::string badgeOf(const QWidget& view, const char* name) {
    return std::string(find<SettingsBadge>(view, name).badge().text);
}

std::string buttonText(const QWidget& view, const char* name) {
    const auto& button = find<PushButton>(view, name);
    return button.isVisibleTo(&view) ? button.text().toStdString() : std::string();
}

/// On a store that starts nothing.
class SettingsPreview : public testing::Test {
protected:
    ApplicationLook look{Look{.appearance = Appearance::dark}};
    FakePreferences preferences;
    std::unique_ptr<UsageStore> store;
    std::unique_ptr<SettingsView> view;

    void open(State state) {
        store = UsageStore::preview({.snapshot = UsageSnapshot::warmingUp({}), .installState = state});
        view = std::make_unique<SettingsView>(look,
                                              SettingsView::Surroundings{.store = *store, .preferences = preferences});
        show(*view, SettingsView::fixedSize);
    }
};

TEST_F(SettingsPreview, NotInstalledOffersToInstall) {
    open(State::notInstalled);
    EXPECT_EQ(badgeOf(*view, "helperBadge"), "Not installed");
    EXPECT_EQ(buttonText(*view, "helperButton"), "Install helper");
    EXPECT_EQ(find<PushButton>(*view, "helperButton").kind(), PushButton::Kind::prominent);
    EXPECT_EQ(textOf(*view, "helperText"), "");
}

TEST_F(SettingsPreview, InstalledOffersToRemove) {
    open(State::installed);
    EXPECT_EQ(badgeOf(*view, "helperBadge"), "Installed");
    EXPECT_EQ(buttonText(*view, "helperButton"), "Remove helper");
    EXPECT_EQ(find<PushButton>(*view, "helperButton").kind(), PushButton::Kind::plain);
    EXPECT_EQ(textOf(*view, "helperText"), "Run a Claude Code session to refresh the gauge.");
}

TEST_F(SettingsPreview, AConflictOffersToReinstallAndNotToRemove) {
    open(State::conflict);
    EXPECT_EQ(badgeOf(*view, "helperBadge"), "Needs attention");
    EXPECT_EQ(buttonText(*view, "helperButton"), "Reinstall helper");
    EXPECT_EQ(textOf(*view, "helperText"), "Your statusLine changed outside the app.");
}

TEST_F(SettingsPreview, EverythingFitsWithoutScrolling) {
    for (const State state : {State::notInstalled, State::installed, State::conflict}) {
        open(state);
        settle();
        EXPECT_EQ(find<HUDScrollArea>(*view, "settingsScroll").verticalScrollBar()->maximum(), 0);
    }
}

TEST_F(SettingsPreview, AFailureStandsUnderTheButtonAndMayScroll) {
    open(State::notInstalled);
    EXPECT_EQ(textOf(*view, "settingsError"), "");
    QTest::mouseClick(&find<PushButton>(*view, "helperButton"), Qt::LeftButton);
    EXPECT_EQ(textOf(*view, "settingsError"), "Shim not found — build the app with Scripts/make-app");
    settle();
    EXPECT_GT(find<HUDScrollArea>(*view, "settingsScroll").verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(find<HUDLabel>(*view, "settingsError").textStyle().color, &Palette::warn);
}

TEST_F(SettingsPreview, CodeWordsAreReadWithoutTheirMarks) {
    open(State::notInstalled);
    EXPECT_EQ(find<ProseLabel>(*view, "gaugeText").text().toStdString(),
              "The app reads Claude Code's official limit percentages through a tiny statusLine helper. Installing it "
              "adds one entry to ~/.claude/settings.json (backed up first) and preserves any status line you already "
              "use. It's fully reversible.");
}

TEST_F(SettingsPreview, PollingIsOffAndCannotBeTurnedOn) {
    open(State::notInstalled);
    auto& polling = find<SwitchButton>(*view, "pollingSwitch");
    EXPECT_FALSE(polling.isEnabled());
    QTest::mouseClick(&polling, Qt::LeftButton);
    EXPECT_FALSE(polling.isChecked());
}

TEST_F(SettingsPreview, TheSwitchFollowsAndSetsThePreference) {
    open(State::notInstalled);
    auto& alerts = find<SwitchButton>(*view, "alertsSwitch");
    EXPECT_TRUE(alerts.isChecked()) << "never decided is on";
    QTest::mouseClick(&alerts, Qt::LeftButton);
    EXPECT_FALSE(preferences.thresholdAlertsEnabled());
    preferences.setThresholdAlertsEnabled(true);
    EXPECT_TRUE(alerts.isChecked()) << "whoever set it";
}

TEST_F(SettingsPreview, ThePickerFollowsAndSetsThePreference) {
    preferences.setAppearancePreference(QStringLiteral("light"));
    open(State::notInstalled);
    auto& picker = find<SegmentedPicker>(*view, "appearancePicker");
    EXPECT_EQ(picker.chosen(), 1);
    const auto segments = picker.findChildren<SegmentButton*>();
    ASSERT_EQ(segments.size(), 3);
    EXPECT_EQ(segments[0]->text(), QStringLiteral("Match system"));
    QTest::mouseClick(segments[2], Qt::LeftButton);
    EXPECT_EQ(preferences.appearancePreference(), QStringLiteral("dark"));
    preferences.setAppearancePreference(QStringLiteral("system"));
    EXPECT_EQ(picker.chosen(), 0);
}

TEST_F(SettingsPreview, APreferenceThatMeansNothingIsShownAsSystemAndLeftAlone) {
    preferences.setAppearancePreference(QStringLiteral("sepia"));
    open(State::notInstalled);
    EXPECT_EQ(find<SegmentedPicker>(*view, "appearancePicker").chosen(), 0);
    EXPECT_EQ(preferences.appearancePreference(), QStringLiteral("sepia"));
}

TEST_F(SettingsPreview, EveryControlIsReachedByTabWithARingAndHasANameAndARole) {
    open(State::notInstalled);
    if (QWidget* first = view->focusWidget()) first->clearFocus();
    std::vector<std::string> names;
    for (int step = 0; step < 12; ++step) {
        QTest::keyClick(view.get(), Qt::Key_Tab);
        QWidget* focused = view->focusWidget();
        ASSERT_NE(focused, nullptr);
        auto* accessible = QAccessible::queryAccessibleInterface(focused);
        const auto role = accessible->role();
        EXPECT_TRUE(role == QAccessible::Button || role == QAccessible::CheckBox || role == QAccessible::RadioButton);
        EXPECT_NE(view->findChild<FocusRing*>(), nullptr);
        names.push_back(accessible->text(QAccessible::Name).toStdString());
    }
    EXPECT_THAT(names, testing::IsSupersetOf({std::string("Install helper"), std::string("Match system"),
                                              std::string("Warn at 90%, 95%, and 99% of a limit")}));
    EXPECT_THAT(names, testing::Not(testing::Contains("")));
}

TEST_F(SettingsPreview, ReturnPressesTheButtonInFocus) {
    open(State::notInstalled);
    auto& button = find<PushButton>(*view, "helperButton");
    button.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_NE(textOf(*view, "settingsError"), "");
}

/// On a home of its own, with a bundle that has a helper.
class SettingsOnARealHome : public testing::Test {
protected:
    TestSupport::TemporaryFolder home;
    AppPaths paths{home.path()};
    FakeNotificationService service;
    ApplicationLook look{Look{.appearance = Appearance::dark}};
    FakePreferences preferences;
    std::unique_ptr<UsageStore> store;
    std::unique_ptr<SettingsView> view;
    int settingsOpened = 0;

    void SetUp() override {
        TestSupport::writeFile(home.path() / "Test.app/Contents/Helpers" / AppPaths::shimName, "#!/bin/sh\n");
        std::filesystem::create_directories(paths.claudeSettings().parent_path());
        store = std::make_unique<UsageStore>(UsageStore::World{.paths = paths,
                                                               .calendar = UsageModel::Calendar::utc(),
                                                               .bundle = home.path() / "Test.app",
                                                               .notifications = service});
        view = std::make_unique<SettingsView>(
            look, SettingsView::Surroundings{.store = *store,
                                             .preferences = preferences,
                                             .settingsFile = paths.claudeSettings(),
                                             .openSystemSettings = [this] { ++settingsOpened; }});
        show(*view, SettingsView::fixedSize);
    }

    void clickHelper() { QTest::mouseClick(&find<PushButton>(*view, "helperButton"), Qt::LeftButton); }

    [[nodiscard]] std::string settings() const {
        std::ostringstream text;
        text << std::ifstream(paths.claudeSettings()).rdbuf();
        return text.str();
    }

    /// As editors and other programs do it: beside, and renamed over.
    void replaceSettings(const std::string& text) const {
        TestSupport::writeFile(paths.claudeSettings().string() + ".new", text);
        std::filesystem::rename(paths.claudeSettings().string() + ".new", paths.claudeSettings());
    }

    [[nodiscard]] bool comesToShow(const std::string& badge) {
        return QTest::qWaitFor([&] { return badgeOf(*view, "helperBadge") == badge; }, 10000);
    }
};

TEST_F(SettingsOnARealHome, InstallsAndRemovesTheHelper) {
    TestSupport::writeFile(paths.claudeSettings(), R"({"model": "opus"})");
    clickHelper();
    EXPECT_EQ(badgeOf(*view, "helperBadge"), "Installed");
    EXPECT_THAT(settings(), testing::HasSubstr("brindlewick-statusline"));
    EXPECT_THAT(settings(), testing::HasSubstr("opus"));
    clickHelper();
    EXPECT_EQ(badgeOf(*view, "helperBadge"), "Not installed");
    EXPECT_THAT(settings(), testing::Not(testing::HasSubstr("brindlewick-statusline")));
}

TEST_F(SettingsOnARealHome, ShowsAConflictWhenAnotherProgramRewritesTheStatusLine) {
    clickHelper();
    ASSERT_EQ(badgeOf(*view, "helperBadge"), "Installed");
    replaceSettings(R"({"statusLine": {"type": "command", "command": "mine.sh"}})");
    ASSERT_TRUE(comesToShow("Needs attention"));
    EXPECT_EQ(buttonText(*view, "helperButton"), "Reinstall helper");
    // A second time: the watch outlives the file it was on.
    clickHelper();
    ASSERT_EQ(badgeOf(*view, "helperBadge"), "Installed");
    TestSupport::writeFile(paths.claudeSettings(), R"({"statusLine": {"type": "command", "command": "other.sh"}})");
    EXPECT_TRUE(comesToShow("Needs attention"));
}

TEST_F(SettingsOnARealHome, NoticesASettingsFileThatGoesAndComesBack) {
    clickHelper();
    const std::string installed = settings();
    std::filesystem::remove(paths.claudeSettings());
    ASSERT_TRUE(comesToShow("Needs attention"));
    replaceSettings(installed);
    EXPECT_TRUE(comesToShow("Installed"));
}

TEST_F(SettingsOnARealHome, LooksAgainWhenItIsOpenedAnew) {
    clickHelper();
    view->hide();
    replaceSettings("{}");
    view->show();
    EXPECT_TRUE(comesToShow("Needs attention"));
}

TEST_F(SettingsOnARealHome, NoticesAFolderThatComesLater) {
    clickHelper();
    const std::string installed = settings();
    std::filesystem::remove_all(paths.claudeSettings().parent_path());
    ASSERT_TRUE(comesToShow("Needs attention"));
    std::filesystem::create_directories(paths.claudeSettings().parent_path());
    replaceSettings(installed);
    EXPECT_TRUE(comesToShow("Installed"));
}

TEST_F(SettingsOnARealHome, ShowsWhatStandsInTheWay) {
    std::filesystem::create_directories(paths.claudeSettings());
    clickHelper();
    EXPECT_THAT(textOf(*view, "settingsError"), testing::StartsWith("Install failed: "));
    EXPECT_EQ(badgeOf(*view, "helperBadge"), "Not installed");
}

TEST_F(SettingsOnARealHome, AsksForThePermissionWhenItAppears) {
    EXPECT_EQ(service.statusQuestions.size(), 1U);
    EXPECT_EQ(badgeOf(*view, "permissionBadge"), "Not yet granted");
    EXPECT_FALSE(find<PushButton>(*view, "testButton").isEnabled());
    EXPECT_EQ(buttonText(*view, "systemSettingsButton"), "");
}

TEST_F(SettingsOnARealHome, AllowedItSendsATest) {
    service.answerStatus(AuthorizationStatus::authorized);
    EXPECT_EQ(badgeOf(*view, "permissionBadge"), "Allowed");
    QTest::mouseClick(&find<PushButton>(*view, "testButton"), Qt::LeftButton);
    EXPECT_EQ(service.posted.size(), 1U);
}

TEST_F(SettingsOnARealHome, ProvisionallyAllowedItSendsNone) {
    service.answerStatus(AuthorizationStatus::provisional);
    EXPECT_EQ(badgeOf(*view, "permissionBadge"), "Allowed");
    EXPECT_FALSE(find<PushButton>(*view, "testButton").isEnabled());
}

TEST_F(SettingsOnARealHome, DeniedItOffersTheSystemsSettings) {
    service.answerStatus(AuthorizationStatus::denied);
    EXPECT_EQ(badgeOf(*view, "permissionBadge"), "Blocked in System Settings");
    EXPECT_EQ(find<SettingsBadge>(*view, "permissionBadge").badge().icon, SettingsTexts::BadgeIcon::bellSlash);
    EXPECT_FALSE(find<PushButton>(*view, "testButton").isEnabled());
    QApplication::processEvents();
    QTest::mouseClick(&find<PushButton>(*view, "systemSettingsButton"), Qt::LeftButton);
    EXPECT_EQ(settingsOpened, 1);
}

TEST(SettingsAndTheirFile, KeepWhatWasChosenAndWriteNothingUnasked) {
    const TestSupport::TemporaryFolder home;
    const QString file = QString::fromStdString((home / "settings.conf").string());
    const ApplicationLook look{Look{}};
    const auto store = UsageStore::preview({.snapshot = UsageSnapshot::warmingUp({})});
    SettingsPreferences preferences(file);
    SettingsView view(look, {.store = *store, .preferences = preferences});
    show(view, SettingsView::fixedSize);
    EXPECT_FALSE(std::filesystem::exists(home / "settings.conf")) << "to look is not to decide";
    QTest::mouseClick(find<SegmentedPicker>(view, "appearancePicker").findChildren<SegmentButton*>()[2],
                      Qt::LeftButton);
    QTest::mouseClick(&find<SwitchButton>(view, "alertsSwitch"), Qt::LeftButton);
    const SettingsPreferences again(file);
    EXPECT_EQ(again.appearancePreference(), QStringLiteral("dark"));
    EXPECT_FALSE(again.thresholdAlertsEnabled());
}

} // namespace
