#include "Report/WindowLines.h"

#include <gmock/gmock.h>

#include "Report/SampleSnapshot.h"
#include "Report/ViewOf.h"

namespace Report {
namespace {

using testing::HasSubstr;
using UsageModel::UsageSnapshot;
using UsageModel::WindowState;

/// A snapshot with the sample's session window alone, changed.
template <typename Change>
UsageSnapshot withSession(Change change) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.meters.resize(1);
    change(snapshot.meters.front());
    return snapshot;
}

TEST(WindowLines, AWideWindow) {
    EXPECT_EQ(sectionText(windowLines, withSession([](auto&) {})),
              R"(Session · 5h   ██████████████░░░░░░┃░░░░░░░░░░░░░░░░░░░░    34%  0.7× Under pace
               50% of its time gone · resets in 2h 30m, Sun 12:50 PM
               read 4m ago, give or take 1%
)");
}

TEST(WindowLines, ANarrowWindow) {
    EXPECT_EQ(sectionText(windowLines, withSession([](auto&) {}), 40), R"(Session · 5h     34%  0.7× Under pace
█████████████▋░░░░░░┃░░░░░░░░░░░░░░░░░░░
50% of its time gone
resets in 2h 30m, Sun 12:50 PM
read 4m ago, give or take 1%
)");
}

TEST(WindowLines, WindowsStandApart) {
    EXPECT_THAT(sectionText(windowLines, sampleSnapshot()), HasSubstr("give or take 1%\n\nWeekly · all"));
}

TEST(WindowLines, WithoutWindowsThereAreNone) {
    EXPECT_EQ(sectionText(windowLines, UsageSnapshot::warmingUp(sampleNow)), "");
}

TEST(WindowLines, LogUnitsAreNotQuotedAsPercent) {
    const UsageSnapshot snapshot = withSession([](WindowState& meter) { meter.confidence.anchored = false; });
    EXPECT_EQ(sectionText(windowLines, snapshot),
              R"(Session · 5h   ░░░░░░░░░░░░░░░░░░░░┃░░░░░░░░░░░░░░░░░░░░      ?
               50% of its time gone · resets in 2h 30m, Sun 12:50 PM
               no official reading
)");
}

TEST(WindowLines, ALearntCapMakesAnEstimate) {
    UsageSnapshot snapshot = withSession([](WindowState& meter) { meter.confidence.anchored = false; });
    snapshot.sessionCapInLogUnits = 2.0;
    const std::string text = sectionText(windowLines, snapshot);
    EXPECT_THAT(text, HasSubstr("  ≈34%  0.7× Under pace\n"));
    EXPECT_THAT(text, HasSubstr("estimated from your own sessions"));
}

TEST(WindowLines, ALearntSessionCapTellsNothingOfTheWeek) {
    UsageSnapshot snapshot = ungaugedSnapshot();
    snapshot.sessionCapInLogUnits = 2.0;
    snapshot.meters.erase(snapshot.meters.begin());
    EXPECT_THAT(sectionText(windowLines, snapshot), HasSubstr("  ?\n"));
}

TEST(WindowLines, AResetThatIsNotKnownIsNotMadeUp) {
    const UsageSnapshot snapshot = withSession([](WindowState& meter) { meter.resetsAt.reset(); });
    EXPECT_THAT(sectionText(windowLines, snapshot), HasSubstr("50% of its time gone · reset not known"));
}

TEST(WindowLines, AnInferredResetIsSaidToBe) {
    UsageSnapshot snapshot = sampleSnapshot();
    snapshot.weekSeries->boundaryEstimated = true;
    EXPECT_THAT(sectionText(windowLines, snapshot), HasSubstr("resets in ~2d 13h, Wed 12:00 AM"));
}

TEST(WindowLines, AFullWindowIsCritical) {
    const UsageSnapshot snapshot = withSession([](WindowState& meter) { meter.used = 1.5; });
    const auto utc = UsageModel::Calendar::utc();
    const Line bar = windowLines(View{.snapshot = snapshot, .calendar = utc}).front();
    EXPECT_EQ(bar.pieces()[1], (Piece{"████████████████████", Ink::critical}));
    EXPECT_THAT(written(bar, {.unicode = true}), HasSubstr("150%  3.0× Overusing"));
}

} // namespace
} // namespace Report
