#include "UsageModel/AppPaths.h"

#include <cstdlib>

#include <gmock/gmock.h>

#include "Support/TemporaryFolder.h"
#include "UsageModel/Rows.h"

namespace UsageModel {
namespace {

using testing::ElementsAre;

TEST(AppPaths, HaveFixedNames) {
    EXPECT_EQ(AppPaths::directoryName, "Brindlewick");
    EXPECT_EQ(AppPaths::shimName, "brindlewick-statusline");
    EXPECT_THAT(AppPaths::legacyShimNames, ElementsAre("ferrowind-statusline", "harrow-lane-statusline"));
}

TEST(AppPaths, AllLieBelowTheHomeFolder) {
    const AppPaths paths("/home/someone");
    EXPECT_EQ(paths.home(), "/home/someone");
    EXPECT_EQ(paths.support(), "/home/someone/Library/Application Support/Brindlewick");
    EXPECT_EQ(paths.gaugeFile(), "/home/someone/Library/Application Support/Brindlewick/gauge.json");
    EXPECT_EQ(paths.database(), "/home/someone/Library/Application Support/Brindlewick/usage.db");
    EXPECT_EQ(paths.notificationState(),
              "/home/someone/Library/Application Support/Brindlewick/notification-state.json");
    EXPECT_EQ(paths.installedShim(),
              "/home/someone/Library/Application Support/Brindlewick/bin/brindlewick-statusline");
    EXPECT_EQ(paths.sessionLogs(), "/home/someone/.claude/projects");
    EXPECT_EQ(paths.claudeSettings(), "/home/someone/.claude/settings.json");
}

TEST(AppPaths, TheGaugeSideUsesTheSameFile) {
    const AppPaths paths("/home/someone");
    EXPECT_EQ(GaugePaths::gaugeFile(paths), paths.gaugeFile());
}

TEST(AppPaths, LegacyFoldersComeOldestFirst) {
    EXPECT_THAT(AppPaths("/h").legacySupport(),
                ElementsAre("/h/Library/Application Support/Ferrowind", "/h/Library/Application Support/Harrowlane"));
}

TEST(AppPaths, AHomeWithASpaceOrATrailingSlashIsNoMatter) {
    EXPECT_EQ(AppPaths("/home/some one/").gaugeFile(),
              "/home/some one/Library/Application Support/Brindlewick/gauge.json");
}

class LegacySupportTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder home;
    AppPaths paths{home.path()};
};

TEST_F(LegacySupportTest, IsNoneInAFreshHome) {
    EXPECT_FALSE(paths.hasLegacySupport());
}

TEST_F(LegacySupportTest, OurOwnFolderIsNone) {
    std::filesystem::create_directories(paths.support());
    EXPECT_FALSE(paths.hasLegacySupport());
}

TEST_F(LegacySupportTest, IsThereWithTheFirstFolderOnly) {
    std::filesystem::create_directories(paths.legacySupport()[0]);
    EXPECT_TRUE(paths.hasLegacySupport());
}

TEST_F(LegacySupportTest, IsThereWithTheSecondFolderOnly) {
    std::filesystem::create_directories(paths.legacySupport()[1]);
    EXPECT_TRUE(paths.hasLegacySupport());
}

TEST_F(LegacySupportTest, IsThereWithBoth) {
    for (const auto& folder : paths.legacySupport()) std::filesystem::create_directories(folder);
    EXPECT_TRUE(paths.hasLegacySupport());
}

TEST_F(LegacySupportTest, ADanglingLinkIsNoFolder) {
    std::filesystem::create_directories(paths.legacySupport()[0].parent_path());
    std::filesystem::create_symlink(home / "nowhere", paths.legacySupport()[0]);
    EXPECT_FALSE(paths.hasLegacySupport());
}

/// Sets HOME for the length of the scope.
class HomeVariable {
public:
    explicit HomeVariable(const char* value) {
        if (value != nullptr) {
            setenv("HOME", value, 1);
        } else {
            unsetenv("HOME");
        }
    }
    HomeVariable(const HomeVariable&) = delete;
    HomeVariable& operator=(const HomeVariable&) = delete;
    ~HomeVariable() { before_ ? setenv("HOME", before_->c_str(), 1) : unsetenv("HOME"); }

private:
    std::optional<std::string> before_ =
        std::getenv("HOME") != nullptr ? std::optional<std::string>(std::getenv("HOME")) : std::nullopt;
};

TEST(CurrentHome, IsTheOneOfTheEnvironmentOnEachUse) {
    const HomeVariable first("/somewhere");
    EXPECT_EQ(AppPaths::currentHome(), "/somewhere");
    EXPECT_EQ(AppPaths().gaugeFile(), "/somewhere/Library/Application Support/Brindlewick/gauge.json");
    const HomeVariable second("/elsewhere");
    EXPECT_EQ(AppPaths().home(), "/elsewhere");
}

TEST(CurrentHome, IsThatOfTheUserDatabaseWithoutAVariable) {
    const auto withoutVariable = [](const char* value) {
        const HomeVariable home(value);
        return AppPaths::currentHome();
    };
    EXPECT_EQ(withoutVariable(nullptr), withoutVariable("")) << "an empty variable names no folder";
    const auto home = withoutVariable(nullptr);
    EXPECT_TRUE(home.empty() || home.is_absolute()) << home;
}

struct ShimRow : TestSupport::Named {
    std::optional<std::string_view> command;
    bool isOurs;
};

class OurShimTest : public testing::TestWithParam<ShimRow> {};

TEST_P(OurShimTest, IsToldByItsName) {
    EXPECT_EQ(AppPaths::isOurShim(GetParam().command), GetParam().isOurs);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, OurShimTest,
    testing::Values(
        ShimRow{"absent", std::nullopt, false}, ShimRow{"empty", "", false}, ShimRow{"another command", "cat", false},
        ShimRow{"the name alone", "brindlewick-statusline", true},
        ShimRow{"a path", "/Users/a/Library/Application Support/Brindlewick/bin/brindlewick-statusline", true},
        ShimRow{"quoted with a command behind", "'/a b/brindlewick-statusline' --x", true},
        ShimRow{"the first legacy name", "/x/ferrowind-statusline", true},
        ShimRow{"the second legacy name", "/x/harrow-lane-statusline", true},
        ShimRow{"a legacy name behind a variable", "HWL_WRAPPED_STATUSLINE='cat' '/b/harrow-lane-statusline'", true},
        ShimRow{"a name that contains ours", "/x/my-brindlewick-statusline-2.sh", true},
        ShimRow{"our folder without our shim", "/x/Brindlewick/bin/other", false},
        ShimRow{"another case", "/x/Brindlewick-Statusline", false},
        ShimRow{"cut short", "brindlewick-statuslin", false},
        ShimRow{"a variable alone", "HWL_WRAPPED_STATUSLINE='cat'", false}),
    TestSupport::rowName);

} // namespace
} // namespace UsageModel
