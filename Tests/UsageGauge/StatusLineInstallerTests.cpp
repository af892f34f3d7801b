#include "UsageGauge/StatusLineInstaller.h"

#include <cstdlib>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"
#include "UsageModel/Json.h"

namespace UsageGauge {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using State = StatusLineInstaller::State;
using UsageModel::AppPaths;
using UsageModel::Date;
using UsageModel::readWholeFile;

constexpr Date now{1790000000};

class StatusLineInstallerTest : public testing::Test {
protected:
    StatusLineInstallerTest() {
        TestSupport::writeFile(shim_,
                               "#!/bin/sh\nprintf 'shim for [%s]\\n' \"$HWL_WRAPPED_STATUSLINE\"\ncat >/dev/null\n");
        fs::create_directories(settings_.parent_path());
    }

    void writeSettings(const std::string& text) const { TestSupport::writeFile(settings_, text); }
    [[nodiscard]] json settings() const { return json::parse(readWholeFile(settings_)); }
    [[nodiscard]] std::string command() const { return settings()["statusLine"]["command"]; }
    [[nodiscard]] InstallMarker marker() const {
        return UsageModel::Json::decode<InstallMarker>(json::parse(readWholeFile(installer_.markerFile())));
    }
    void writeMarker(const InstallMarker& marker) const {
        TestSupport::writeFile(installer_.markerFile(), UsageModel::Json::encode(marker).dump());
    }
    void install() const { installer_.install(shim_, now); }
    [[nodiscard]] static std::string quoted(const fs::path& path) { return "'" + path.string() + "'"; }
    [[nodiscard]] std::size_t filesBeside(const fs::path& file) const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(file.parent_path()), {}));
    }

    TestSupport::TemporaryFolder home_;
    AppPaths paths_{home_.path()};
    fs::path settings_ = paths_.claudeSettings();
    fs::path shim_ = home_ / "built/brindlewick-statusline";
    StatusLineInstaller installer_{settings_, paths_.support()};
};

TEST_F(StatusLineInstallerTest, WithoutSettingsMakesThemAndTakesThemAway) {
    EXPECT_EQ(installer_.state(), State::notInstalled);
    install();
    EXPECT_EQ(installer_.state(), State::installed);
    EXPECT_EQ(settings(), (json{{"statusLine", {{"type", "command"}, {"command", quoted(installer_.shimDestURL())}}}}));
    EXPECT_FALSE(fs::exists(installer_.backupFile()));
    EXPECT_EQ(marker(), (InstallMarker{.installed = true,
                                       .shimPath = installer_.shimDestURL().string(),
                                       .priorStatusLineJSON = {},
                                       .createdSettings = true,
                                       .installedAt = now}));
    EXPECT_EQ(readWholeFile(installer_.shimDestURL()), readWholeFile(shim_));
    EXPECT_EQ(fs::status(installer_.shimDestURL()).permissions(), fs::perms{0755});

    installer_.uninstall();
    EXPECT_EQ(installer_.state(), State::notInstalled);
    EXPECT_FALSE(fs::exists(settings_));
    EXPECT_FALSE(fs::exists(installer_.markerFile()));
    EXPECT_TRUE(fs::exists(installer_.shimDestURL()));
}

TEST_F(StatusLineInstallerTest, WithoutAFolderForTheSettingsFailsLate) {
    fs::remove_all(settings_.parent_path());
    EXPECT_THROW(install(), std::system_error);
    EXPECT_TRUE(fs::exists(installer_.shimDestURL()));
    EXPECT_FALSE(fs::exists(installer_.markerFile()));
    EXPECT_EQ(installer_.state(), State::notInstalled);
}

TEST_F(StatusLineInstallerTest, ABareStringComesBack) {
    writeSettings(R"({"statusLine":"cat"})");
    install();
    EXPECT_EQ(command(), "HWL_WRAPPED_STATUSLINE='cat' " + quoted(installer_.shimDestURL()));
    EXPECT_EQ(marker().priorStatusLineJSON, "\"cat\"");
    EXPECT_FALSE(marker().createdSettings);
    EXPECT_EQ(readWholeFile(installer_.backupFile()), R"({"statusLine":"cat"})");
    installer_.uninstall();
    EXPECT_EQ(settings(), (json{{"statusLine", "cat"}}));
    EXPECT_TRUE(fs::exists(installer_.backupFile()));
}

TEST_F(StatusLineInstallerTest, AnObjectComesBackWhole) {
    const json prior{{"type", "command"}, {"command", "mine --x"}, {"padding", 1.5}, {"more", {{"a", nullptr}}}};
    writeSettings(json{{"model", "opus"}, {"statusLine", prior}}.dump());
    install();
    EXPECT_EQ(settings()["statusLine"],
              (json{{"type", "command"},
                    {"command", "HWL_WRAPPED_STATUSLINE='mine --x' " + quoted(installer_.shimDestURL())}}));
    EXPECT_EQ(settings()["model"], "opus");
    installer_.uninstall();
    EXPECT_EQ(settings(), (json{{"model", "opus"}, {"statusLine", prior}}));
}

