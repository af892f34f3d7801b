#include "HarrowlaneApp/Platform/Portable/SettingsPreferences.h"

#include <gtest/gtest.h>

#include "HarrowlaneApp/Waiting.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "UsageModel/Files.h"

namespace HarrowlaneApp {

namespace {

class SettingsPreferencesTest : public testing::Test {
protected:
    [[nodiscard]] QString file() const { return QString::fromStdString(path.string()); }
    void write(const std::string& content) const { TestSupport::writeFile(path, content); }
    void replace(const std::string& content) const {
        UsageModel::replaceFile({.file = path, .temporary = path.string() + ".new", .content = content});
    }

    TestSupport::TemporaryFolder folder;
    std::filesystem::path path = folder / "config/meter.ini";
};

TEST_F(SettingsPreferencesTest, StartsWithAlertsOnAndTheSystemsLook) {
    const SettingsPreferences preferences(file());
    EXPECT_TRUE(preferences.thresholdAlertsEnabled());
    EXPECT_EQ(preferences.appearancePreference(), "system");
    EXPECT_FALSE(std::filesystem::exists(path)) << "nothing was decided yet";
}

TEST_F(SettingsPreferencesTest, KeepsWhatWasDecided) {
    {
        SettingsPreferences preferences(file());
        preferences.setThresholdAlertsEnabled(false);
        preferences.setAppearancePreference("dark");
        EXPECT_FALSE(preferences.thresholdAlertsEnabled());
    }
    const SettingsPreferences again(file());
    EXPECT_FALSE(again.thresholdAlertsEnabled());
    EXPECT_EQ(again.appearancePreference(), "dark");
    EXPECT_NE(UsageModel::readWholeFile(path).find("thresholdAlertsEnabled=false"), std::string::npos);
}

TEST_F(SettingsPreferencesTest, TellsOfAChangeOnceAndOfNoneNever) {
    SettingsPreferences preferences(file());
    int changes = 0;
    QObject::connect(&preferences, &Preferences::changed, [&changes] { ++changes; });
    preferences.setThresholdAlertsEnabled(true);
    preferences.setAppearancePreference("system");
    EXPECT_EQ(changes, 0);
    preferences.setAppearancePreference("light");
    EXPECT_EQ(changes, 1);
    preferences.setAppearancePreference("light");
    preferences.setThresholdAlertsEnabled(false);
    EXPECT_EQ(changes, 2);
    // What the watch of our own writes brings is nothing new.
    write("[General]\nappearancePreference=last\nthresholdAlertsEnabled=false\n");
    ASSERT_TRUE(becomes([&] { return preferences.appearancePreference() == "last"; }));
    EXPECT_EQ(changes, 3);
}

TEST_F(SettingsPreferencesTest, SeesAFileThatAppears) {
    SettingsPreferences preferences(file());
    write("[General]\nthresholdAlertsEnabled=false\n");
    EXPECT_TRUE(becomes([&] { return !preferences.thresholdAlertsEnabled(); }));
}

TEST_F(SettingsPreferencesTest, SeesAFileThatIsReplacedAgainAndAgain) {
    write("");
    SettingsPreferences preferences(file());
    for (const char* look : {"light", "dark", "system", "light"}) {
        replace(std::string("[General]\nappearancePreference=") + look + "\n");
        EXPECT_TRUE(becomes([&] { return preferences.appearancePreference() == look; })) << look;
    }
}

TEST_F(SettingsPreferencesTest, SeesAFileThatIsWrittenInPlace) {
    write("[General]\nappearancePreference=light\n");
    SettingsPreferences preferences(file());
    for (const char* look : {"dark", "system"}) {
        write(std::string("[General]\nappearancePreference=") + look + "\n");
        EXPECT_TRUE(becomes([&] { return preferences.appearancePreference() == look; })) << look;
    }
}

TEST_F(SettingsPreferencesTest, GoesBackToWhatIsUsualWhenTheFileGoes) {
    write("[General]\nappearancePreference=light\nthresholdAlertsEnabled=false\n");
    SettingsPreferences preferences(file());
    EXPECT_FALSE(preferences.thresholdAlertsEnabled());
    std::filesystem::remove(path);
    EXPECT_TRUE(becomes([&] { return preferences.thresholdAlertsEnabled(); }));
    EXPECT_EQ(preferences.appearancePreference(), "system");
}

TEST_F(SettingsPreferencesTest, HandsOutATextThatMeansNothing) {
    write("[General]\nappearancePreference=sepia\n");
    EXPECT_EQ(SettingsPreferences(file()).appearancePreference(), "sepia");
}

struct Row {
    const char* written;
    bool enabled;
};

TEST_F(SettingsPreferencesTest, ReadsTheFormsOfTrueAndFalse) {
    for (const Row& row :
         {Row{"true", true}, Row{"false", false}, Row{"1", true}, Row{"0", false}, Row{"FALSE", false}}) {
        write(std::string("[General]\nthresholdAlertsEnabled=") + row.written + "\n");
        EXPECT_EQ(SettingsPreferences(file()).thresholdAlertsEnabled(), row.enabled) << row.written;
    }
}

TEST_F(SettingsPreferencesTest, SurvivesAFileThatIsNoSettingsFile) {
    write(std::string("\0\xff[[[=\n===", 9));
    SettingsPreferences preferences(file());
    EXPECT_TRUE(preferences.thresholdAlertsEnabled());
    preferences.setThresholdAlertsEnabled(false);
    EXPECT_FALSE(SettingsPreferences(file()).thresholdAlertsEnabled());
}

TEST_F(SettingsPreferencesTest, LeavesWhatElseStandsInTheFile) {
    write("[General]\nother=7\n\n[Window]\nwidth=3\n");
    SettingsPreferences(file()).setThresholdAlertsEnabled(false);
    const std::string content = UsageModel::readWholeFile(path);
    EXPECT_NE(content.find("other=7"), std::string::npos);
    EXPECT_NE(content.find("width=3"), std::string::npos);
}

TEST_F(SettingsPreferencesTest, HoldsInMemoryWhatCannotBeWritten) {
    TestSupport::writeFile(folder / "config", "a file where the folder would be");
    SettingsPreferences preferences(file());
    preferences.setThresholdAlertsEnabled(false);
    EXPECT_FALSE(preferences.thresholdAlertsEnabled());
}

TEST_F(SettingsPreferencesTest, KeepsTheFileOnAFullDiskAndWritesAllOnceThereIsRoom) {
    const TestSupport::SmallDisk disk(path.parent_path());
    if (!disk.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
    SettingsPreferences(file()).setAppearancePreference("dark");
    const std::string former = UsageModel::readWholeFile(path);
    ASSERT_NE(former, "");

    SettingsPreferences preferences(file());
    disk.fill();
    preferences.setAppearancePreference("light");
    EXPECT_EQ(preferences.appearancePreference(), "light");
    EXPECT_EQ(UsageModel::readWholeFile(path), former);

    disk.makeRoom();
    preferences.setThresholdAlertsEnabled(false);
    const SettingsPreferences again(file());
    EXPECT_FALSE(again.thresholdAlertsEnabled());
    EXPECT_EQ(again.appearancePreference(), "light");
}

} // namespace

} // namespace HarrowlaneApp
