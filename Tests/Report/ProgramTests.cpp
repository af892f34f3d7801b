#include <fstream>

#include <gmock/gmock.h>

#include "Report/ProgramRun.h"
#include "Support/TemporaryFolder.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"
#include "UsageModel/Json.h"
#include "UsageModel/Rows.h"
#include "UsageModel/UsageSnapshot.h"

namespace Report {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// 2026-03-01 10:20:30 in UTC
constexpr const char* now = "1772360430";

std::string line(const std::string& timestamp, const std::string& model, int input) {
    return R"({"type":"assistant","timestamp":")" + timestamp + R"(","sessionId":"s","message":{"model":")" + model +
           R"(","usage":{"input_tokens":)" + std::to_string(input) +
           R"(,"output_tokens":20,"cache_creation_input_tokens":300,"cache_read_input_tokens":4000}}})" + "\n";
}

class ProgramTest : public testing::Test {
protected:
    void writeLog() const {
        TestSupport::writeFile(log, line("2026-02-01T09:00:00.000Z", "claude-haiku-4", 1) +
                                        line("2026-02-27T09:00:00.000Z", "claude-opus-4", 2) +
                                        line("2026-03-01T09:00:00.000Z", "claude-opus-4", 4));
    }
    [[nodiscard]] Finished report(std::vector<std::string> arguments = {}, const std::string& redirection = "") const {
        arguments.insert(arguments.end(), {"--now", now});
        return runProgram(home.path(), arguments, redirection);
    }
    [[nodiscard]] json jsonReport() const { return UsageModel::Json::parse(report({"--json"}).out); }
    /// The weight of all turns, in input tokens of Opus.
    [[nodiscard]] double weight() const { return weightIn(jsonReport()); }
    static double weightIn(const json& snapshot) {
        double weight = 0;
        for (const json& day : snapshot["calendar"]) weight += day["weighted"].get<double>() * 1e7;
        return weight;
    }

    TestSupport::TemporaryFolder home;
    UsageModel::AppPaths paths{home.path()};
    fs::path log = paths.sessionLogs() / "project" / "session.jsonl";
};

TEST_F(ProgramTest, AHomeWithoutLogsIsToldKindly) {
    const Finished run = report();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("There are no session logs yet."));
    EXPECT_THAT(run.out, HasSubstr(paths.sessionLogs().string()));
    EXPECT_THAT(run.err, IsEmpty());
}

