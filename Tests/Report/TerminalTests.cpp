#include <gmock/gmock.h>

#include "Report/ProgramRun.h"
#include "Support/TemporaryFolder.h"

namespace Report {
namespace {

using testing::HasSubstr;
using testing::Not;

class TerminalTest : public testing::Test {
protected:
    TestSupport::TemporaryFolder home;
};

TEST_F(TerminalTest, GetsBoldHeadings) {
    const Finished run = runOnTerminal(home.path(), {});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("\x1b[1mOfficial limits\x1b[0m"));
}

TEST_F(TerminalTest, AnEmptyNoColorMeansNothing) {
    EXPECT_THAT(runOnTerminal(home.path(), {"NO_COLOR="}).out, HasSubstr("\x1b[1m"));
}

TEST_F(TerminalTest, NoColorTakesEveryEscapeCodeAway) {
    const Finished run = runOnTerminal(home.path(), {"NO_COLOR=1"});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("Official limits"));
    EXPECT_THAT(run.out, Not(HasSubstr("\x1b")));
}

TEST_F(TerminalTest, AShortImportShowsNoBar) {
    TestSupport::writeFile(home / ".claude/projects/p/s.jsonl", "{}\n");
    EXPECT_THAT(runOnTerminal(home.path(), {}).out, Not(HasSubstr("reading the logs")));
}

} // namespace
} // namespace Report
