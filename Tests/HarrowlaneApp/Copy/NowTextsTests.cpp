#include "HarrowlaneApp/Copy/NowTexts.h"

#include <limits>

#include <gmock/gmock.h>

#include "HarrowlaneApp/Copy/Weeks.h"

namespace HarrowlaneApp {
namespace {

using NowTexts::Body;
using NowTexts::Card;
using NowTexts::HeaderChip;
using NowTexts::State;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using TestSupport::monday;
using TestSupport::utc;
using UsageModel::Date;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;
using UsageModel::WindowState;

TEST(ClockString, TellsADayForTheWeekAndAMinuteForTheSession) {
    EXPECT_EQ(NowTexts::clockString({.at = monday + 300, .isWeekly = true}, utc()), "Mon 5 PM");
    EXPECT_EQ(NowTexts::clockString({.at = monday + 300}, utc()), "5:05 PM");
    EXPECT_EQ(NowTexts::clockString({.isWeekly = true}, utc()), "—");
    EXPECT_EQ(NowTexts::clockString({}, utc()), "—");
}

struct TimeLeftRow {
    double seconds;
    const char* text;
};

class TimeLeftTest : public testing::TestWithParam<TimeLeftRow> {};

TEST_P(TimeLeftTest, CountsWholeSeconds) {
    EXPECT_EQ(NowTexts::timeLeft(monday + GetParam().seconds, monday), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Spans, TimeLeftTest,
                         testing::Values(TimeLeftRow{-5, "0m"}, TimeLeftRow{0, "0m"}, TimeLeftRow{59.9, "0m"},
                                         TimeLeftRow{60, "1m"}, TimeLeftRow{3599, "59m"}, TimeLeftRow{3599.75, "59m"},
                                         TimeLeftRow{3600, "1h 00m"}, TimeLeftRow{7500, "2h 05m"},
                                         TimeLeftRow{86399, "23h 59m"}, TimeLeftRow{86400, "1d 0h"},
                                         TimeLeftRow{6 * 86400 + 14 * 3600 + 3599, "6d 14h"}));

TEST(TimeLeft, SurvivesWhatNoClockShows) {
    EXPECT_EQ(NowTexts::timeLeft({}, monday), "—");
    EXPECT_EQ(NowTexts::timeLeft(Date{std::numeric_limits<double>::infinity()}, monday), "104166666666d 16h");
    EXPECT_EQ(NowTexts::timeLeft(Date{std::numeric_limits<double>::quiet_NaN()}, monday), "0m");
}

TEST(PopoverBody, ShowsCardsOnceReadyAndAlwaysInSampleMode) {
    EXPECT_EQ(NowTexts::body({.readiness = Readiness::ready}), Body::cards);
    EXPECT_EQ(NowTexts::body({.readiness = Readiness::warmingUp}), Body::warmingUp);
    EXPECT_EQ(NowTexts::body({.readiness = Readiness::noLogsFound}), Body::firstRun);
    EXPECT_EQ(NowTexts::body({.readiness = Readiness::noUsageYet}), Body::firstRun);
    for (const Readiness readiness : UsageModel::allCases<Readiness>) {
        EXPECT_EQ(NowTexts::body({.readiness = readiness, .isShowingSample = true}), Body::cards);
    }
}

UsageSnapshot snapshotWith(std::vector<WindowState> meters) {
    UsageSnapshot snapshot = UsageSnapshot::warmingUp(monday);
    snapshot.meters = std::move(meters);
    return snapshot;
}

TEST(HeaderChip, TellsHowFarTheFiguresCanBeTrusted) {
    const UsageSnapshot estimated = snapshotWith({{.kind = WindowKind::weeklyAll}});
    const UsageSnapshot anchored = snapshotWith({{.kind = WindowKind::weeklyAll, .confidence = {.anchored = true}}});
    EXPECT_EQ(NowTexts::headerChip({}, UsageSnapshot::warmingUp(monday)), HeaderChip::none);
    EXPECT_EQ(NowTexts::headerChip({}, snapshotWith({{.kind = WindowKind::session5h}})), HeaderChip::none)
        << "no meter of the binding window";
    EXPECT_EQ(NowTexts::headerChip({}, anchored), HeaderChip::none);
    EXPECT_EQ(NowTexts::headerChip({.helper = HelperState::installed}, estimated), HeaderChip::estimated);
    EXPECT_EQ(NowTexts::headerChip({.helper = HelperState::notInstalled}, estimated), HeaderChip::connectGauge);
    EXPECT_EQ(NowTexts::headerChip({.helper = HelperState::conflict}, estimated), HeaderChip::connectGauge);
    EXPECT_EQ(NowTexts::headerChip({.isShowingSample = true}, anchored), HeaderChip::sample);
}

TEST(HeaderChip, HasItsText) {
    EXPECT_EQ(NowTexts::text(HeaderChip::none), "");
    EXPECT_EQ(NowTexts::text(HeaderChip::sample), "SAMPLE");
    EXPECT_EQ(NowTexts::text(HeaderChip::estimated), "Estimated");
    EXPECT_EQ(NowTexts::text(HeaderChip::connectGauge), "Connect gauge");
}

TEST(PopoverCards, AreThoseThatTheSnapshotFills) {
    UsageSnapshot snapshot = snapshotWith({});
    EXPECT_THAT(NowTexts::cards(snapshot), IsEmpty()) << "an empty area, not the first-run card";
    snapshot = snapshotWith({{.kind = WindowKind::session5h}, {.kind = WindowKind::weeklyAll}});
    EXPECT_THAT(NowTexts::cards(snapshot), ElementsAre(Card::session, Card::weekWindow));
    snapshot.weekSeries = TestSupport::capWeek(1.0);
    snapshot.recommendation.emplace();
    EXPECT_THAT(NowTexts::cards(snapshot), ElementsAre(Card::session, Card::weekChart, Card::recommendation));
    snapshot.meters = {{.kind = WindowKind::weeklyOpus}};
    EXPECT_THAT(NowTexts::cards(snapshot), ElementsAre(Card::weekChart, Card::recommendation));
}

TEST(WindowCard, TellsPaceAndReset) {
    const WindowState meter{
        .kind = WindowKind::session5h, .used = 0.84, .resetsAt = monday + 7200, .elapsedFraction = 0.6};
    const auto session = NowTexts::windowCard({.meter = meter, .now = monday}, utc());
    EXPECT_EQ(session.title, "Current session");
    EXPECT_EQ(session.shares.tokensUsed, 0.84);
    EXPECT_EQ(session.shares.timeUsed, 0.6);
    EXPECT_EQ(session.status.label, "Overusing");
    EXPECT_EQ(session.clock, "7:00 PM");
    EXPECT_EQ(session.timeLeft, "2h 00m");
    const auto week = NowTexts::windowCard({.meter = meter, .isWeekly = true, .now = monday}, utc());
    EXPECT_EQ(week.title, "This week");
    EXPECT_EQ(week.clock, "Mon 7 PM");
}

TEST(AdviceIcon, PointsUpWhereThereIsRoom) {
    using Kind = UsageModel::Recommendation::Kind;
    EXPECT_EQ(NowTexts::adviceIcon(Kind::spendMore), NowTexts::AdviceIcon::arrowUp);
    EXPECT_EQ(NowTexts::adviceIcon(Kind::easeOff), NowTexts::AdviceIcon::lightbulb);
}

TEST(CopyName, SaysWhatIsCopied) {
    EXPECT_EQ(NowTexts::copyName("/model sonnet"), "Copy /model sonnet");
}

TEST(AccessibleWeek, ReadsTheCardFromTheTop) {
    const WeekCopy::Compact week{.headline = "Runs out Sun 11:13 PM",
                                 .badge = "Over pace",
                                 .resetLine = "resets Mon 5 PM · 4d 2h",
                                 .stats = {{.value = "58%", .label = "used"}, {.value = "41%", .label = "elapsed"}}};
    EXPECT_EQ(NowTexts::accessibleWeek(week),
              "THIS WEEK. Over pace. Runs out Sun 11:13 PM. 58% used, 41% elapsed. resets Mon 5 PM · 4d 2h");
}

TEST(FirstRunCard, TellsMissingLogsFromMissingTurns) {
    EXPECT_EQ(NowTexts::firstRunCard(Readiness::noLogsFound).title, "Nothing to measure yet");
    EXPECT_EQ(NowTexts::firstRunCard(Readiness::noLogsFound).text,
              "Brindlewick reads the logs Claude Code already writes to ~/.claude/projects. There aren't any on this "
              "Mac yet — start a session and the meter fills in seconds after your first turn.");
    EXPECT_EQ(NowTexts::firstRunCard(Readiness::noUsageYet).title, "Waiting for your first turn");
    EXPECT_EQ(NowTexts::firstRunCard(Readiness::noUsageYet).text,
              "Claude Code is here, but hasn't billed a token yet. Send it something and Brindlewick starts drawing "
              "your week.");
}

TEST(PopoverFooter, GivesWayToAnError) {
    EXPECT_EQ(NowTexts::footer({.generatedAt = monday}, utc()), (NowTexts::Footer{.text = "updated 5:00 PM"}));
    EXPECT_EQ(NowTexts::footer({.lastError = "database is locked", .generatedAt = monday}, utc()),
              (NowTexts::Footer{.text = "database is locked", .isError = true}));
}

} // namespace
} // namespace HarrowlaneApp
