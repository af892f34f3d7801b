#include "Report/SnapshotText.h"

#include <sstream>

#include <gmock/gmock.h>

#include "Report/SampleSnapshot.h"
#include "Report/Text.h"

namespace Report {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using UsageModel::Calendar;
using UsageModel::UsageSnapshot;

using HelperState = UsageGauge::StatusLineInstaller::State;

constexpr Palette plain{.colour = false, .unicode = true};
constexpr Palette coloured{.colour = true, .unicode = true};

struct Asked {
    std::size_t columns = 80;
    Palette palette = plain;
    History history = History::turns;
    HelperState helper = HelperState::installed;
    std::optional<std::string> complaint;
};

std::string textOf(const UsageSnapshot& snapshot, const Asked& asked = {}) {
    const Calendar utc = Calendar::utc();
    return snapshotText({.snapshot = snapshot,
                         .calendar = utc,
                         .history = asked.history,
                         .helper = asked.helper,
                         .logFolder = "/home/someone/.claude/projects",
                         .complaint = asked.complaint},
                        {.columns = asked.columns, .rows = {}, .palette = asked.palette});
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

UsageSnapshot emptySnapshot() {
    UsageSnapshot snapshot = ungaugedSnapshot();
    snapshot.weekSeries.reset();
    snapshot.models = {};
    return snapshot;
}

/// A snapshot whose every text is too long for any line, and ill meant.
UsageSnapshot hostileSnapshot() {
    const std::string word(300, 'w');
    const std::string evil = "\x1b[2J\n" + word + " 大大大大大大大大 " + word;
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.verdict.headline = evil;
    snapshot.verdict.subtext = evil;
    snapshot.recommendation =
        UsageModel::Recommendation{.title = evil, .detail = evil, .impact = evil, .command = evil};
    for (auto& session : snapshot.live.sessions) session.id = evil;
    for (auto& meter : snapshot.meters) {
        meter.used = 1.5;
        meter.confidence = {.anchored = true, .secondsSinceAnchor = 1e15, .estimatedError = 1e300};
    }
    for (auto& projection : snapshot.projections) projection.endFraction = 1e300;
    snapshot.weekSeries->intensity = 1e300;
    return snapshot;
}

TEST(SnapshotText, InAnUsualTerminal) {
    EXPECT_EQ(textOf(sampleSnapshot()), R"(Locked out in ~1d 13h
Full lockout until reset in 2d 13h. Ease off to make it.

Windows
Session · 5h   ██████████████░░░░░░┃░░░░░░░░░░░░░░░░░░░░    34%  0.7× Under pace
               50% of its time gone · resets in 2h 30m, Sun 12:50 PM
               read 4m ago, give or take 1%

Weekly · all   █████████████████████████┃███████▋░░░░░░░    82%  1.3× Overusing
               63% of its time gone · resets in 2d 13h, Wed 12:00 AM
               read 4m ago, give or take 1%

Opus · weekly  ░░░░░░░░░░░░░░░░░░░░░░░░░┃░░░░░░░░░░░░░░░      ?
               63% of its time gone · resets in 2d 13h, Wed 12:00 AM
               no official reading

Forecast
Session · 5h   lands at 61% · likely lasts until its reset
Weekly · all   lands at 112% · likely out Mon 11:20 PM, in 1d 13h
               at the earliest Mon 6:20 AM, in 20h
Opus · weekly  none without an official reading

Route the rest to Sonnet · back inside the cap
This week is projected to hit 112% by reset; this lands it around 91%. Lowering
effort alone doesn't get you there.
Type /model sonnet

This week · heading for 1.24× a typical one
                                                                            ⣀⣀⣀⡠
100% ┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄⣀⣀⣀⡠⠤⠤⠤⠒⠒⠒⠊⠉⠉⠉┄┄┄┄
                                                  ▁▂⠠⠤⠤⠒⠒⠒⠊⠉⠉⠉       ⡀⡀⡀⡀⠄⠄⠄⠂⠂⠂⠁
                                         ▁▂▃▃▄▅▆▇███     ⡀⡀⡀⠄⠄⠄⠂⠂⠂⠁⠁⠁
                                ▁▂▂▃▄▅▆▇████▒▒▒▒▒▒▒▒⠂⠁⠁⠁⠁
                       ▁▂▂▃▄▅▆▇▒▒▒▒▒▒▒▒▒▒▒▒▒████████
              ▁▁▂▃▄▅▆▇▒▒▒▒▒▒▒▒▒█████████████████████
     ▁▁▂▃▄▅▆▇▒▒▒▒▒██████████████████████████████████
   0 ──────────┴──────────┴──────────┴─────────┴────▲─────┴──────────┴──────────
     Wed       Thu        Fri        Sat       Sun        Mon        Tue
  5h            ██            ▄▄                   ▃▃
█ used · ⠒ forecast · ⠂ a typical week for you · ┄ limit
5h: how full each session got

Models this week
Sonnet  ██████████████████████████████░░░░░░░░░░   75%
Opus    ██████████░░░░░░░░░░░░░░░░░░░░░░░░░░░░░░   25%

Live, last 45m
8e461893-1fc3-4416-a39f-2ee09d78b1dd  Opus    X-High   1m ago   75%
1b9d6bcd-bbfd-4b2d-9b5d-ab8dfbbd4bed  Sonnet          40m ago   25%

2026-03-01, Sun 10:20 AM, UTC
)");
}

TEST(SnapshotText, InAWideTerminalSectionsStandBesideEachOther) {
    EXPECT_EQ(textOf(sampleSnapshot(), {.columns = 130}), R"(Locked out in ~1d 13h
Full lockout until reset in 2d 13h. Ease off to make it.

Windows                                                            This week · heading for 1.24× a typical one
Session · 5h   ████████▏░░░┃░░░░░░░░░░░    34%  0.7× Under pace                                                                ⣀⣀⡠
               50% of its time gone                                100% ┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄⣀⣀⣀⠤⠤⠔⠒⠒⠉⠉⠉┄┄┄
               resets in 2h 30m, Sun 12:50 PM                                                              ▁▂⠤⠔⠒⠒⠊⠉⠉      ⡀⡀⠄⠄⠄⠂⠂⠁
               read 4m ago, give or take 1%                                                         ▁▂▃▅▆▇███   ⡀⡀⠄⠄⠄⠂⠂⠁⠁⠁
                                                                                             ▁▂▃▄▆▇███▒▒▒▒▒▒▒⠁⠁⠁
Weekly · all   ███████████████┃███▋░░░░    82%  1.3× Overusing                        ▁▂▃▄▅▇▒▒▒▒▒▒▒▒▒▒███████
               63% of its time gone                                            ▁▂▃▄▅▇▒▒▒▒▒▒▒█████████████████
               resets in 2d 13h, Wed 12:00 AM                           ▁▂▃▄▅▆▒▒▒▒███████████████████████████
               read 4m ago, give or take 1%                           0 ────────┴───────┴───────┴────────┴──▲────┴───────┴────────
                                                                        Wed     Thu     Fri     Sat      Sun     Mon     Tue
Opus · weekly  ░░░░░░░░░░░░░░░┃░░░░░░░░      ?                       5h          █         ▄▄              ▃▃
               63% of its time gone                                █ used · ⠒ forecast · ⠂ a typical week for you · ┄ limit
               resets in 2d 13h, Wed 12:00 AM                      5h: how full each session got
               no official reading
                                                                   Models this week
Forecast                                                           Sonnet  ██████████████████████████████░░░░░░░░░░   75%
Session · 5h   lands at 61% · likely lasts until its reset         Opus    ██████████░░░░░░░░░░░░░░░░░░░░░░░░░░░░░░   25%
Weekly · all   lands at 112%
               likely out Mon 11:20 PM, in 1d 13h                  Live, last 45m
               at the earliest Mon 6:20 AM, in 20h                 8e461893-1fc3-4416-a39f-2ee09d7…  Opus    X-High   1m ago   75%
Opus · weekly  none without an official reading                    1b9d6bcd-bbfd-4b2d-9b5d-ab8dfbb…  Sonnet          40m ago   25%

Route the rest to Sonnet · back inside the cap
This week is projected to hit 112% by reset; this lands it
around 91%. Lowering effort alone doesn't get you there.
Type /model sonnet

2026-03-01, Sun 10:20 AM, UTC
)");
}

TEST(SnapshotText, BeginsWithTheVerdict) {
    for (const std::size_t columns : {40U, 80U, 200U}) {
        EXPECT_THAT(textOf(sampleSnapshot(), {.columns = columns}),
                    StartsWith("Locked out in ~1d 13h\nFull lockout until reset"));
    }
}

TEST(SnapshotText, ColoursChangeNoWord) {
    for (const std::size_t columns : {40U, 80U, 200U}) {
        std::string text = textOf(sampleSnapshot(), {.columns = columns, .palette = coloured});
        EXPECT_THAT(text, StartsWith("\x1b[1;31mLocked out in ~1d 13h\x1b[0m\n"));
        for (std::size_t at = text.find('\x1b'); at != std::string::npos; at = text.find('\x1b'))
            text.erase(at, text.find('m', at) - at + 1);
        std::string stripped;
        for (const std::string& line : linesOf(text))
            stripped.append(line.substr(0, line.find_last_not_of(' ') + 1)).append("\n");
        EXPECT_EQ(stripped, textOf(sampleSnapshot(), {.columns = columns}));
    }
}

TEST(SnapshotText, WithoutUnicodeThereIsNone) {
    const std::string text = textOf(sampleSnapshot(), {.palette = {}});
    EXPECT_THAT(text, StartsWith("Locked out in ~1d 13h\n"));
    EXPECT_TRUE(std::ranges::all_of(text, [](char c) { return c == '\n' || (c >= ' ' && c < '\x7f'); }));
    // Nothing but drawings and signs of punctuation are replaced.
    EXPECT_THAT(textOf(sampleSnapshot(), {.palette = {}}), HasSubstr("Opus - weekly  ...."));
}

TEST(SnapshotText, FitsAnyWidth) {
    for (const UsageSnapshot& snapshot : {sampleSnapshot(), ungaugedSnapshot(), hostileSnapshot(), emptySnapshot()}) {
        for (std::size_t columns = 1; columns <= 220; ++columns) {
            for (const std::string& line : linesOf(textOf(snapshot, {.columns = columns})))
                ASSERT_LE(columnsOf(line), columns) << line;
        }
    }
}

TEST(SnapshotText, NothingInItSpeaksToTheTerminal) {
    const std::string text = textOf(hostileSnapshot());
    EXPECT_THAT(text, Not(HasSubstr("\x1b")));
    EXPECT_THAT(text, StartsWith("?[2J?"));
}

TEST(SnapshotText, WithoutLogsItSaysWhereTheyWouldLie) {
    EXPECT_EQ(textOf(emptySnapshot(), {.history = History::noLogs}),
              R"(Nothing to measure yet
There are no session logs yet. Once you have used Claude Code, it leaves them in
the folder below, and this report will show what they hold.
/home/someone/.claude/projects

2026-03-01, Sun 10:20 AM, UTC
)");
}

TEST(SnapshotText, TellsLogsWithoutTurnsFromNoLogs) {
    EXPECT_THAT(textOf(emptySnapshot(), {.history = History::noTurns}),
                StartsWith("Waiting for your first turn\nClaude Code is here, but hasn't billed a token yet."));
}

TEST(SnapshotText, AReadingIsShownAlsoBeforeTheFirstTurn) {
    const std::string text = textOf(sampleSnapshot(), {.history = History::noTurns});
    EXPECT_THAT(text, StartsWith("Waiting for your first turn\n"));
    EXPECT_THAT(text, HasSubstr("\nWindows\nSession · 5h"));
}

TEST(SnapshotText, AHelperThatIsMissingIsNamed) {
    EXPECT_THAT(textOf(sampleSnapshot(), {.helper = HelperState::notInstalled}),
                HasSubstr("is not installed\nrun brindlewick-report helper install\n"));
    EXPECT_THAT(textOf(sampleSnapshot(), {.helper = HelperState::conflict}), HasSubstr("was replaced\nrun "));
    EXPECT_THAT(textOf(emptySnapshot(), {.history = History::noLogs, .helper = HelperState::notInstalled}),
                HasSubstr("helper install"));
    EXPECT_THAT(textOf(sampleSnapshot()), Not(HasSubstr("helper")));
}

TEST(SnapshotText, AComplaintStandsAtTheEnd) {
    EXPECT_THAT(textOf(sampleSnapshot(), {.complaint = "cannot read\nit"}),
                HasSubstr("\n\ncannot read?it\n2026-03-01, Sun 10:20 AM, UTC\n"));
}

TEST(SnapshotText, WarmingUpIsAReportToo) {
    EXPECT_EQ(textOf(UsageSnapshot::warmingUp(sampleNow)),
              "Warming up…\nReading your usage history\n\n2026-03-01, Sun 10:20 AM, UTC\n");
}

} // namespace
} // namespace Report