TEST_F(StatusLineInstallerTest, AStatusLineWithoutACommandIsKeptButNotWrapped) {
    for (const json& prior : {json(nullptr), json(5), json(true), json::object(), json{{"command", 7}}, json("")}) {
        writeSettings(json{{"statusLine", prior}}.dump());
        install();
        EXPECT_EQ(command(), quoted(installer_.shimDestURL())) << prior;
        installer_.uninstall();
        EXPECT_EQ(settings(), (json{{"statusLine", prior}}));
    }
}

TEST_F(StatusLineInstallerTest, ASecondInstallKeepsWhatTheFirstRemembered) {
    writeSettings(R"({"statusLine":"cat"})");
    install();
    writeSettings(R"({"statusLine":"newer","other":1})");
    EXPECT_EQ(installer_.state(), State::conflict);
    installer_.install(shim_, now + 60.0);
    EXPECT_EQ(installer_.state(), State::installed);
    EXPECT_EQ(command(), "HWL_WRAPPED_STATUSLINE='cat' " + quoted(installer_.shimDestURL()));
    EXPECT_EQ(marker().priorStatusLineJSON, "\"cat\"");
    EXPECT_FALSE(marker().createdSettings);
    EXPECT_EQ(marker().installedAt, now + 60.0);
    EXPECT_EQ(readWholeFile(installer_.backupFile()), R"({"statusLine":"cat"})");
}

TEST_F(StatusLineInstallerTest, AnEarlierNameOfTheShimIsOurs) {
    writeSettings(R"({"statusLine":{"type":"command","command":"'/x/ferrowind-statusline'"}})");
    install();
    EXPECT_EQ(command(), quoted(installer_.shimDestURL()));
    EXPECT_FALSE(marker().priorStatusLineJSON);
    installer_.uninstall();
    EXPECT_EQ(settings(), json::object());
}

TEST_F(StatusLineInstallerTest, ARememberedShimIsNotWrapped) {
    writeMarker({.installed = true,
                 .shimPath = "",
                 .priorStatusLineJSON = "\"harrow-lane-statusline -x\"",
                 .createdSettings = false,
                 .installedAt = now});
    install();
    EXPECT_EQ(command(), quoted(installer_.shimDestURL()));
    EXPECT_EQ(marker().priorStatusLineJSON, "\"harrow-lane-statusline -x\"");
}

TEST_F(StatusLineInstallerTest, SettingsThatAreNoJsonAreReplacedAndBackedUp) {
    writeSettings("{\"statusLine\": oops");
    writeMarker(
        {.installed = true, .shimPath = "", .priorStatusLineJSON = {}, .createdSettings = false, .installedAt = now});
    EXPECT_EQ(installer_.state(), State::conflict);
    install();
    EXPECT_EQ(installer_.state(), State::installed);
    EXPECT_EQ(settings().size(), 1U);
    EXPECT_EQ(readWholeFile(installer_.backupFile()), "{\"statusLine\": oops");
}

TEST_F(StatusLineInstallerTest, AMarkerOfNoInstallOnlyTellsWhoMadeTheSettings) {
    writeSettings(R"({"statusLine":"cat"})");
    writeMarker({.installed = false,
                 .shimPath = "",
                 .priorStatusLineJSON = "\"old\"",
                 .createdSettings = true,
                 .installedAt = now});
    EXPECT_EQ(installer_.state(), State::notInstalled);
    install();
    EXPECT_EQ(marker().priorStatusLineJSON, "\"cat\"");
    EXPECT_TRUE(marker().createdSettings);
}

TEST_F(StatusLineInstallerTest, ATornMarkerIsNone) {
    writeSettings(R"({"statusLine":"cat"})");
    install();
    TestSupport::writeFile(installer_.markerFile(), R"({"installed":true,"shim)");
    EXPECT_EQ(installer_.state(), State::notInstalled);
    const std::string before = readWholeFile(settings_);
    installer_.uninstall();
    EXPECT_EQ(readWholeFile(settings_), before);
}

