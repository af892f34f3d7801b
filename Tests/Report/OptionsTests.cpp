#include "Report/Options.h"

#include <sstream>

#include <gmock/gmock.h>

#include "Support/TemporaryFolder.h"
#include "UsageModel/Rows.h"

namespace Report {
namespace {

using testing::HasSubstr;
using testing::Not;
using UsageModel::Calendar;
using UsageModel::Date;

using Arguments = std::vector<std::string>;

class OptionsTest : public testing::Test {
protected:
    [[nodiscard]] Options defaults() const {
        return {.home = home.path(), .now = Date{5}, .calendar = Calendar::utc()};
    }
    [[nodiscard]] Options good(const Arguments& arguments) const {
        return std::get<Options>(readOptions(arguments, defaults()));
    }
    [[nodiscard]] Answer answer(const Arguments& arguments) const {
        return std::get<Answer>(readOptions(arguments, defaults()));
    }

    TestSupport::TemporaryFolder home;
};

TEST_F(OptionsTest, WithoutArgumentsTheDefaultsHold) {
    const Options options = good({});
    EXPECT_EQ(options.home, home.path());
    EXPECT_EQ(options.now, Date{5});
    EXPECT_EQ(options.calendar.zoneName(), "UTC");
    EXPECT_FALSE(options.json);
    EXPECT_FALSE(options.watch);
    EXPECT_EQ(options.job, Job::report);
}

TEST_F(OptionsTest, EachIsTaken) {
    const TestSupport::TemporaryFolder other;
    const Options options = good({"--home", other.path(), "--now", "1.5e9", "--time-zone=Europe/Berlin", "--json"});
    EXPECT_EQ(options.home, std::filesystem::canonical(other.path()));
    EXPECT_EQ(options.now, Date{1.5e9});
    EXPECT_EQ(options.calendar.zoneName(), "Europe/Berlin");
    EXPECT_TRUE(options.json);
}

TEST_F(OptionsTest, AWatchIsTaken) {
    EXPECT_TRUE(good({"--watch", "--time-zone", "Europe/Berlin"}).watch);
}

TEST_F(OptionsTest, ABacktestTakesTheSameOptionsBehindItsName) {
    const Options options = good({"backtest", "--json", "--now", "12"});
    EXPECT_EQ(options.job, Job::backtest);
    EXPECT_TRUE(options.json);
    EXPECT_EQ(options.now, Date{12});
}

TEST_F(OptionsTest, NowMayLieBefore1970) {
    EXPECT_EQ(good({"--now", "-12.25"}).now, Date{-12.25});
    EXPECT_EQ(good({"--now=-12.25"}).now, Date{-12.25});
}

TEST_F(OptionsTest, TheDefaultHomeKeepsItsSpellingHoweverItIsNamed) {
    std::filesystem::create_directory(home / "sub");
    EXPECT_EQ(good({"--home", (home / "sub/..").string()}).home, home.path());
}

TEST_F(OptionsTest, AnotherHomeIsKnownByItsCanonicalPath) {
    const TestSupport::TemporaryFolder other;
    std::filesystem::create_directory_symlink(other.path(), home / "link");
    EXPECT_EQ(good({"--home", home / "link"}).home, std::filesystem::canonical(other.path()));
}

TEST_F(OptionsTest, HelpTellsAllThereIs) {
    const Answer help = answer({"--help"});
    EXPECT_EQ(help.status, successStatus);
    for (const char* word :
         {"--home DIR", "--now SECONDS", "--time-zone ZONE", "--json", "--watch", "backtest", "--version",
          "Examples:", "Exit status:", "usage.db", "gauge.json", ".claude/projects", "NO_COLOR"})
        EXPECT_THAT(help.text, HasSubstr(word));
}

TEST_F(OptionsTest, HelpFitsATerminal) {
    std::istringstream help(answer({"--help"}).text);
    for (std::string line; std::getline(help, line);) EXPECT_LE(line.size(), 80U) << line;
}

TEST_F(OptionsTest, TheVersionIsOneLine) {
    const Answer version = answer({"--version"});
    EXPECT_EQ(version.status, successStatus);
    EXPECT_THAT(version.text, testing::MatchesRegex("brindlewick-report [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(OptionsTest, AHomeThatIsAFileIsWrong) {
    TestSupport::writeFile(home / "file", "");
    EXPECT_EQ(answer({"--home", home / "file"}).status, misuseStatus);
}

TEST_F(OptionsTest, WithoutAnyHomeThereIsNothingToReport) {
    const auto read = readOptions({}, {.home = "", .now = Date{0}, .calendar = Calendar::utc()});
    EXPECT_EQ(std::get<Answer>(read).status, misuseStatus);
    EXPECT_THAT(std::get<Answer>(read).text, HasSubstr("--home"));
}

struct BadRow : TestSupport::Named {
    Arguments arguments;
    std::string_view named;
};

class BadOptionsTest : public OptionsTest, public testing::WithParamInterface<BadRow> {};

TEST_P(BadOptionsTest, AreNamedInOneLine) {
    const Answer wrong = answer(GetParam().arguments);
    EXPECT_EQ(wrong.status, misuseStatus);
    EXPECT_THAT(wrong.text, HasSubstr(GetParam().named));
    EXPECT_THAT(wrong.text, Not(HasSubstr("\n")));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadOptionsTest,
    testing::Values(
        BadRow{{"unknown option"}, {"--frobnicate"}, "--frobnicate"}, BadRow{{"unknown short option"}, {"-x"}, "-x"},
        BadRow{{"stray argument"}, {"stray"}, "stray"}, BadRow{{"stray argument with a line end"}, {"a\nb"}, "a?b"},
        BadRow{{"stray argument after two dashes"}, {"--", "stray"}, "stray"},
        BadRow{{"home without a value"}, {"--home"}, "--home"}, BadRow{{"now without a value"}, {"--now"}, "--now"},
        BadRow{{"zone without a value"}, {"--time-zone"}, "--time-zone"},
        BadRow{{"option instead of a home"}, {"--home", "--json"}, "--"},
        BadRow{{"home that is not there"}, {"--home", "/no/such"}, "/no/such"},
        BadRow{{"empty home"}, {"--home", ""}, "home"},
        BadRow{{"home given twice"}, {"--home", "/", "--home", "/"}, "--home"},
        BadRow{{"now is a word"}, {"--now", "soon"}, "soon"}, BadRow{{"now with a tail"}, {"--now", "12s"}, "12s"},
        BadRow{{"now is empty"}, {"--now", ""}, "--now"}, BadRow{{"now is not a number"}, {"--now", "nan"}, "nan"},
        BadRow{{"now is infinite"}, {"--now", "inf"}, "inf"}, BadRow{{"now is too large"}, {"--now", "1e999"}, "1e999"},
        BadRow{{"unknown zone"}, {"--time-zone", "Mars/Olympus"}, "Mars/Olympus"},
        BadRow{{"zone is a path"}, {"--time-zone", "/etc/passwd"}, "/etc/passwd"},
        BadRow{{"watch with json"}, {"--watch", "--json"}, "--json"},
        BadRow{{"watch of another time"}, {"--now", "5", "--watch"}, "--now"},
        BadRow{{"watch of a command"}, {"--watch", "helper", "status"}, "--watch"},
        BadRow{{"watch of a backtest"}, {"backtest", "--watch"}, "--watch"},
        BadRow{{"two commands"}, {"backtest", "helper"}, "helper"},
        BadRow{{"json with a value"}, {"--json=maybe"}, "json"}),
    TestSupport::rowName);

} // namespace
} // namespace Report
