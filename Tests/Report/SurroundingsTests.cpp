// The report, and the helper that it installs, in homes and environments that nobody should have.

#include <filesystem>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <pwd.h>
#include <unistd.h>

#include "Report/ProgramRun.h"
#include "Support/CommaLocale.h"
#include "Support/LoggedTurn.h"
#include "Support/Quoted.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"
#include "UsageModel/Json.h"

namespace Report {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using TestSupport::quoted;
using UsageModel::AppPaths;

constexpr UsageModel::Date now{1772360430}; // 2026-03-01 10:20:30 in UTC
const std::string arguments = " --now 1772360430";
const std::string document = R"({"session_id":"s","rate_limits":{"five_hour":{"used_percentage":42.4}}})";

void writeLogs(const fs::path& home, int logs = 1) {
    for (int i = 0; i < logs; ++i) {
        TestSupport::writeFile(AppPaths(home).sessionLogs() / "p" / (std::to_string(i) + ".jsonl"),
                               TestSupport::loggedTurn({now.secondsSince1970 - 3600 * i}, i + 1));
    }
}

/// Runs the report, `environment` being a shell's words. `before` is a shell's command that must succeed.
Finished reportIn(const std::string& environment, const std::string& before = "true",
                  const std::string& words = arguments) {
    return runCommand(before + " && env -i " + environment + " " + quoted(REPORT_PROGRAM) + words);
}

/// Draws a status line, as Claude Code would.
Finished statusLineIn(const std::string& environment, const std::string& command, const fs::path& folder) {
    return runCommand("cd " + quoted(folder) + " && echo " + quoted(document) + " | env -i " + environment +
                      " /bin/sh -c " + quoted(command));
}

/// A name of a home, and what the program says of the helper there, once it is installed.
struct HomeName {
    const char* what;
    std::string name;
    std::string helperStatus = "installed: ";
};

void PrintTo(const HomeName& row, std::ostream* out) {
    *out << row.what;
}

class HomeNameTest : public testing::TestWithParam<HomeName> {
protected:
    TestSupport::TemporaryFolder folder_;
    fs::path home_ = folder_ / GetParam().name;
    std::string environment_ = "TZ=UTC HOME=" + quoted(home_);
};

TEST_P(HomeNameTest, IsNoMatterToTheReport) {
    writeLogs(home_);
    const Finished first = reportIn(environment_);
    EXPECT_EQ(first.status, 0);
    EXPECT_THAT(first.out, HasSubstr("Live, last 45m"));
    EXPECT_THAT(first.err, IsEmpty());
    EXPECT_EQ(reportIn(environment_).out, first.out) << "and no turn counts twice";
}

TEST_P(HomeNameTest, IsQuotedInTheCommandThatAShellRuns) {
    const AppPaths paths(home_);
    TestSupport::writeFile(paths.claudeSettings(), "{\"model\":\"opus\"}");
    EXPECT_EQ(reportIn(environment_, "true", " helper install").status, 0);
    EXPECT_THAT(reportIn(environment_, "true", " helper status").out, StartsWith(GetParam().helperStatus));
    const auto settings = UsageModel::Json::parse(UsageModel::readWholeFile(paths.claudeSettings()));
    const Finished drawn = statusLineIn(environment_, settings["statusLine"]["command"], folder_.path());
    EXPECT_EQ(drawn.status, 0);
    EXPECT_EQ(drawn.out, "5h 42%\n");
    EXPECT_THAT(drawn.err, IsEmpty());
    EXPECT_TRUE(UsageGauge::GaugeReader{paths.gaugeFile()}.read());
    EXPECT_EQ(reportIn(environment_, "true", " helper remove").status, 0);
    EXPECT_EQ(UsageModel::Json::parse(UsageModel::readWholeFile(paths.claudeSettings())),
              UsageModel::Json::parse("{\"model\":\"opus\"}"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), {}), 1) << "nothing lies beside the home";
}

