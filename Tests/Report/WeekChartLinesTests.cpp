#include "Report/WeekChartLines.h"

#include <gmock/gmock.h>

#include "Report/SampleSnapshot.h"
#include "Report/ViewOf.h"

namespace Report {
namespace {

using testing::HasSubstr;
using testing::Not;
using UsageModel::UsageSnapshot;

TEST(WeekChartLines, OfAWeekThatRunsOut) {
    EXPECT_EQ(sectionText(weekChartLines, sampleSnapshot(), 40), R"(                                       ⢀
100% ┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄┄⣀⣀⡠⠤⠤⠒⠒⠉⠉⠁
                       ▁▂▃▅⠊⠉⠉ ⡀⡀⠄⠄⠂⠂⠂⠁⠁
                 ▁▂▃▅▆▇▒▒▒▒⠂⠂⠁⠁
           ▁▂▃▅▆▇▒▒▒▒▒▒████
     ▁▂▃▅▆▇▒▒▒█████████████
   0 ─────┴────┴────┴────┴─▲──┴────┴────
     Wed  Thu  Fri  Sat  Sun  Mon  Tue
  5h      █     ▄         ▃
█ used · ⠒ forecast
⠂ a typical week for you · ┄ limit
5h: how full each session got
)");
}

TEST(WeekChartLines, InAscii) {
    const UsageSnapshot snapshot = sampleSnapshot();
    const auto utc = UsageModel::Calendar::utc();
    std::string text;
    for (const Line& line : weekChartLines({.snapshot = snapshot, .calendar = utc, .width = 40, .unicode = false}))
        text.append(written(line, {})).append("\n");
    EXPECT_EQ(text, R"(                                       *
100% =========================**********
                       ___#*** .........
                 ___###........
           ___###......####
     ___###...#############
   0 -----+----+----+----+-^--+----+----
     Wed  Thu  Fri  Sat  Sun  Mon  Tue
  5h      #     _         _
# used - * forecast
. a typical week for you - = limit
5h: how full each session got
)");
}

TEST(WeekChartLines, WithoutALimitThereIsNoPercent) {
    const std::string text = sectionText(weekChartLines, ungaugedSnapshot());
    EXPECT_THAT(text, HasSubstr("\n1.0× "));
    EXPECT_THAT(text, Not(HasSubstr("%")));
    EXPECT_THAT(text, Not(HasSubstr("limit")));
}

TEST(WeekChartLines, UncalibratedSessionsAreComparedWithEachOther) {
    UsageSnapshot snapshot = sampleSnapshot();
    for (auto& bar : snapshot.weekSeries->sessions) {
        bar.capBasis = UsageModel::SessionCapBasis::uncalibrated;
        bar.fillFraction *= 0.01;
    }
    const std::string text = sectionText(weekChartLines, snapshot, 40);
    EXPECT_THAT(text, HasSubstr("\n  5h      █     ▄         ▃\n"));
    EXPECT_THAT(text, HasSubstr("5h: sessions, compared with each other"));
}

TEST(WeekChartLines, OnlyWhatIsDrawnIsInTheLegend) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.weekSeries->baseline.clear();
    snapshot.weekSeries->forecastLikely.clear();
    snapshot.weekSeries->sessions.clear();
    EXPECT_THAT(sectionText(weekChartLines, snapshot), HasSubstr("\n█ used · ┄ limit\n"));
}

TEST(WeekChartLines, ADayTooNarrowForItsNameHasNone) {
    UsageSnapshot snapshot = sampleSnapshot();
    // An hour of Tuesday is left before Wednesday begins.
    snapshot.weekSeries->windowStart = snapshot.weekSeries->windowStart - 3600;
    EXPECT_THAT(sectionText(weekChartLines, snapshot, 40), HasSubstr("\n     Wed  Thu  Fri"));
}

TEST(WeekChartLines, WithoutAWeekThereAreNone) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.weekSeries->windowEnd = snapshot.weekSeries->windowStart;
    EXPECT_EQ(sectionText(weekChartLines, snapshot), "");
    snapshot.weekSeries.reset();
    EXPECT_EQ(sectionText(weekChartLines, snapshot), "");
}

} // namespace
} // namespace Report
