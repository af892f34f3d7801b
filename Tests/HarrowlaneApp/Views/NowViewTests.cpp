#include "HarrowlaneApp/Views/NowView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QElapsedTimer>
#include <QSignalSpy>

#include "HarrowlaneApp/Views/NowScene.h"

namespace {

using namespace HarrowlaneApp;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;
using ViewTests::find;
using ViewTests::NowScene;
using ViewTests::thursday;
using State = UsageGauge::StatusLineInstaller::State;

const UsageSnapshot nothing = UsageSnapshot::warmingUp(thursday);

TEST(NowView, WaitsForTheFirstRefresh) {
    const NowScene scene({.snapshot = nothing, .readiness = Readiness::warmingUp});
    EXPECT_EQ(scene.text("warmingUpText"), "Reading your usage history…");
    EXPECT_FALSE(scene.shows("sessionCard"));
    EXPECT_FALSE(scene.shows("firstRun"));
    EXPECT_FALSE(find<Spinner>(*scene.view, "spinner").isTurning()) << "nobody sees it";
    scene.show();
    EXPECT_TRUE(find<Spinner>(*scene.view, "spinner").isTurning());
    scene.view->hide();
    EXPECT_FALSE(find<Spinner>(*scene.view, "spinner").isTurning());
}

TEST(NowView, TellsWhatIsMissingAtTheFirstRun) {
    const NowScene noLogs({.snapshot = nothing, .readiness = Readiness::noLogsFound});
    EXPECT_EQ(noLogs.text("firstRunTitle"), "Nothing to measure yet");
    EXPECT_THAT(noLogs.text("firstRunText"), testing::StartsWith("Brindlewick reads the logs"));
    EXPECT_FALSE(noLogs.shows("warmingUp"));
    const NowScene noUsage({.snapshot = nothing, .readiness = Readiness::noUsageYet});
    EXPECT_EQ(noUsage.text("firstRunTitle"), "Waiting for your first turn");
    EXPECT_THAT(noUsage.text("firstRunText"), testing::StartsWith("Claude Code is here"));
}

TEST(NowView, ShowsASampleWeekOnRequestUntilItIsLeft) {
    const NowScene scene({.snapshot = nothing, .readiness = Readiness::noLogsFound});
    scene.show();
    scene.click("seeSample");
    EXPECT_EQ(scene.store->sampleSnapshot(), ViewTests::overPace());
    EXPECT_EQ(scene.words("sampleChip"), "SAMPLE");
    EXPECT_FALSE(scene.shows("firstRun"));
    EXPECT_TRUE(scene.shows("sessionCard"));
    scene.click("exitSample");
    EXPECT_FALSE(scene.store->isShowingSample());
    EXPECT_FALSE(scene.shows("sampleChip"));
    EXPECT_TRUE(scene.shows("firstRun"));
}

TEST(NowView, HasNothingBetweenHeaderAndFooterWhereThereIsNothingToShow) {
    const NowScene scene({.snapshot = nothing, .readiness = Readiness::ready});
    for (const char* card : {"sessionCard", "weekCard", "weekWindowCard", "recommendation", "warmingUp", "firstRun"}) {
        EXPECT_FALSE(scene.shows(card)) << card;
    }
    EXPECT_EQ(scene.view->sizeHint().height(), 46 + 10 + 40);
}

TEST(NowView, ShowsACardForEachPartOfTheSnapshot) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    EXPECT_TRUE(scene.shows("sessionCard"));
    EXPECT_TRUE(scene.shows("weekCard"));
    EXPECT_TRUE(scene.shows("recommendation"));
    EXPECT_FALSE(scene.shows("weekWindowCard"));
    EXPECT_FALSE(scene.shows("sampleChip"));
    EXPECT_FALSE(scene.shows("headerChip"));
}

TEST(NowView, StandsAsItWasDesigned) {
    const NowScene scene({.snapshot = nothing, .sample = ViewTests::overPace()});
    scene.show();
    EXPECT_EQ(scene.view->size(), QSize(340, 548));
    const auto box = [&](const char* name) {
        const QWidget& part = scene.part(name);
        return QRect(part.mapTo(scene.view.get(), QPoint()), part.size());
    };
    EXPECT_EQ(box("sessionCard"), QRect(12, 46, 316, 120));
    EXPECT_EQ(box("weekCard"), QRect(12, 174, 316, 194));
    EXPECT_EQ(box("recommendation"), QRect(12, 376, 316, 122));
    EXPECT_EQ(box("quit").right(), 331);
    EXPECT_EQ(box("sampleChip").right(), 327);
    const NowScene first({.snapshot = nothing, .readiness = Readiness::noLogsFound});
    EXPECT_EQ(first.view->sizeHint(), QSize(340, 348));
}