INSTANTIATE_TEST_SUITE_P(
    Homes, HomeNameTest,
    testing::Values(HomeName{"blanks", "with blanks  in it"}, HomeName{"one blank", " "},
                    HomeName{"a double quote", "double\"quote"},
                    // The quoted command does not hold the plain path, by which the helper is known.
                    HomeName{"a single quote", "single'quote", "conflict: "}, HomeName{"other letters", "Ünïcode 家 🏠"},
                    HomeName{"two lines", "new\nline"}, HomeName{"a tab", "tab\there"}, HomeName{"a variable", "$HOME"},
                    HomeName{"a command", "`id`"}, HomeName{"another command", "$(id)"}, HomeName{"an option", "-e"},
                    HomeName{"a backslash", "back\\slash"}, HomeName{"a pattern", "*"},
                    HomeName{"a shell's marks", "a;b&c|d>e"}, HomeName{"a format", "%s%n"},
                    HomeName{"a list of paths", "a:b"}, HomeName{"a long name", std::string(200, 'x')}));

class HomeTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder folder_;
    fs::path home_ = folder_ / "home";
};

TEST_F(HomeTest, OfANameThatTheSettingsCannotHoldIsReportedAndTheFailureOfTheHelperTold) {
    for (const std::string name : {"no\xFFtext", "control\x01"}) {
        const fs::path home = folder_ / name;
        writeLogs(home);
        TestSupport::writeFile(AppPaths(home).claudeSettings(), "{}");
        const std::string environment = "TZ=UTC HOME=" + quoted(home);
        EXPECT_THAT(reportIn(environment).out, HasSubstr("Live, last 45m"));
        const Finished failed = reportIn(environment, "true", " helper install");
        EXPECT_EQ(failed.status, 1);
        EXPECT_THAT(failed.err, HasSubstr("Install failed: "));
        EXPECT_EQ(UsageModel::readWholeFile(AppPaths(home).claudeSettings()), "{}");
    }
}

TEST_F(HomeTest, ThatIsNotThereIsToldAndNotMade) {
    for (const std::string& name : {std::string("gone"), (folder_ / "not/there").string(), std::string(5000, 'x')}) {
        const Finished run = reportIn("HOME=" + quoted(name), "cd " + quoted(folder_.path()));
        EXPECT_NE(run.status, 0);
        EXPECT_THAT(run.err, HasSubstr("the home is not a folder"));
        EXPECT_THAT(run.out, IsEmpty());
    }
    EXPECT_TRUE(fs::is_empty(folder_.path()));
}

TEST_F(HomeTest, ThatIsAFileIsTold) {
    TestSupport::writeFile(home_, "in the way");
    EXPECT_THAT(reportIn("HOME=" + quoted(home_)).err, HasSubstr("the home is not a folder"));
    EXPECT_EQ(statusLineIn("HOME=" + quoted(home_), STATUS_LINE_PROGRAM, folder_.path()).out, "5h 42%\n");
    EXPECT_EQ(UsageModel::readWholeFile(home_), "in the way");
}

TEST_F(HomeTest, ThatIsRelativeIsTheSameAsItsFullName) {
    writeLogs(home_);
    const Finished whole = reportIn("TZ=UTC HOME=" + quoted(home_));
    const Finished relative = reportIn("TZ=UTC HOME=home", "cd " + quoted(folder_.path()));
    EXPECT_EQ(relative.status, 0);
    EXPECT_EQ(relative.out, whole.out) << "no turn counts twice";
    EXPECT_EQ(statusLineIn("HOME=home", STATUS_LINE_PROGRAM, folder_.path()).out, "5h 42%\n");
    EXPECT_TRUE(UsageGauge::GaugeReader{AppPaths(home_).gaugeFile()}.read());
}

TEST_F(HomeTest, ThatIsNotSetLeavesTheStatusLineAlone) {
    for (const std::string environment : {"", "HOME="}) {
        const Finished drawn = statusLineIn(environment, STATUS_LINE_PROGRAM, folder_.path());
        EXPECT_EQ(drawn.status, 0);
        EXPECT_EQ(drawn.out, "5h 42%\n");
        EXPECT_THAT(drawn.err, IsEmpty());
    }
    EXPECT_TRUE(fs::is_empty(folder_.path()));
}