TEST_F(StatusLineInstallerTest, AfterALostMarkerTheBackupStillTellsTheUsersEntry) {
    const auto original = json::parse(R"({"a":1,"statusLine":{"type":"command","command":"it's","padding":2}})");
    writeSettings(original.dump());
    install();
    fs::remove(installer_.markerFile());
    install();
    EXPECT_EQ(command(), "HWL_WRAPPED_STATUSLINE='it'\\''s' " + quoted(installer_.shimDestURL()));
    installer_.uninstall();
    EXPECT_EQ(settings(), original);
}

TEST_F(StatusLineInstallerTest, ABackupOfAnotherEntryIsNotTakenForWhatWasWrapped) {
    writeSettings(R"({"statusLine":"cat"})");
    install();
    installer_.uninstall();
    writeSettings(R"({"statusLine":"dog"})");
    install();
    fs::remove(installer_.markerFile());
    install();
    EXPECT_FALSE(marker().priorStatusLineJSON);
}

TEST_F(StatusLineInstallerTest, AMarkerWhosePriorIsNoJsonRemovesTheEntry) {
    writeSettings(R"({"a":1,"statusLine":"x"})");
    writeMarker({.installed = true,
                 .shimPath = "",
                 .priorStatusLineJSON = "{oops",
                 .createdSettings = false,
                 .installedAt = now});
    installer_.uninstall();
    EXPECT_EQ(settings(), (json{{"a", 1}}));
}

TEST_F(StatusLineInstallerTest, WithoutAMarkerUninstallTouchesNothing) {
    writeSettings(R"({ "statusLine" : "mine" })");
    installer_.uninstall();
    EXPECT_EQ(readWholeFile(settings_), R"({ "statusLine" : "mine" })");
}

TEST_F(StatusLineInstallerTest, AnUninstallOverwritesANewerEntry) {
    writeSettings(R"({"statusLine":"cat"})");
    install();
    writeSettings(R"({"statusLine":"newer"})");
    installer_.uninstall();
    EXPECT_EQ(settings(), (json{{"statusLine", "cat"}}));
}

TEST_F(StatusLineInstallerTest, SettingsThatGotOtherMembersStay) {
    install();
    json grown = settings();
    grown["model"] = "opus";
    writeSettings(grown.dump());
    installer_.uninstall();
    EXPECT_EQ(settings(), (json{{"model", "opus"}}));
}

TEST_F(StatusLineInstallerTest, TheModeOfTheSettingsIsKept) {
    for (const fs::perms mode : {fs::perms{0644}, fs::perms{0600}, fs::perms{0444}, fs::perms{0660}}) {
        writeSettings("{}");
        fs::permissions(settings_, mode);
        install();
        EXPECT_EQ(fs::status(settings_).permissions(), mode);
        installer_.uninstall();
        EXPECT_EQ(fs::status(settings_).permissions(), mode);
        fs::remove(settings_);
    }
}

TEST_F(StatusLineInstallerTest, ALinkStaysAndItsTargetIsReplaced) {
    const fs::path target = home_ / "repository/settings.json";
    TestSupport::writeFile(target, R"({"a":1})");
    fs::create_symlink("../repository/settings.json", settings_);
    install();
    EXPECT_TRUE(fs::is_symlink(settings_));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
    EXPECT_EQ(json::parse(readWholeFile(target))["a"], 1);
    EXPECT_EQ(installer_.state(), State::installed);
    installer_.uninstall();
    EXPECT_TRUE(fs::is_symlink(settings_));
    EXPECT_EQ(json::parse(readWholeFile(target)), (json{{"a", 1}}));
    EXPECT_EQ(filesBeside(target), 1U);
}

TEST_F(StatusLineInstallerTest, ADanglingLinkGetsItsTarget) {
    fs::create_directories(home_ / "repository");
    fs::create_symlink(home_ / "repository/settings.json", settings_);
    install();
    EXPECT_TRUE(fs::is_symlink(settings_));
    EXPECT_EQ(installer_.state(), State::installed);
}

TEST_F(StatusLineInstallerTest, ALoopOfLinksFails) {
    fs::create_symlink(settings_, settings_);
    EXPECT_THROW(install(), std::system_error);
}

TEST_F(StatusLineInstallerTest, LeavesNothingBeside) {
    writeSettings("{}");
    install();
    EXPECT_EQ(filesBeside(settings_), 2U); // and the backup
    EXPECT_EQ(filesBeside(installer_.shimDestURL()), 1U);
    EXPECT_EQ(filesBeside(installer_.markerFile()), 2U); // and "bin"
}

TEST_F(StatusLineInstallerTest, AMissingShimLeavesTheInstalledOne) {
    install();
    EXPECT_THROW(installer_.install(home_ / "nowhere", now), std::system_error);
    EXPECT_TRUE(fs::exists(installer_.shimDestURL()));
    EXPECT_EQ(installer_.state(), State::installed);
}

TEST_F(StatusLineInstallerTest, TheInstalledShimMayBeTheSource) {
    install();
    installer_.install(installer_.shimDestURL(), now);
    EXPECT_EQ(readWholeFile(installer_.shimDestURL()), readWholeFile(shim_));
}

TEST_F(StatusLineInstallerTest, AFolderInTheShimsPlaceGivesWay) {
    fs::create_directories(installer_.shimDestURL() / "inner");
    install();
    EXPECT_TRUE(fs::is_regular_file(installer_.shimDestURL()));
}

TEST_F(StatusLineInstallerTest, AFolderThatMayNotBeWrittenFailsAndKeepsAll) {
    writeSettings(R"({"a":1})");
    fs::permissions(home_.path(), fs::perms{0755});
    fs::permissions(settings_.parent_path(), fs::perms{0555});
    const pid_t child = fork();
    if (child == 0) {
        if (chown(home_.path().c_str(), 65534, 65534) != 0 || setresuid(65534, 65534, 65534) != 0) _exit(2);
        try {
            install();
        } catch (const std::system_error&) {
            _exit(0);
        }
        _exit(1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(readWholeFile(settings_), R"({"a":1})");
    fs::permissions(settings_.parent_path(), fs::perms{0755});
}

TEST_F(StatusLineInstallerTest, ASingleQuoteInTheFoldersPathIsAConflict) {
    const StatusLineInstaller odd(settings_, home_ / "it's/Brindlewick");
    odd.install(shim_, now);
    EXPECT_EQ(odd.state(), State::conflict);
}

TEST_F(StatusLineInstallerTest, APathThatIsNotUtf8FailsClearly) {
    const StatusLineInstaller odd(settings_, home_ / "\xFF");
    EXPECT_THROW(odd.install(shim_, now), UsageModel::Json::Error);
    EXPECT_FALSE(fs::exists(settings_));
}

/// What the shell makes of a command, as Claude Code would run it.
std::string outputOf(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    std::string output;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) output += static_cast<char>(c);
    pclose(pipe);
    return output;
}

class InstalledCommand : public StatusLineInstallerTest, public testing::WithParamInterface<const char*> {};

TEST_P(InstalledCommand, RunsTheShimWithTheFormerCommandUnchanged) {
    const std::string words = GetParam();
    const StatusLineInstaller installer(settings_, home_ / words / "Brindlewick");
    writeSettings(json{{"statusLine", words}}.dump());
    installer.install(shim_, now);
    EXPECT_EQ(outputOf(command()), "shim for [" + words + "]\n");
    installer.uninstall();
    EXPECT_EQ(settings(), (json{{"statusLine", words}}));
}

INSTANTIATE_TEST_SUITE_P(OddWords, InstalledCommand,
                         testing::Values("plain", "two words", "it's", "'", "\"double\"", "$HOME `id` $(id)", "a\nb",
                                         "grüße 日本", "back\\slash", "a;b&c|d>e", "*?[x]", "-n", "#", "~",
                                         "printf '%s\\n' \"it's\" | sed 's/x/y/'"));

/// `jq` is the other reader.
std::string othersBy(const std::string& reader, const fs::path& file) {
    return outputOf(reader + " -cS 'del(.statusLine)' " + file.string() + " 2>&1");
}

class RoundTrip : public StatusLineInstallerTest, public testing::WithParamInterface<std::string> {};

TEST_P(RoundTrip, KeepsAllOtherMembers) {
    writeSettings(GetParam());
    const std::string before = othersBy("jq", settings_);
    ASSERT_TRUE(before.starts_with("{")) << before;
    install();
    EXPECT_EQ(othersBy("jq", settings_), before);
    installer_.uninstall();
    EXPECT_EQ(othersBy("jq", settings_), before);
}

std::string nestedSettings() {
    const std::size_t depth = 200;
    return "{\"deep\":" + std::string(depth, '[') + "1" + std::string(depth, ']') + "}";
}

std::string hugeSettings() {
    std::string text = "{\"permissions\":{\"allow\":[";
    for (int i = 0; i < 100'000; ++i) text += "\"Bash(tool-" + std::to_string(i) + ":*)\",";
    return text + "\"x\"]}}";
}

INSTANTIATE_TEST_SUITE_P(
    Settings, RoundTrip,
    testing::Values(R"({"a":1,"b":[1.0,2.50,1e400,-1e400,9007199254740993,123456789012345678901234567890,1e-7,-0.0]})",
                    R"({"a":1,"a":{"b":2,"b":3},"statusLine":"x","statusLine":"cat"})", "\xEF\xBB\xBF{\"a\":\"mark\"}",
                    R"({"t":"\u00e9\n\t\"\\\/ é 日本 😀 \ud83d\ude00 \u0000\u001f","\u006bey":{"":[[],{}]}})",
                    "{\n  \"hooks\": {\"PreToolUse\": [{\"matcher\": \"*\"}]},\n  \"env\": {\"A\": \"1\"}\n}\n",
                    nestedSettings(), hugeSettings()));

} // namespace
} // namespace UsageGauge
