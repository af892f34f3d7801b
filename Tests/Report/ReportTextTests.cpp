#include "Report/ReportText.h"

#include <sstream>

#include <gmock/gmock.h>

#include "Report/Numbers.h"
#include "Report/SampleReport.h"

namespace Report {
namespace {

using testing::HasSubstr;
using testing::Not;
using UsageModel::Calendar;
using UsageModel::ModelClass;

constexpr const char* folder = "/home/someone/.claude/projects";

std::string plain(const UsageReport& report) {
    return reportText(report, folder, Style::plain);
}

std::string withGauge(const UsageModel::GaugeReading& gauge, Style style = Style::plain) {
    const auto report = makeReport({.gauge = gauge, .now = sampleNow, .calendar = Calendar::utc()});
    return reportText(report, folder, style);
}

TEST(ReportText, OfAKnownReport) {
    EXPECT_EQ(plain(sampleReport()), R"(Brindlewick, Sun 2026-03-01 10:20 (UTC)

Official limits, read 4 min ago
  Session · 5h  42% used  resets in 2 h 13 min (Sun 2026-03-01 12:33)
  Weekly · all  92% used

Last 5 hours
  Model  Turns  Input  Output  Cache creation  Cache read   Units
  Opus       1      1       2               3           4  0.0000
  Total      1      1       2               3           4  0.0000

Last 7 days
  Model  Turns  Input  Output  Cache creation  Cache read   Units
  Opus       2  12.3M   10.0k               3           4  1.2396
  Total      2  12.3M   10.0k               3           4  1.2396

All time
  Model  Turns  Input  Output  Cache creation  Cache read   Units
  Opus       2  12.3M   10.0k               3           4  1.2396
  Haiku      1   1.0M       0               0           0  0.0200
  Total      3  13.3M   10.0k               3           4  1.2596

Busiest days
  Day             Turns  Tokens   Units
  Sat 2026-02-28      1   12.4M  1.2396
  Thu 2026-02-19      1    1.0M  0.0200
  Sun 2026-03-01      1      10  0.0000
)");
}

TEST(ReportText, SaysWhereTheLogsWouldLie) {
    const std::string text = plain(makeReport({.now = sampleNow, .calendar = Calendar::utc()}));
    EXPECT_THAT(text, HasSubstr("no official reading yet"));
    EXPECT_THAT(text, HasSubstr("There are no session logs yet."));
    EXPECT_THAT(text, HasSubstr(folder));
    EXPECT_THAT(text, Not(HasSubstr("Busiest days")));
}

TEST(ReportText, TellsLogsWithoutTurnsFromNoLogs) {
    const std::string text = plain(makeReport({.now = sampleNow, .calendar = Calendar::utc(), .logFiles = 1}));
    EXPECT_THAT(text, HasSubstr("hold no turns yet"));
    EXPECT_THAT(text, Not(HasSubstr("There are no session logs")));
}

TEST(ReportText, ASpanWithoutTurnsSaysSo) {
    const std::vector turns{turn(1e6, ModelClass::opus, {.input = 1})};
    const std::string text = plain(makeReport({.events = turns, .now = sampleNow, .calendar = Calendar::utc()}));
    EXPECT_THAT(text, HasSubstr("Last 7 days\n  no turns\n"));
}

TEST(ReportText, FitsATerminal) {
    constexpr std::int64_t much = 999'949'000'000'000;
    std::vector<UsageModel::UsageEvent> turns(1000, turn(1, ModelClass::sonnet, {much, much, much, much}));
    auto gauge = sampleGauge();
    gauge.windows["seven_day_opus"] = {.usedPercentage = 100, .resetsAt = sampleNow.secondsSince1970 + 5e5};
    const auto zone = Calendar::inZone("America/Argentina/ComodRivadavia");
    ASSERT_TRUE(zone.has_value());
    std::istringstream text(
        plain(makeReport({.events = turns, .gauge = gauge, .now = sampleNow, .calendar = *zone, .logFiles = 1})));
    for (std::string line; std::getline(text, line);) EXPECT_LE(columnsOf(line), 80U) << line;
}

TEST(ReportText, AResetInThePastIsOver) {
    auto gauge = sampleGauge();
    gauge.windows["five_hour"].resetsAt = sampleNow.secondsSince1970 - 300;
    EXPECT_THAT(withGauge(gauge), HasSubstr("reset 5 min ago"));
}

TEST(ReportText, AReadingFromTheFutureHasNoAge) {
    auto gauge = sampleGauge();
    gauge.capturedAt = sampleNow.secondsSince1970 + 1;
    EXPECT_THAT(withGauge(gauge), HasSubstr("Official limits, taken after the time of this report\n"));
}

TEST(ReportText, PlainHasNoEscapeCodes) {
    EXPECT_THAT(plain(sampleReport()), Not(HasSubstr("\x1b")));
}

TEST(ReportText, ColouredHasBoldHeadingsAndTheSameWords) {
    std::string text = reportText(sampleReport(), folder, Style::coloured);
    EXPECT_THAT(text, HasSubstr("\x1b[1mLast 5 hours\x1b[0m\n"));
    for (std::size_t at = text.find('\x1b'); at != std::string::npos; at = text.find('\x1b'))
        text.erase(at, text.find('m', at) - at + 1);
    EXPECT_EQ(text, plain(sampleReport()));
}

TEST(ReportText, ALimitTakesColourAsItFills) {
    auto gauge = sampleGauge();
    gauge.windows = {{"five_hour", {.usedPercentage = 74.4}}};
    EXPECT_THAT(withGauge(gauge, Style::coloured), HasSubstr("\n  Session · 5h  74% used\n"));
    gauge.windows = {{"five_hour", {.usedPercentage = 75}}};
    EXPECT_THAT(withGauge(gauge, Style::coloured), HasSubstr("\x1b[33m  Session · 5h  75% used\x1b[0m\n"));
    gauge.windows = {{"five_hour", {.usedPercentage = 90}}};
    EXPECT_THAT(withGauge(gauge, Style::coloured), HasSubstr("\x1b[31m  Session · 5h  90% used\x1b[0m\n"));
}

TEST(ReportText, AFolderNameCannotSpeakToTheTerminal) {
    const auto empty = makeReport({.now = sampleNow, .calendar = Calendar::utc()});
    EXPECT_THAT(reportText(empty, "/home/\x1b[31m\n", Style::plain), HasSubstr("/home/?[31m?\n"));
}

} // namespace
} // namespace Report