TEST_F(ProgramTest, JsonIsTheSnapshotAndNothingElse) {
    writeLog();
    const Finished run = report({"--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, IsEmpty());
    EXPECT_EQ(run.out.find('\n'), run.out.size() - 1);
    const auto snapshot = UsageModel::Json::decodeText<UsageModel::UsageSnapshot>(run.out);
    ASSERT_TRUE(snapshot.has_value());
    EXPECT_EQ(snapshot->generatedAt, UsageModel::Date{1772360430});
    EXPECT_EQ(snapshot->meters.size(), 3U);
    EXPECT_EQ(snapshot->live.lookback, 2700);
    EXPECT_EQ(snapshot->ingest, UsageModel::IngestProgress::idle());
    EXPECT_EQ(UsageModel::Json::toText(UsageModel::Json::encode(*snapshot)) + "\n", run.out);
}

TEST_F(ProgramTest, AHomeWithoutLogsHasASnapshotToo) {
    const json parsed = jsonReport();
    EXPECT_EQ(parsed["calendar"], json::array());
    EXPECT_EQ(parsed["verdict"]["headline"], "On track");
    EXPECT_FALSE(parsed.contains("recommendation"));
}

TEST_F(ProgramTest, SumsALog) {
    writeLog();
    // Twenty tokens of output at 5, 300 of cache creation at 1.25 and 4000 of cache reads at 0.1 weigh 875; a turn of
    // Haiku weighs a fifth.
    EXPECT_NEAR(weight(), (1 + 875) * 0.2 + (2 + 875) + (4 + 875), 1e-6);
    EXPECT_NEAR(jsonReport()["models"]["byClass"]["opus"].get<double>() * 1e7, 2 + 875 + 4 + 875, 1e-6);
}

TEST_F(ProgramTest, RunningTwiceGivesTheSameReport) {
    writeLog();
    const Finished first = report();
    const Finished second = report();
    EXPECT_THAT(first.out, HasSubstr("Models this week"));
    EXPECT_EQ(second.out, first.out);
}

TEST_F(ProgramTest, ALogThatGrewIsReadOn) {
    writeLog();
    const double before = weight();
    TestSupport::appendFile(log, line("2026-03-01T10:00:00.000Z", "claude-opus-4", 8));
    EXPECT_NEAR(weight(), before + 8 + 875, 1e-6);
}

TEST_F(ProgramTest, TheSameHomeUnderAnotherNameCountsNothingTwice) {
    writeLog();
    const Finished first = report();
    const TestSupport::TemporaryFolder elsewhere;
    fs::create_directory_symlink(home.path(), elsewhere / "link");
    EXPECT_EQ(report({"--home", elsewhere / "link"}).out, first.out);
    const Finished foreign = runProgram(elsewhere.path(), {"--home", elsewhere / "link", "--now", now});
    EXPECT_EQ(foreign.out, first.out);
}

TEST_F(ProgramTest, TellsTheOfficialLimits) {
    writeLog();
    TestSupport::writeFile(paths.gaugeFile(), R"({"capturedAt":1772360370,"source":"statusLine","windows":)"
                                              R"({"five_hour":{"usedPercentage":12.5,"resetsAt":1772364030}}})");
    const Finished run = report();
    EXPECT_THAT(run.out, HasSubstr("Session - 5h   ###"));
    EXPECT_THAT(run.out, HasSubstr("  13%  0.2x Under pace\n"));
    EXPECT_THAT(run.out, HasSubstr("resets in 1h, Sun 11:20 AM"));
    EXPECT_THAT(run.out, HasSubstr("read 1m ago, give or take 1%"));
    EXPECT_THAT(run.out, Not(HasSubstr("Weekly - all")));
}

TEST_F(ProgramTest, ADamagedGaugeFileIsNoReading) {
    writeLog();
    TestSupport::writeFile(paths.gaugeFile(), "{");
    const Finished run = report();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("no official reading"));
}

TEST_F(ProgramTest, AModelsNameIsNotPrinted) {
    TestSupport::writeFile(log, line("2026-03-01T09:00:00.000Z", "evil\\u001b[31m-name", 4));
    const Finished run = report();
    EXPECT_THAT(run.out, HasSubstr("Other"));
    EXPECT_THAT(run.out, Not(HasSubstr("evil")));
    EXPECT_THAT(run.out, Not(HasSubstr("\x1b")));
}

TEST_F(ProgramTest, WhatItWritesIsForTheOwnerAlone) {
    fs::create_directories(paths.support());
    fs::permissions(paths.support(), fs::perms(0755));
    writeLog();
    EXPECT_EQ(report().status, 0);
    EXPECT_EQ(fs::status(paths.support()).permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(paths.database()).permissions(), fs::perms(0600));
}

TEST_F(ProgramTest, ADatabaseThatIsNoneIsLeftAsItIs) {
    const std::string content =
        "not a database at all, but long enough to be taken for one at first sight: " + std::string(4096, 'x');
    TestSupport::writeFile(paths.database(), content);
    writeLog();
    const Finished run = report();
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, IsEmpty());
    EXPECT_EQ(lineCount(run.err), 1U);
    EXPECT_THAT(run.err, StartsWith("brindlewick-report: cannot open the database "));
    EXPECT_EQ(UsageModel::readWholeFile(paths.database()), content);
}

TEST_F(ProgramTest, ALogThatCannotBeReadLeavesTheEarlierReport) {
    writeLog();
    const Finished before = report();
    TestSupport::appendFile(log, line("2026-03-01T10:00:00.000Z", "claude-opus-4", 8));
    fs::create_directories(paths.sessionLogs() / "x.jsonl");
    const Finished run = report();
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, before.out);
    EXPECT_EQ(lineCount(run.err), 1U);
    EXPECT_THAT(run.err, HasSubstr("x.jsonl"));
    EXPECT_EQ(report({"--json"}).status, 1);
    EXPECT_NEAR(weight(), (1 + 875) * 0.2 + (2 + 875) + (4 + 875), 1e-6);
}