TEST(NowView, TellsTheSessionsPaceAndReset) {
    UsageSnapshot snapshot = ViewTests::overPace();
    snapshot.meters.front().used = 0.84;
    const NowScene scene({.snapshot = snapshot});
    const QWidget& card = scene.part("sessionCard");
    const auto words = [&](const char* name) { return find<QWidget>(card, name).accessibleName().toStdString(); };
    EXPECT_EQ(ViewTests::textOf(card, "title"), "Current session");
    EXPECT_EQ(words("badge"), "Overusing");
    EXPECT_EQ(words("ratio"), "Burn rate 1.4 times, Overusing");
    EXPECT_EQ(words("rails"), "84% of tokens spent against 60% of the window");
    EXPECT_EQ(words("resets"), "resets 4:15 PM");
    EXPECT_EQ(words("timeLeft"), "2h 00m left");
    EXPECT_THAT(find<QWidget>(card, "rails").toolTip().toStdString(), testing::HasSubstr("Burn rate = tokens spent"));
}

TEST(NowView, ShowsTheWeeksWindowWhereThereIsNoCurve) {
    UsageSnapshot snapshot = ViewTests::overPace();
    snapshot.weekSeries.reset();
    const NowScene scene({.snapshot = snapshot});
    const QWidget& card = scene.part("weekWindowCard");
    EXPECT_TRUE(scene.shows("weekWindowCard"));
    EXPECT_EQ(ViewTests::textOf(card, "title"), "This week");
    EXPECT_EQ(find<QWidget>(card, "resets").accessibleName(), QStringLiteral("resets Mon 5 PM"));
    EXPECT_EQ(find<QWidget>(card, "timeLeft").accessibleName(), QStringLiteral("4d 2h left"));
    EXPECT_FALSE(scene.shows("weekCard"));
}

TEST(NowView, OpensTheDashboardFromTheWeeksCard) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    scene.show();
    const QSignalSpy requests(scene.view.get(), &NowView::dashboardRequested);
    scene.click("weekCard");
    EXPECT_EQ(requests.count(), 1);
    EXPECT_EQ(scene.part("weekCard").toolTip(), QStringLiteral("Open the full week view"));
    EXPECT_EQ(scene.words("weekCard"),
              "THIS WEEK. Over pace. Runs out Sun 11:13 PM. 58% used, 41% elapsed. resets Mon 5 PM · 4d 2h");
}

TEST(NowView, GivesNoAdviceWhereThereIsNone) {
    EXPECT_FALSE(NowScene({.snapshot = ViewTests::estimated()}).shows("recommendation"));
}

struct ChipRow {
    const char* story;
    bool anchored = false;
    State installed = State::notInstalled;
    std::string expected;
};

class HeaderChips : public testing::TestWithParam<ChipRow> {};

TEST_P(HeaderChips, TellOnWhatTheNumbersRest) {
    UsageSnapshot snapshot = ViewTests::overPace();
    for (auto& meter : snapshot.meters) meter.confidence.anchored = GetParam().anchored;
    const NowScene scene({.snapshot = snapshot, .installState = GetParam().installed});
    EXPECT_EQ(scene.words("headerChip"), GetParam().expected) << GetParam().story;
}

INSTANTIATE_TEST_SUITE_P(NowView, HeaderChips,
                         testing::Values(ChipRow{"official", true, State::notInstalled, ""},
                                         ChipRow{"helper without a reading", false, State::installed, "Estimated"},
                                         ChipRow{"no helper", false, State::notInstalled, "Connect gauge"},
                                         ChipRow{"another's helper", false, State::conflict, "Connect gauge"}));

TEST(NowView, HasNoChipWithoutABindingMeter) {
    UsageSnapshot snapshot = ViewTests::estimated();
    snapshot.binding = WindowKind::weeklyAll;
    std::erase_if(snapshot.meters, [](const auto& meter) { return meter.kind == WindowKind::weeklyAll; });
    EXPECT_FALSE(NowScene({.snapshot = snapshot}).shows("headerChip"));
}

TEST(NowView, FollowsTheStoreWhileASampleHidesIt) {
    const NowScene scene({.snapshot = ViewTests::calm(), .sample = ViewTests::overPace()});
    scene.show();
    EXPECT_EQ(scene.text("adviceTitle"), "Route the rest to Sonnet");
    scene.store->setSampleSnapshot(std::nullopt);
    EXPECT_EQ(scene.text("adviceTitle"), "Room to raise effort to X-High");
}

TEST(NowView, ReadsNothingWhileItIsHidden) {
    const NowScene scene({.snapshot = ViewTests::calm(), .sample = ViewTests::overPace()});
    scene.store->setSampleSnapshot(std::nullopt);
    EXPECT_EQ(find<HUDLabel>(*scene.view, "adviceTitle").text(), QStringLiteral("Route the rest to Sonnet"));
    scene.show();
    EXPECT_EQ(scene.text("adviceTitle"), "Room to raise effort to X-High");
}

