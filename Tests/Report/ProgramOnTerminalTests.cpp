#include <csignal>

#include <gmock/gmock.h>

#include "Report/ProgramRun.h"
#include "Support/TemporaryFolder.h"
#include "UsageModel/AppPaths.h"

namespace Report {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

constexpr const char* bold = "\x1b[1mNothing to measure yet\x1b[0m";

class OnTerminalTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder home;
};

TEST_F(OnTerminalTest, GetsBoldHeadings) {
    const Finished run = runOnTerminal(home.path(), {"TERM=xterm"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr(bold));
}

TEST_F(OnTerminalTest, AnEmptyNoColorMeansNothing) {
    EXPECT_THAT(runOnTerminal(home.path(), {"TERM=xterm", "NO_COLOR="}).out, HasSubstr(bold));
}

TEST_F(OnTerminalTest, NoColorTakesEveryEscapeCodeAway) {
    const Finished run = runOnTerminal(home.path(), {"TERM=xterm", "NO_COLOR=1"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("Nothing to measure yet"));
    EXPECT_THAT(run.out, Not(HasSubstr("\x1b")));
}

TEST_F(OnTerminalTest, ADumbOneGetsNoEscapeCodes) {
    EXPECT_THAT(runOnTerminal(home.path(), {"TERM=dumb"}).out, Not(HasSubstr("\x1b")));
}

TEST_F(OnTerminalTest, AShortImportShowsNoBar) {
    TestSupport::writeFile(home / ".claude/projects/p/s.jsonl", "{}\n");
    EXPECT_THAT(runOnTerminal(home.path(), {"TERM=xterm"}).out, Not(HasSubstr("reading the logs")));
}

class OnTerminalWatch : public OnTerminalTest {
protected:
    static constexpr const char* entered = "\x1b[?1049h\x1b[?25l";
    static constexpr const char* left = "\x1b[?25h\x1b[?1049l";
    /// What ends a frame.
    static constexpr const char* drawn = "\x1b[J";

    [[nodiscard]] TerminalRun started(const std::vector<std::string>& settings = {"TERM=xterm"}) const {
        return {home.path(), {"--watch"}, settings};
    }
    void changeGauge() const {
        const UsageModel::AppPaths paths(home.path());
        TestSupport::writeFile(paths.gaugeFile(), R"({"capturedAt":1772360370,"source":"statusLine","windows":)"
                                                  R"({"five_hour":{"usedPercentage":12.5,"resetsAt":1772364030}}})");
    }
};

TEST_F(OnTerminalWatch, HoldsAScreenOfItsOwnUntilInterrupted) {
    TerminalRun run = started();
    const std::string shown = run.until(drawn);
    EXPECT_THAT(shown, HasSubstr(entered));
    EXPECT_THAT(shown, HasSubstr("Nothing to measure yet"));
    EXPECT_FALSE(run.showsKeys());
    run.send(SIGINT);
    EXPECT_THAT(run.until(left), EndsWith(left));
    const Finished finished = run.end();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "");
}

TEST_F(OnTerminalWatch, EndsAsASignalWants) {
    for (const int signal : {SIGTERM, SIGHUP, SIGQUIT}) {
        TerminalRun run = started();
        EXPECT_THAT(run.until(drawn), HasSubstr(entered));
        run.send(signal);
        EXPECT_THAT(run.until(left), EndsWith(left));
        EXPECT_EQ(run.end().status, 128 + signal);
    }
}

TEST_F(OnTerminalWatch, RedrawsWhenTheGaugeChanges) {
    TerminalRun run = started();
    EXPECT_THAT(run.until(drawn), Not(HasSubstr("Windows")));
    // The window of this reading has long been over: it is known, and empty.
    TestSupport::writeFile(home / ".claude/projects/p/s.jsonl",
                           R"({"type":"assistant","timestamp":"2026-02-01T09:00:00.000Z","sessionId":"s","message":)"
                           R"({"model":"claude-opus-4","usage":{"input_tokens":1}}})"
                           "\n");
    changeGauge();
    EXPECT_THAT(run.until("Session - 5h"), HasSubstr("Windows"));
}

TEST_F(OnTerminalWatch, RedrawsInAnotherSize) {
    TerminalRun run = started();
    EXPECT_THAT(run.until(drawn), HasSubstr("Once you have used Claude Code, it leaves them in the"));
    run.resize(40, 5);
    const std::string shown = run.until(drawn);
    EXPECT_THAT(shown, HasSubstr("There are no session logs yet. Once you\x1b[K"));
    // Five rows: four lines, and that there are more.
    EXPECT_EQ(lineCount(shown), 4U);
    EXPECT_THAT(shown, HasSubstr("...\x1b[K\x1b[J"));
}

TEST_F(OnTerminalWatch, GivesTheTerminalBackWhileItIsStopped) {
    TerminalRun run = started();
    EXPECT_THAT(run.until(drawn), HasSubstr(entered));
    run.send(SIGTSTP);
    // Its process group has no shell that could continue it, so that the system does not stop it.
    EXPECT_THAT(run.until(drawn), testing::StartsWith(std::string(left) + entered));
    run.send(SIGINT);
    EXPECT_EQ(run.end().status, 0);
}

TEST_F(OnTerminalWatch, OnADumbTerminalEachReportFollowsTheLast) {
    TerminalRun run = started({"TERM=dumb"});
    EXPECT_THAT(run.until("UTC\r\n"), Not(HasSubstr("\x1b")));
    changeGauge();
    EXPECT_THAT(run.until("UTC\r\n"), testing::StartsWith("\r\nNothing to measure yet"));
    run.send(SIGINT);
    EXPECT_EQ(run.end().status, 0);
}

} // namespace
} // namespace Report