TEST_F(ProgramTest, ADatabaseWithDamagedPagesIsToldInOneLine) {
    writeLog();
    for (int i = 0; i < 2000; ++i) TestSupport::appendFile(log, line("2026-02-27T09:00:00.000Z", "claude-opus-4", 2));
    ASSERT_EQ(report().status, 0);
    std::fstream damaged(paths.database(), std::ios::in | std::ios::out | std::ios::binary);
    constexpr int page = 4096;
    damaged.seekp(2 * page);
    damaged << std::string(40 * page, '\xA5');
    damaged.close();
    const Finished run = report();
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, IsEmpty());
    EXPECT_EQ(lineCount(run.err), 1U) << run.err;
    EXPECT_THAT(run.err, HasSubstr(paths.database().string()));
}

TEST_F(ProgramTest, AHomeUnderAnotherNameIsTheSameHome) {
    writeLog();
    const double once = weight();
    fs::create_directory_symlink(home.path(), home / "link");
    for (const fs::path& name : {home.path(), home / "link", home / "link/link", home / "."}) {
        const Finished run = runProgram(name, {"--json", "--now", now});
        EXPECT_EQ(weightIn(UsageModel::Json::parse(run.out)), once) << name;
        const Finished given = runProgram("/", {"--json", "--now", now, "--home", name.string()});
        EXPECT_EQ(weightIn(UsageModel::Json::parse(given.out)), once) << name;
    }
}

TEST_F(ProgramTest, TheBacktestSaysWhereThereIsTooLittle) {
    writeLog();
    TestSupport::writeFile(log, line("2026-02-27T09:00:00.000Z", "claude-opus-4", 2));
    const Finished run = report({"backtest"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, StartsWith("How far may I trust the forecast?\nThere is too little history"));
}

TEST_F(ProgramTest, TheBacktestReplaysTheWeeksThatAreOver) {
    std::string lines;
    for (int day = 1; day <= 28; ++day) {
        const std::string date = std::string(day < 10 ? "0" : "") + std::to_string(day);
        lines += line("2026-02-" + date + "T09:00:00.000Z", "claude-opus-4", 2);
    }
    TestSupport::writeFile(log, lines);
    // Without a gauge the running week is the seven days up to now: three are over, two of them with one before.
    EXPECT_THAT(report({"backtest"}).out, HasSubstr("2 completed weeks, from 2026-02-08 to 2026-02-22"));
    const json trust = UsageModel::Json::parse(report({"backtest", "--json"}).out);
    EXPECT_EQ(trust["weeks"].size(), 2U);
    EXPECT_EQ(trust["scores"]["bottomUp"]["trials"], 24);
    EXPECT_EQ(trust["scores"]["lastWeek"]["medianAbsoluteError"], 0.0);
    EXPECT_EQ(report({"--json", "backtest"}).out, report({"backtest", "--json"}).out);
}

TEST_F(ProgramTest, TheBacktestFollowsTheGaugesWeek) {
    std::string lines;
    for (int day = 1; day <= 28; ++day) {
        const std::string date = std::string(day < 10 ? "0" : "") + std::to_string(day);
        lines += line("2026-02-" + date + "T09:00:00.000Z", "claude-opus-4", 2);
    }
    TestSupport::writeFile(log, lines);
    // The week resets on Wednesday, 2026-03-04 00:00.
    TestSupport::writeFile(paths.gaugeFile(), R"({"capturedAt":1772360370,"source":"statusLine","windows":)"
                                              R"({"seven_day":{"usedPercentage":12.5,"resetsAt":1772582400}}})");
    EXPECT_THAT(report({"backtest"}).out, HasSubstr("2 completed weeks, from 2026-02-11 to 2026-02-25"));
}

TEST_F(ProgramTest, ATornMarkerIsNoInstallation) {
    TestSupport::writeFile(paths.support() / "statusline-install.json", "{\"installed\":tr");
    EXPECT_THAT(report({"helper", "remove"}).out, StartsWith("The helper was not installed"));
}

TEST_F(ProgramTest, ClosedOutputIsAFailure) {
    const Finished run = report({}, ">&-");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "brindlewick-report: cannot write to the standard output\n");
}

