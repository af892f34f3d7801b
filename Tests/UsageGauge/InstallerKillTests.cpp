// The process is killed before each single step of an install and an uninstall.

#include <csignal>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageGauge/KillPoints.h"
#include "UsageGauge/StatusLineInstaller.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"

namespace UsageGauge {
namespace {

namespace fs = std::filesystem;
using UsageModel::readWholeFile;

constexpr UsageModel::Date now{1790000000};
const std::string original = R"({"model": "opus", "statusLine": {"type": "command", "command": "mine"}})";

enum class End { killed, finished };

class InstallerKillTest : public testing::Test {
protected:
    /// A fresh home with a shim to install and the user's settings.
    struct Home {
        Home() {
            TestSupport::writeFile(folder / "built/shim", "#!/bin/sh\n");
            TestSupport::writeFile(paths.claudeSettings(), original);
        }
        void install() const { installer.install(folder / "built/shim", now); }
        [[nodiscard]] std::string settings() const { return readWholeFile(paths.claudeSettings()); }

        TestSupport::TemporaryFolder folder{TestSupport::fastestParent()};
        UsageModel::AppPaths paths{folder.path()};
        StatusLineInstaller installer{paths.claudeSettings(), paths.support()};
    };

    static End killedAt(long n, const std::function<void()>& work) {
        const pid_t child = fork();
        if (child == 0) {
            KillPoints::killAt(n);
            work();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0);
        return WIFSIGNALED(status) ? End::killed : End::finished;
    }

    /// The folder's name stands in the settings, and differs from home to home.
    static std::string withoutHome(std::string text, const Home& home) {
        const std::string name = home.folder.path().string();
        for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name))
            text.erase(at, name.size());
        return text;
    }
};

TEST_F(InstallerKillTest, AnInstallLeavesTheOldSettingsOrTheNew) {
    const Home whole;
    whole.install();
    const std::string installed = withoutHome(whole.settings(), whole);
    long steps = 0;
    for (End end = End::killed; end == End::killed; ++steps) {
        const Home home;
        end = killedAt(steps + 1, [&] { home.install(); });
        const std::string left = withoutHome(home.settings(), home);
        EXPECT_TRUE(left == original || left == installed) << "step " << steps + 1 << ": " << left;

        home.install();
        EXPECT_EQ(home.installer.state(), StatusLineInstaller::State::installed) << steps + 1;
        home.installer.uninstall();
        EXPECT_EQ(home.installer.state(), StatusLineInstaller::State::notInstalled) << steps + 1;
        EXPECT_EQ(nlohmann::json::parse(home.settings()), nlohmann::json::parse(original)) << steps + 1;
        EXPECT_EQ(readWholeFile(home.installer.backupFile()), original) << steps + 1;
    }
    EXPECT_GT(steps, 20);
}

TEST_F(InstallerKillTest, AnUninstallLeavesTheOldSettingsOrTheNew) {
    long steps = 0;
    for (End end = End::killed; end == End::killed; ++steps) {
        const Home home;
        home.install();
        const std::string installed = home.settings();
        end = killedAt(steps + 1, [&] { home.installer.uninstall(); });
        const std::string left = home.settings();

        home.installer.uninstall();
        const std::string restored = home.settings();
        EXPECT_TRUE(left == installed || left == restored) << "step " << steps + 1 << ": " << left;
        EXPECT_EQ(nlohmann::json::parse(restored), nlohmann::json::parse(original)) << steps + 1;
        EXPECT_EQ(home.installer.state(), StatusLineInstaller::State::notInstalled);
    }
    EXPECT_GT(steps, 5);
}

} // namespace
} // namespace UsageGauge
