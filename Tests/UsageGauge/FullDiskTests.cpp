// The helper is installed and removed on a disk that runs full at any page of what they write.

#include <filesystem>
#include <string>
#include <system_error>

#include <gmock/gmock.h>

#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "UsageGauge/StatusLineInstaller.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"
#include "UsageModel/Json.h"

namespace UsageGauge {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using State = StatusLineInstaller::State;
using UsageModel::readWholeFile;

constexpr UsageModel::Date now{1790000000};
constexpr std::uintmax_t page = 4096;
constexpr std::uintmax_t roomForAll = 40 * page;

class FullDiskTest : public testing::Test {
protected:
    void SetUp() override {
        if (!disk_.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
        TestSupport::writeFile(shim_, "#!/bin/sh\n" + std::string(3 * page, '#'));
        TestSupport::writeFile(paths_.claudeSettings(), mine_);
    }

    void install() const { installer_.install(shim_, now); }
    /// Whether there was room for it; what was thrown for want of it has words.
    template <typename Work>
    [[nodiscard]] bool succeedsIn(std::uintmax_t room, Work work) const {
        disk_.fill(room);
        bool succeeds = true;
        try {
            work();
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code(), std::errc::no_space_on_device) << error.what();
            succeeds = false;
        }
        disk_.makeRoom();
        return succeeds;
    }

    void expectNothingHalf() const {
        EXPECT_THAT(TestSupport::temporaryFilesBelow(home_), testing::IsEmpty());
        if (fs::exists(installer_.backupFile())) {
            EXPECT_EQ(readWholeFile(installer_.backupFile()), mine_);
        }
        if (fs::exists(installer_.shimDestURL())) {
            EXPECT_EQ(readWholeFile(installer_.shimDestURL()), readWholeFile(shim_));
        }
        if (fs::exists(installer_.markerFile())) {
            EXPECT_EQ(json::parse(readWholeFile(installer_.markerFile()))["installed"], true);
        }
        json settings = json::parse(readWholeFile(paths_.claudeSettings()));
        settings["statusLine"] = json::parse(mine_)["statusLine"];
        EXPECT_EQ(settings, json::parse(mine_)) << "all else that the user has";
    }
    void expectAsBefore() const {
        EXPECT_EQ(json::parse(readWholeFile(paths_.claudeSettings())), json::parse(mine_));
        EXPECT_EQ(installer_.state(), State::notInstalled);
    }

    TestSupport::TemporaryFolder folder_;
    fs::path home_ = folder_ / "home";
    TestSupport::SmallDisk disk_{home_};
    UsageModel::AppPaths paths_{home_};
    StatusLineInstaller installer_{paths_.claudeSettings(), paths_.support()};
    fs::path shim_ = folder_ / "built/brindlewick-statusline";
    std::string mine_ = json{{"model", "opus"}, {"more", std::string(page, 'x')}, {"statusLine", "mine --x"}}.dump();
};

TEST_F(FullDiskTest, AnInstallThatLacksAnyPageLeavesNothingHalfAndSucceedsWithRoom) {
    int refusals = 0;
    for (std::uintmax_t room = 0; room < roomForAll; room += page) {
        SCOPED_TRACE("room of " + std::to_string(room));
        const bool succeeds = succeedsIn(room, [&] { install(); });
        expectNothingHalf();
        if (!succeeds) {
            ++refusals;
            install();
        }
        EXPECT_EQ(installer_.state(), State::installed);
        installer_.uninstall();
        expectAsBefore();
        fs::remove_all(paths_.support());
        fs::remove(installer_.backupFile());
        TestSupport::writeFile(paths_.claudeSettings(), mine_);
    }
    EXPECT_GE(refusals, 5) << "helper, settings and marker take so many pages";
    EXPECT_TRUE(succeedsIn(roomForAll, [&] { install(); }));
}

TEST_F(FullDiskTest, ARemovalThatLacksAnyPageLeavesTheHelperInstalled) {
    int refusals = 0;
    for (std::uintmax_t room = 0; room < roomForAll; room += page) {
        SCOPED_TRACE("room of " + std::to_string(room));
        install();
        const std::string installed = readWholeFile(paths_.claudeSettings());
        if (!succeedsIn(room, [&] { installer_.uninstall(); })) {
            ++refusals;
            EXPECT_EQ(readWholeFile(paths_.claudeSettings()), installed);
            EXPECT_EQ(installer_.state(), State::installed);
            expectNothingHalf();
            installer_.uninstall();
        }
        expectAsBefore();
    }
    EXPECT_GE(refusals, 2) << "the settings take two pages";
}

} // namespace
} // namespace UsageGauge
