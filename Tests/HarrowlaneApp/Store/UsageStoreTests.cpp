#include "HarrowlaneApp/Store/UsageStore.h"

#include <cstdlib>

#include <QSignalSpy>

#include "HarrowlaneApp/Store/DemoGauge.h"
#include "HarrowlaneApp/Store/StoreFixture.h"

namespace HarrowlaneApp {
namespace {

using InstallState = UsageStore::InstallState;
using UsageModel::UsageSnapshot;

constexpr const char* gauge =
    R"({"capturedAt":1789999999,"source":"statusLine","windows":{"five_hour":{"usedPercentage":42}}})";

class UsageStoreTest : public StoreFixture {};

TEST_F(UsageStoreTest, ShowsThatItWarmsUpUntilTheFirstRunIsOver) {
    writeLog();
    records->events.emplace_back();
    const auto store = started();
    EXPECT_EQ(store->snapshot(), UsageSnapshot::warmingUp(UsageModel::Date{now}));
    EXPECT_EQ(store->readiness(), Readiness::warmingUp);
    EXPECT_FALSE(store->lastError());
    ASSERT_TRUE(eventually([&] { return store->snapshot().verdict.headline == "computed"; }));
    EXPECT_EQ(store->readiness(), Readiness::ready);
    EXPECT_EQ(records->filesSeen, 1U);
}

TEST_F(UsageStoreTest, GivesTheEngineAllItKnows) {
    records->events.resize(3);
    writeGauge(gauge);
    const auto store = settled();
    const auto question = engine.questions().front();
    EXPECT_EQ(question.events, 3U);
    ASSERT_TRUE(question.gauge);
    EXPECT_EQ(question.gauge->capturedAt, 1789999999);
    EXPECT_EQ(question.now, UsageModel::Date{now});
    EXPECT_EQ(question.ingest, UsageModel::IngestProgress::idle());
    EXPECT_FALSE(question.held);
}

TEST_F(UsageStoreTest, WithoutLogsSaysSoAndGoesOnWithTheTurnsOfBefore) {
    records->events.resize(2);
    const auto store = settled();
    EXPECT_EQ(store->readiness(), Readiness::noLogsFound);
    EXPECT_EQ(engine.questions().front().events, 2U);
}

TEST_F(UsageStoreTest, ReadinessFollowsLogsAndTurnsBothWays) {
    writeLog();
    const auto store = settled();
    EXPECT_EQ(store->readiness(), Readiness::noUsageYet);
    records->events.emplace_back();
    run(*store);
    EXPECT_EQ(store->readiness(), Readiness::ready);
    std::filesystem::remove_all(home / ".claude");
    run(*store);
    EXPECT_EQ(store->readiness(), Readiness::noLogsFound);
}

TEST_F(UsageStoreTest, LeavesTheFirstRunScreensBeforeTheLimitMessagesAreRead) {
    std::binary_semaphore goOn(0);
    records->onAnchors = [&] { goOn.acquire(); };
    const auto store = started();
    EXPECT_TRUE(eventually([&] { return store->readiness() == Readiness::noLogsFound; }));
    EXPECT_EQ(engine.runs(), 0U);
    goOn.release();
    EXPECT_TRUE(eventually([&] { return engine.runs() == 1; }));
}

TEST_F(UsageStoreTest, RunsAgainAndAgain) {
    auto often = surroundings();
    often.periodSeconds = 0.001;
    const UsageStore store(std::move(often));
    EXPECT_TRUE(eventually([&] { return engine.runs() >= 5; }));
    EXPECT_EQ(opened, 1);
}

TEST_F(UsageStoreTest, TenRequestsDuringARunGiveOneMore) {
    std::counting_semaphore<> goOn(0);
    records->onSync = [&] { goOn.acquire(); };
    const auto store = started();
    ASSERT_TRUE(eventually([&] { return records->syncs == 1; }));
    for (int i = 0; i < 10; ++i) store->refresh();
    goOn.release(100);
    ASSERT_TRUE(eventually([&] { return engine.runs() == 2; }));
    letThrough();
    EXPECT_EQ(records->syncs, 2);
    EXPECT_EQ(engine.runs(), 2U);
}

TEST_F(UsageStoreTest, RunsWhenTheGaugeChanges) {
    const auto store = settled();
    letThrough();
    writeGauge(gauge);
    EXPECT_TRUE(eventually([&] { return engine.questions().back().gauge.has_value(); }));
}

TEST_F(UsageStoreTest, ItsOwnFilesDoNotKeepItRunning) {
    std::filesystem::remove(stateFile());
    const auto store = settled();
    const auto quiet = [&] {
        const std::size_t before = engine.runs();
        QTest::qWait(static_cast<int>(UsageGauge::GaugeWatcher::debounceSeconds * 2000));
        return engine.runs() == before;
    };
    EXPECT_TRUE(eventually(quiet)) << "the state of the alerts lies in the watched folder";
}

TEST_F(UsageStoreTest, AGaugeThatGoesBadOrAwayStaysInUse) {
    writeGauge(gauge);
    const auto store = settled();
    writeGauge("{");
    run(*store);
    EXPECT_EQ(engine.questions().back().gauge->capturedAt, 1789999999);
    std::filesystem::remove(UsageModel::AppPaths(home.path()).gaugeFile());
    run(*store);
    EXPECT_EQ(engine.questions().back().gauge->capturedAt, 1789999999);
}

TEST_F(UsageStoreTest, TheDemoGaugeStandsInOnlyUntilThereIsARealOne) {
    auto demo = surroundings();
    demo.gauge = UsageStore::Surroundings::Gauge::orDemo;
    UsageStore store(std::move(demo));
    ASSERT_TRUE(eventually([&] { return engine.runs() == 1; }));
    EXPECT_EQ(engine.questions().back().gauge, demoGauge(UsageModel::Date{now}));
    writeGauge(gauge);
    run(store);
    EXPECT_EQ(engine.questions().back().gauge->capturedAt, 1789999999);
}

TEST_F(UsageStoreTest, WithoutAGaugeThereIsNone) {
    const auto store = settled();
    EXPECT_FALSE(engine.questions().back().gauge);
}

TEST_F(UsageStoreTest, HoldsTheLearntCapOverRunsThatDoNotTellIt) {
    UsageSnapshot learnt = withHeadline("computed");
    learnt.sessionCapInLogUnits = 7.5;
    engine.setNext(learnt);
    const auto store = settled();
    engine.setNext(withHeadline("computed"));
    run(*store);
    EXPECT_EQ(engine.questions().back().held, 7.5);
    EXPECT_FALSE(store->snapshot().sessionCapInLogUnits);
    run(*store);
    EXPECT_EQ(engine.questions().back().held, 7.5);
}

TEST_F(UsageStoreTest, AFailedSyncKeepsTheSnapshotUntilACleanRun) {
    const auto store = settled();
    const UsageSnapshot before = store->snapshot();
    records->onSync = [] { throw std::runtime_error("disk is full"); };
    now = now + 30;
    store->refresh();
    ASSERT_TRUE(eventually([&] { return store->lastError() == "disk is full"; }));
    EXPECT_EQ(store->snapshot(), before);
    EXPECT_EQ(engine.runs(), 1U);

    records->onSync = {};
    run(*store);
    EXPECT_TRUE(eventually([&] { return !store->lastError(); }));
    EXPECT_EQ(store->snapshot().generatedAt, UsageModel::Date{now});
}

TEST_F(UsageStoreTest, AFailureBehindTheTurnsLeavesTheReadinessAsFarAsItCame) {
    records->onAnchors = [] { throw std::runtime_error("gone"); };
    const auto store = started();
    ASSERT_TRUE(eventually([&] { return store->lastError() == "gone"; }));
    EXPECT_EQ(store->readiness(), Readiness::noLogsFound);
    EXPECT_EQ(store->snapshot(), UsageSnapshot::warmingUp(UsageModel::Date{now}));
}

TEST_F(UsageStoreTest, AFailedRunDoesNotEndTheLoop) {
    records->onSync = [] { throw std::runtime_error("busy"); };
    auto often = surroundings();
    often.periodSeconds = 0.001;
    const UsageStore store(std::move(often));
    EXPECT_TRUE(eventually([&] { return records->syncs >= 3; }));
}

TEST_F(UsageStoreTest, ADatabaseThatCannotBeOpenedIsTriedAgainByHandAlone) {
    openError = "no such disk";
    auto often = surroundings();
    often.periodSeconds = 0.001;
    UsageStore store(std::move(often));
    ASSERT_TRUE(eventually([&] { return store.lastError() == "no such disk"; }));
    store.refresh();
    letThrough();
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(store.readiness(), Readiness::warmingUp);

    openError = nullptr;
    store.refreshNow();
    EXPECT_TRUE(eventually([&] { return engine.runs() > 1 && !store.lastError(); }));
    EXPECT_EQ(opened, 2);
}

TEST_F(UsageStoreTest, ARefreshByHandIsSeen) {
    const auto store = settled();
    const QSignalSpy changes(store.get(), &UsageStore::isRefreshingChanged);
    store->refreshNow();
    EXPECT_TRUE(store->isRefreshing());
    EXPECT_TRUE(eventually([&] { return !store->isRefreshing(); }));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(engine.runs(), 2U);
}

TEST_F(UsageStoreTest, ARefreshByHandAloneLooksAtTheInstallStateAgain) {
    const auto store = settled();
    const UsageModel::AppPaths paths(home.path());
    TestSupport::writeFile(home / "shim", "x");
    std::filesystem::create_directories(home / ".claude");
    UsageGauge::StatusLineInstaller(paths.claudeSettings(), paths.support())
        .install(home / "shim", UsageModel::Date{now});
    run(*store);
    EXPECT_EQ(store->installState(), InstallState::notInstalled);
    const QSignalSpy changes(store.get(), &UsageStore::installStateChanged);
    store->refreshNow();
    EXPECT_EQ(store->installState(), InstallState::installed);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(UsageStoreTest, ASecondPressDuringARefreshByHandDoesNothing) {
    const auto store = settled();
    store->refreshNow();
    store->refreshNow();
    EXPECT_TRUE(eventually([&] { return !store->isRefreshing(); }));
    letThrough();
    EXPECT_EQ(engine.runs(), 2U);
}

TEST_F(UsageStoreTest, TellsOnlyWhatChanged) {
    const auto store = settled();
    letThrough();
    const QSignalSpy snapshots(store.get(), &UsageStore::snapshotChanged);
    const QSignalSpy readiness(store.get(), &UsageStore::readinessChanged);
    const QSignalSpy errors(store.get(), &UsageStore::lastErrorChanged);
    run(*store);
    EXPECT_EQ(snapshots.count(), 0) << "the clock stands, so the snapshot is equal";
    now = now + 1;
    run(*store);
    EXPECT_EQ(snapshots.count(), 1);
    EXPECT_EQ(readiness.count(), 0);
    EXPECT_EQ(errors.count(), 0);
}

TEST_F(UsageStoreTest, AlertsOnTheNewSnapshot) {
    bundle = home / "Brindlewick.app";
    UsageSnapshot red = withHeadline("computed");
    red.bindingProjection.willBreachBeforeReset = true;
    red.verdict.severity = UsageModel::Severity::red;
    const auto store = started();
    service.answerPermission({.granted = true});
    service.answerStatus(AuthorizationStatus::authorized);
    engine.setNext(red);
    std::string shown;
    service.onPost = [&] { shown = store->snapshot().verdict.headline; };
    ASSERT_TRUE(eventually([&] { return !service.posted.empty(); }));
    EXPECT_EQ(service.posted.front().title, "computed");
    EXPECT_EQ(shown, "computed") << "after it has been published";
    EXPECT_EQ(AlertStateFile(stateFile()).load().fsm.highestFired, UsageEngine::AlertLevel::critical);
}

TEST_F(UsageStoreTest, TellsTheViewsWhetherBannersAreAllowed) {
    bundle = home / "Brindlewick.app";
    const auto store = started();
    const QSignalSpy changes(store.get(), &UsageStore::notificationAuthorizationChanged);
    store->refreshNotificationAuthorization();
    EXPECT_EQ(store->notificationAuthorization(), AuthorizationStatus::notDetermined);
    service.answerStatus(AuthorizationStatus::denied);
    EXPECT_EQ(store->notificationAuthorization(), AuthorizationStatus::denied);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(UsageStoreTest, ASampleStandsBesideTheSnapshot) {
    const auto store = settled();
    EXPECT_FALSE(store->isShowingSample());
    store->setSampleSnapshot(withHeadline("sample"));
    EXPECT_TRUE(store->isShowingSample());
    EXPECT_EQ(store->snapshot().verdict.headline, "computed");
    store->setSampleSnapshot({});
    EXPECT_FALSE(store->isShowingSample());
}

TEST_F(UsageStoreTest, APreviewShowsWhatItIsGivenAndStartsNothing) {
    UsageStore store(surroundings(), {.snapshot = withHeadline("picture"),
                                      .installState = InstallState::conflict,
                                      .readiness = Readiness::noUsageYet,
                                      .sample = withHeadline("sample")});
    writeGauge(gauge);
    QTest::qWait(static_cast<int>(UsageGauge::GaugeWatcher::debounceSeconds * 2000));
    EXPECT_EQ(store.snapshot().verdict.headline, "picture");
    EXPECT_EQ(store.installState(), InstallState::conflict);
    EXPECT_EQ(store.readiness(), Readiness::noUsageYet);
    EXPECT_TRUE(store.isShowingSample());
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(engine.runs(), 0U);
}

TEST_F(UsageStoreTest, MayGoAwayDuringARun) {
    std::binary_semaphore goOn(0);
    records->onSync = [&] { goOn.acquire(); };
    auto store = started();
    ASSERT_TRUE(eventually([&] { return records->syncs == 1; }));
    store->refreshNow();
    goOn.release();
    store.reset();
    letThrough();
    EXPECT_EQ(engine.runs(), 0U);
}

TEST_F(UsageStoreTest, MayGoAwayBeforeItsFirstRun) {
    started().reset();
    letThrough();
    EXPECT_EQ(engine.runs(), 0U);
}

class ShimTest : public UsageStoreTest {
protected:
    ShimTest() {
        bundle = home / "Brindlewick.app";
        std::filesystem::create_directories(home / ".claude");
    }
    void bringShim() { TestSupport::writeFile(home / "Brindlewick.app/Contents/Helpers/brindlewick-statusline", "x"); }
};

TEST_F(ShimTest, IsInstalledAndRemoved) {
    bringShim();
    const auto store = started();
    EXPECT_EQ(store->installState(), InstallState::notInstalled);
    store->installShim();
    EXPECT_EQ(store->installState(), InstallState::installed);
    store->uninstallShim();
    EXPECT_EQ(store->installState(), InstallState::notInstalled);
    EXPECT_FALSE(store->lastError());
}

TEST_F(ShimTest, ThatIsNotThereIsSaidToBeMissingUntilItIs) {
    const auto store = started();
    store->installShim();
    EXPECT_EQ(store->lastError(), "Shim not found — build the app with Scripts/make-app");
    EXPECT_EQ(store->installState(), InstallState::notInstalled);
    bringShim();
    store->installShim();
    EXPECT_FALSE(store->lastError());
}

TEST_F(ShimTest, OfABareProgramIsMissing) {
    bringShim();
    bundle = {};
    const auto store = started();
    store->installShim();
    EXPECT_EQ(store->lastError(), "Shim not found — build the app with Scripts/make-app");
}

TEST_F(ShimTest, ThatCannotBeInstalledSaysWhyAndLeavesTheState) {
    bringShim();
    const auto store = started();
    std::filesystem::remove(home / ".claude");
    store->installShim();
    ASSERT_TRUE(store->lastError());
    EXPECT_THAT(*store->lastError(), testing::StartsWith("Install failed: cannot "));
    EXPECT_EQ(store->installState(), InstallState::notInstalled);
}

TEST_F(ShimTest, ThatCannotBeRemovedSaysWhyAndLeavesTheState) {
    bringShim();
    TestSupport::writeFile(home / ".claude/settings.json", R"({"model":"opus"})");
    const auto store = started();
    store->installShim();
    ASSERT_EQ(store->installState(), InstallState::installed);
    std::filesystem::remove_all(home / ".claude");
    store->uninstallShim();
    ASSERT_TRUE(store->lastError());
    EXPECT_THAT(*store->lastError(), testing::StartsWith("Uninstall failed: cannot "));
    EXPECT_EQ(store->installState(), InstallState::installed) << "as it was seen last";
}

class DemoVariable : public UsageStoreTest, public testing::WithParamInterface<const char*> {};

TEST_P(DemoVariable, AsksForTheDemoGaugeByOneAlone) {
    setenv(demoGaugeVariable, GetParam(), 1);
    const auto asked = UsageStore::realSurroundings(service).gauge;
    unsetenv(demoGaugeVariable);
    using Gauge = UsageStore::Surroundings::Gauge;
    EXPECT_EQ(asked, std::string_view(GetParam()) == "1" ? Gauge::orDemo : Gauge::real);
}

INSTANTIATE_TEST_SUITE_P(Values, DemoVariable, testing::Values("1", "", "0", "true", "11", " 1", "1 "));

TEST_F(UsageStoreTest, OfTheRealProgramReadsItsHome) {
    writeLog();
    auto real = UsageStore::realSurroundings(service);
    real.paths = UsageModel::AppPaths(home.path());
    real.openRecords = [path = real.paths.database()] { return openRecords(path); };
    const UsageStore store(std::move(real));
    ASSERT_TRUE(eventually([&] { return store.readiness() == Readiness::noUsageYet; }));
    EXPECT_TRUE(eventually([&] { return store.snapshot().verdict.headline != "Warming up…"; }));
    EXPECT_FALSE(store.lastError());
}

} // namespace
} // namespace HarrowlaneApp