// A user of the database has a home there, which no test may touch.
TEST_F(HomeTest, ThatIsSetNowhereIsTold) {
    constexpr uid_t stranger = 54321;
    if (geteuid() != 0) GTEST_SKIP() << "no right to become a user without an entry";
    if (getpwuid(stranger) != nullptr) GTEST_SKIP() << "the user has an entry";
    const std::string become = "setpriv --reuid 54321 --regid 54321 --clear-groups ";
    if (runCommand(become + quoted(REPORT_PROGRAM) + " --help").status != 0)
        GTEST_SKIP() << "another user cannot run the program where it lies";
    for (const std::string environment : {"", "HOME="}) {
        const Finished run = runCommand(become + "env -i " + environment + " " + quoted(REPORT_PROGRAM) + arguments);
        EXPECT_NE(run.status, 0);
        EXPECT_THAT(run.err, HasSubstr("cannot tell your home folder"));
    }
}

TEST_F(HomeTest, OnAReadOnlyFileSystemIsToldAndSpoilsNoStatusLine) {
    const TestSupport::SmallDisk disk(home_);
    if (!disk.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
    const std::string environment = "TZ=UTC HOME=" + quoted(home_);
    writeLogs(home_);
    for (const char* state : {"without a database", "with one"}) {
        disk.makeReadOnly();
        const Finished run = reportIn(environment);
        EXPECT_EQ(run.status, 1) << state;
        EXPECT_THAT(run.err, AnyOf(HasSubstr("cannot open the database"), HasSubstr("Read-only file system"))) << state;
        EXPECT_THAT(reportIn(environment, "true", " helper install").err, HasSubstr("Install failed: ")) << state;
        EXPECT_EQ(statusLineIn(environment, STATUS_LINE_PROGRAM, folder_.path()).out, "5h 42%\n") << state;
        disk.makeWritable();
        EXPECT_EQ(reportIn(environment).status, 0) << state;
    }
    EXPECT_FALSE(fs::exists(AppPaths(home_).gaugeFile()));
}

TEST_F(HomeTest, OnAFullFileSystemIsToldAndKeepsTheLastReading) {
    const TestSupport::SmallDisk disk(home_);
    if (!disk.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
    const std::string environment = "TZ=UTC HOME=" + quoted(home_);
    const AppPaths paths(home_);
    TestSupport::writeFile(paths.claudeSettings(), "{}");
    ASSERT_EQ(statusLineIn(environment, STATUS_LINE_PROGRAM, folder_.path()).out, "5h 42%\n");
    const std::string reading = UsageModel::readWholeFile(paths.gaugeFile());
    int logs = 0;
    for (const char* state : {"without a database", "with one"}) {
        writeLogs(home_, logs += 5);
        disk.fill();
        const Finished run = reportIn(environment);
        EXPECT_EQ(run.status, 1) << state;
        EXPECT_THAT(run.err, AnyOf(HasSubstr("cannot open the database"), HasSubstr("database or disk is full")))
            << state;
        EXPECT_THAT(reportIn(environment, "true", " helper install").err, HasSubstr("Install failed: ")) << state;
        EXPECT_EQ(UsageModel::readWholeFile(paths.claudeSettings()), "{}") << state;
        EXPECT_EQ(statusLineIn(environment, STATUS_LINE_PROGRAM, folder_.path()).out, "5h 42%\n") << state;
        EXPECT_EQ(UsageModel::readWholeFile(paths.gaugeFile()), reading) << state;
        EXPECT_THAT(TestSupport::temporaryFilesBelow(home_), IsEmpty()) << state;
        disk.makeRoom();
        const Finished later = reportIn(environment);
        EXPECT_EQ(later.status, 0) << state;
        for (const char* ending : {"", "-wal", "-shm"}) fs::remove(fs::path(paths.database()) += ending);
        EXPECT_EQ(reportIn(environment).out, later.out) << state << ": as if the disk had had room all the time";
    }
    ASSERT_EQ(statusLineIn(environment, STATUS_LINE_PROGRAM, folder_.path()).out, "5h 42%\n");
    EXPECT_NE(UsageModel::readWholeFile(paths.gaugeFile()), reading);
}

class SurroundingsTest : public HomeTest {
protected:
    SurroundingsTest() { writeLogs(home_, 30); }
    [[nodiscard]] Finished report(const std::string& environment, const std::string& before = "true") const {
        return reportIn("HOME=" + quoted(home_) + " " + environment, before);
    }
    [[nodiscard]] Finished json(const std::string& environment) const {
        return reportIn("HOME=" + quoted(home_) + " " + environment, "true", arguments + " --json");
    }
};

TEST_F(SurroundingsTest, AZoneThatIsNoneIsUtc) {
    const Finished utc = report("TZ=UTC");
    ASSERT_THAT(utc.out, HasSubstr("10:20 AM, UTC"));
    const std::string tooLong(5000, 'x');
    for (const std::string& zone :
         {std::string("Nowhere/Nothing"), std::string(":"), std::string(), std::string("../../../etc/passwd"),
          std::string("/etc/passwd"), std::string("/"), std::string(":/nowhere"), std::string("two\nlines"),
          std::string("\xFF\xFE"), std::string("UTC\x1B[31m"), tooLong}) {
        const Finished run = report("TZ=" + quoted(zone));
        EXPECT_EQ(run.status, 0) << zone;
        EXPECT_EQ(run.out, utc.out) << zone;
        EXPECT_THAT(run.err, IsEmpty()) << zone;
    }
}

TEST_F(SurroundingsTest, ALocaleThatIsNoneChangesNoNumber) {
    const Finished plain = json("TZ=UTC");
    ASSERT_THAT(plain.out, HasSubstr("0."));
    const std::string text = report("TZ=UTC").out;
    for (const std::string environment :
         {"LANG=xx_YY.UTF-8", "LC_ALL=C", "LC_ALL=xx_YY LC_NUMERIC=xx_YY", "LC_ALL=/tmp", "LC_ALL=../..",
          "LANG=", "LANGUAGE=xx:yy LC_TIME=xx_YY", "LC_ALL=C.UTF-8", "LC_CTYPE=UTF-8"}) {
        const Finished run = report(std::string("TZ=UTC ") + environment);
        EXPECT_EQ(run.status, 0) << environment;
        EXPECT_THAT(run.err, IsEmpty()) << environment;
        // Whether the terminal draws more than ASCII is told by the name alone.
        EXPECT_EQ(lineCount(run.out), lineCount(text)) << environment;
        EXPECT_EQ(json(std::string("TZ=UTC ") + environment).out, plain.out) << environment;
    }
}

TEST_F(SurroundingsTest, NumbersKeepTheirDotWhateverTheLocale) {
    const auto locale = TestSupport::localeWithAComma(folder_ / "locales");
    if (!locale) GTEST_SKIP() << "no locale with a comma in its numbers can be made";
    const std::string environment = "TZ=UTC " + *locale;
    ASSERT_EQ(runCommand("env -i " + environment + " /usr/bin/printf %.1f 0,5").out, "0,5") << "others follow it";
    EXPECT_EQ(json(environment).out, json("TZ=UTC").out);
    EXPECT_THAT(json(environment).out, HasSubstr("0."));
    EXPECT_EQ(lineCount(report(environment).out), lineCount(report("TZ=UTC").out));
}

TEST_F(SurroundingsTest, FewDescriptorsAreEnoughForManyLogs) {
    const Finished plain = report("TZ=UTC");
    writeLogs(home_, 500);
    const Finished expected = report("TZ=UTC");
    ASSERT_NE(expected.out, plain.out);
    fs::remove_all(AppPaths(home_).support());
    for (const char* limit : {"ulimit -n 64", "ulimit -n 16"}) {
        const Finished run = report("TZ=UTC", limit);
        EXPECT_EQ(run.status, 0) << limit;
        EXPECT_EQ(run.out, expected.out) << limit;
        fs::remove_all(AppPaths(home_).support());
    }
    const Finished tooFew = report("TZ=UTC", "ulimit -n 5");
    // Built with sanitizers, it has too few for its own libraries.
    EXPECT_THAT(tooFew.status, AnyOf(1, 127));
    EXPECT_THAT(tooFew.err, Not(IsEmpty()));
    EXPECT_EQ(report("TZ=UTC").out, expected.out) << "nothing is lost";
}

} // namespace
} // namespace Report