TEST(NowView, TellsWhenItsNumbersAreFrom) {
    EXPECT_EQ(NowScene({.snapshot = ViewTests::overPace()}).text("footerLine"), "updated 2:15 PM");
}

TEST(NowView, TellsAFailureInItsFooter) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    scene.show();
    scene.store->installShim(); // a preview has no helper to install
    EXPECT_THAT(scene.text("footerLine"), testing::StartsWith("Shim not found"));
    EXPECT_EQ(find<HUDLabel>(*scene.view, "footerLine").textStyle().color, &Palette::warn);
    EXPECT_EQ(find<HUDLabel>(*scene.view, "footerLine").toolTip(),
              wrappedToolTip(QString::fromStdString(scene.text("footerLine"))));
}

TEST(NowView, TakesNoMarkupFromAMessage) {
    EXPECT_THAT(wrappedToolTip(QStringLiteral("no <b> & co\nhere")).toStdString(),
                testing::HasSubstr(">no &lt;b&gt; &amp; co\nhere</p>"));
}

TEST(NowView, AsksForWindowsAndForTheEnd) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    scene.show();
    const QSignalSpy dashboard(scene.view.get(), &NowView::dashboardRequested);
    const QSignalSpy settings(scene.view.get(), &NowView::settingsRequested);
    const QSignalSpy quit(scene.view.get(), &NowView::quitRequested);
    scene.click("dashboard");
    EXPECT_EQ(dashboard.count(), 1);
    scene.click("settings");
    EXPECT_EQ(settings.count(), 1);
    scene.click("quit");
    EXPECT_EQ(quit.count(), 1);
    EXPECT_EQ(dashboard.count(), 1);
}

TEST(NowView, ScrollsItsCardsWhereTheScreenIsLow) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    ViewTests::show(*scene.view, {340, 300});
    const auto& scroll = find<QScrollArea>(*scene.view, "cards");
    EXPECT_GT(scroll.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(scene.part("quit").mapTo(scene.view.get(), QPoint()).y(), 300 - 40 + 7);
    ViewTests::show(*scene.view, scene.view->sizeHint());
    EXPECT_EQ(scroll.verticalScrollBar()->maximum(), 0);
}

TEST(NowView, ReadsTheClockAgainWhenItIsShown) {
    const auto store = UsageStore::preview({.snapshot = ViewTests::overPace()});
    const ApplicationLook look(Look{});
    UsageModel::Date now = thursday;
    NowView::Setting setting = NowScene::setting(*store, look);
    setting.now = [&now] { return now; };
    NowView view(setting);
    now = thursday + 3600.0;
    ViewTests::show(view, view.sizeHint());
    const auto& card = find<QWidget>(view, "sessionCard");
    EXPECT_EQ(find<QWidget>(card, "timeLeft").accessibleName(), QStringLiteral("1h 00m left"));
}

TEST(CopyButton, PutsTheCommandOnTheClipboardAndSaysSoForTwoSeconds) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    scene.show();
    const auto& button = find<CopyButton>(*scene.view, "copyCommand");
    const QRect before = button.geometry();
    EXPECT_EQ(scene.words("copyCommand"), "Copy /model sonnet");
    QElapsedTimer timer;
    timer.start();
    scene.click("copyCommand");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("/model sonnet"));
    EXPECT_TRUE(button.isCopied());
    EXPECT_EQ(scene.words("copyCommand"), "Copied");
    EXPECT_EQ(button.geometry(), before) << "nothing moves";
    ASSERT_TRUE(QTest::qWaitFor([&] { return !button.isCopied(); }, 10000));
    EXPECT_GE(timer.elapsed(), 1900);
    EXPECT_EQ(scene.words("copyCommand"), "Copy /model sonnet");
}

TEST(CopyButton, ForgetsThatItCopiedAnotherCommand) {
    const NowScene scene({.snapshot = ViewTests::overPace(), .sample = ViewTests::calm()});
    scene.show();
    scene.click("copyCommand");
    scene.store->setSampleSnapshot(std::nullopt);
    EXPECT_FALSE(find<CopyButton>(*scene.view, "copyCommand").isCopied());
    EXPECT_EQ(find<CopyButton>(*scene.view, "copyCommand").text(), QStringLiteral("Copy /model sonnet"));
}

TEST(CopyButton, StaysThroughARefreshThatChangesNothingOfIt) {
    const NowScene scene({.snapshot = ViewTests::overPace()});
    scene.show();
    scene.click("copyCommand");
    scene.view->read();
    EXPECT_TRUE(find<CopyButton>(*scene.view, "copyCommand").isCopied());
}

TEST(CopyButton, IsNotThereWithoutACommand) {
    UsageSnapshot snapshot = ViewTests::overPace();
    snapshot.recommendation->command.reset();
    const NowScene scene({.snapshot = snapshot});
    EXPECT_FALSE(scene.shows("copyCommand"));
    EXPECT_EQ(scene.text("adviceImpact"), "back inside the cap");
}

} // namespace