TEST_F(ProgramTest, AFullDeviceIsAFailure) {
    const Finished run = report({}, ">/dev/full");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "brindlewick-report: cannot write to the standard output\n");
    EXPECT_EQ(report({"--help"}, ">/dev/full").status, 1);
}

TEST_F(ProgramTest, AReaderThatWentAwayIsAFailure) {
    // The reader ends at once; the pause lets it be gone before the program writes.
    const fs::path status = home / "status";
    const std::string command = std::string("{ sleep 0.2; env -i HOME='") + home.path().string() + "' '" +
                                REPORT_PROGRAM + "' 2>/dev/null; echo $? >'" + status.string() + "'; } | :";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(UsageModel::readWholeFile(status), "1\n");
}

TEST_F(ProgramTest, HelpAndVersionTouchNothing) {
    EXPECT_EQ(report({"--help"}).status, 0);
    EXPECT_EQ(report({"--version"}).status, 0);
    EXPECT_TRUE(fs::is_empty(home.path()));
}

TEST_F(ProgramTest, TheHelperIsInstalledLookedUpAndRemoved) {
    fs::create_directories(paths.claudeSettings().parent_path());
    EXPECT_THAT(report({"helper", "status"}).out, StartsWith("not installed"));
    EXPECT_THAT(report().out, HasSubstr("helper install"));

    const Finished installed = report({"helper", "install"});
    EXPECT_EQ(installed.status, 0);
    EXPECT_THAT(installed.out, StartsWith("The helper is installed."));
    EXPECT_EQ(report({"helper", "status"}).out, "installed: " + paths.installedShim().string() + "\n");
    EXPECT_THAT(report().out, Not(HasSubstr("helper")));

    TestSupport::writeFile(paths.claudeSettings(), R"({"statusLine":"another"})");
    EXPECT_THAT(report({"helper", "status"}).out, StartsWith("conflict"));
    EXPECT_THAT(report().out, HasSubstr("was replaced\nrun "));

    EXPECT_THAT(report({"helper", "remove"}).out, StartsWith("The helper is removed."));
    EXPECT_FALSE(fs::exists(paths.claudeSettings()));
    EXPECT_THAT(report({"helper", "remove"}).out, StartsWith("The helper was not installed"));
}

TEST_F(ProgramTest, AnInstallThatFailsSaysWhy) {
    const Finished run = report({"helper", "install"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, StartsWith("brindlewick-report: Install failed: "));
    EXPECT_EQ(lineCount(run.err), 1U);
}

struct MisuseRow : TestSupport::Named {
    std::vector<std::string> arguments;
};

class MisuseTest : public ProgramTest, public testing::WithParamInterface<MisuseRow> {};

TEST_P(MisuseTest, IsOneLineAndStatusTwo) {
    const Finished run = runProgram(home.path(), GetParam().arguments);
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.out, IsEmpty());
    EXPECT_EQ(lineCount(run.err), 1U);
    EXPECT_THAT(run.err, StartsWith("brindlewick-report: "));
    EXPECT_TRUE(fs::is_empty(home.path()));
}

INSTANTIATE_TEST_SUITE_P(Rows, MisuseTest,
                         testing::Values(MisuseRow{{"unknown option"}, {"--frobnicate"}},
                                         MisuseRow{{"missing value"}, {"--now"}},
                                         MisuseRow{{"now is no number"}, {"--now", "soon"}},
                                         MisuseRow{{"now is not finite"}, {"--now", "nan"}},
                                         MisuseRow{{"unknown zone"}, {"--time-zone", "Mars/Olympus"}},
                                         MisuseRow{{"home is no folder"}, {"--home", "/dev/null"}},
                                         MisuseRow{{"helper for nothing"}, {"helper"}},
                                         MisuseRow{{"helper for what it cannot"}, {"helper", "upgrade"}},
                                         MisuseRow{{"watch and json"}, {"--watch", "--json"}},
                                         MisuseRow{{"watch and backtest"}, {"backtest", "--watch"}},
                                         MisuseRow{{"stray argument"}, {"a\nb"}}),
                         TestSupport::rowName);

} // namespace
} // namespace Report
