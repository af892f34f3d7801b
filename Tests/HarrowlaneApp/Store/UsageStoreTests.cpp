#include "HarrowlaneApp/Store/UsageStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "HarrowlaneApp/Store/StoreOnFakes.h"

namespace HarrowlaneApp {
namespace {

using State = UsageGauge::StatusLineInstaller::State;
using UsageModel::AppPaths;
using UsageModel::Date;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;

using StoreTest = StoreOnFakes;

TEST_F(StoreTest, WarmsUpUntilTheFirstRun) {
    UsageStore& store = open();
    EXPECT_EQ(store.snapshot(), UsageSnapshot::warmingUp(start));
    EXPECT_EQ(store.readiness(), Readiness::warmingUp);
    EXPECT_EQ(store.installState(), State::notInstalled);
    EXPECT_FALSE(store.isShowingSample());
    ASSERT_TRUE(runs(1));
    EXPECT_EQ(store.readiness(), Readiness::ready);
    EXPECT_EQ(store.snapshot().generatedAt, start);
    EXPECT_EQ(store.snapshot().meters.size(), 3U);
    EXPECT_TRUE(store.snapshot().ingest.complete);
}

TEST_F(StoreTest, ARunTakesItsStepsInOrder) {
    open();
    ASSERT_TRUE(runs(1));
    EXPECT_THAT(shelf_->calls, testing::ElementsAre("discover", "sync", "allEvents", "anchors"));
}

TEST_F(StoreTest, RunsAgainThirtySecondsAfterARunHasEnded) {
    open();
    ASSERT_TRUE(runs(1));
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 1; }));
    clock_->turn(29.75);
    EXPECT_EQ(clock_->sleepers(), 1U);
    clock_->turn(0.25);
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(store_->snapshot().generatedAt, start + 30.0);
}

TEST_F(StoreTest, AClockThatIsSetBackOrFarAheadBringsNoBurstOfRuns) {
    open();
    ASSERT_TRUE(runs(1));
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 1; }));
    clock_->set(start - 86400.0);
    clock_->turn(30.0);
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(store_->snapshot().generatedAt, start - 86400.0 + 30.0);
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 1; }));
    clock_->turn(3.0 * 86400.0);
    ASSERT_TRUE(runs(3));
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 1; }));
    EXPECT_EQ(shelf_->count("discover"), 3U) << "three days of sleep are one run late, not thousands";
}

TEST_F(StoreTest, AnyNumberOfRequestsDuringARunFoldIntoOne) {
    shelf_->isBlocked = true;
    UsageStore& store = open();
    ASSERT_TRUE(becomes([&] { return shelf_->count("sync") == 1; }));
    for (int i = 0; i < 10; ++i) store.refresh();
    shelf_->isBlocked = false;
    ASSERT_TRUE(runs(2));
    // A third run would have begun before this one.
    store.refresh();
    ASSERT_TRUE(runs(3));
    EXPECT_EQ(shelf_->count("discover"), 3U);
}

TEST_F(StoreTest, TellsHowFarTheFirstStartHasCome) {
    shelf_->files.clear();
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    EXPECT_EQ(store.readiness(), Readiness::noLogsFound) << "though the database knows turns from before";
    EXPECT_FALSE(store.snapshot().calendar.empty()) << "and they count";

    const auto runWith = [&](UsageIngest::LogFiles files, std::vector<UsageModel::UsageEvent> events) {
        {
            const std::lock_guard lock(shelf_->mutex);
            shelf_->files = std::move(files);
            shelf_->events = std::move(events);
        }
        const int next = published_ + 1;
        store.refresh(); // may be done at once, where the other thread is fast
        EXPECT_TRUE(runs(next));
        return store.readiness();
    };
    EXPECT_EQ(runWith({"a.jsonl"}, {}), Readiness::noUsageYet);
    EXPECT_EQ(runWith({"a.jsonl"}, {{.ts = start, .input = 1}}), Readiness::ready);
    EXPECT_EQ(runWith({}, {}), Readiness::noLogsFound) << "it can go back";
}

struct Failure {
    const char* name;
    std::string FakeRecords::Shelf::*words;
    Readiness readiness;
};

class StoreFailureTest : public StoreTest, public testing::WithParamInterface<Failure> {};

TEST_P(StoreFailureTest, KeepsTheSnapshotAndTellsTheWordsUntilACleanRun) {
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    const UsageSnapshot before = store.snapshot();
    {
        const std::lock_guard lock(shelf_->mutex);
        shelf_->events.clear();
        (*shelf_).*GetParam().words = "the disk is full";
    }
    clock_->turn(30.0);
    ASSERT_TRUE(becomes([&] { return store.lastError().has_value(); }));
    EXPECT_EQ(store.lastError(), "the disk is full");
    EXPECT_EQ(store.snapshot(), before);
    EXPECT_EQ(store.readiness(), GetParam().readiness);

    {
        const std::lock_guard lock(shelf_->mutex);
        ((*shelf_).*GetParam().words).clear();
    }
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 1; })) << "the loop goes on";
    clock_->turn(30.0);
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(store.lastError(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Steps, StoreFailureTest,
                         testing::Values(Failure{"Sync", &FakeRecords::Shelf::syncFailure, Readiness::ready},
                                         Failure{"Events", &FakeRecords::Shelf::eventsFailure, Readiness::ready},
                                         Failure{"Anchors", &FakeRecords::Shelf::anchorsFailure,
                                                 Readiness::noUsageYet}),
                         [](const auto& row) { return row.param.name; });

TEST_F(StoreTest, ADatabaseThatCannotBeOpenedEndsTheLoopUntilTheButton) {
    openFailure_ = "unable to open database file";
    UsageStore& store = open();
    ASSERT_TRUE(becomes([&] { return store.lastError().has_value(); }));
    EXPECT_EQ(store.lastError(), "unable to open database file");
    EXPECT_EQ(store.readiness(), Readiness::warmingUp);
    EXPECT_EQ(clock_->sleepers(), 0U) << "no timer runs";

    openFailure_.clear();
    store.refreshNow();
    ASSERT_TRUE(runs(1));
    EXPECT_EQ(store.lastError(), std::nullopt);
    EXPECT_EQ(openings_, 2);
}

TEST_F(StoreTest, TheButtonDoesNotOpenAgainWhatIsBeingOpened) {
    UsageStore& store = open();
    store.refreshNow();
    ASSERT_TRUE(runs(1));
    EXPECT_EQ(openings_, 1);
    EXPECT_TRUE(store.isRefreshing());
    clock_->turn(UsageStore::visibleSeconds);
    EXPECT_FALSE(store.isRefreshing());
}

TEST_F(StoreTest, TheButtonTurnsForAMomentAndCountsOnce) {
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 1; }));
    store.refreshNow();
    EXPECT_TRUE(store.isRefreshing());
    store.refreshNow();
    ASSERT_TRUE(runs(2));
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 2; }));
    EXPECT_TRUE(store.isRefreshing()) << "so that a fast run is seen";
    clock_->turn(0.35);
    ASSERT_TRUE(becomes([&] { return !store.isRefreshing(); }));
    EXPECT_EQ(shelf_->count("discover"), 2U);
}

TEST_F(StoreTest, TheButtonLooksAtTheInstallationAgain) {
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    std::filesystem::create_directory(home_ / ".claude");
    TestSupport::writeFile(home_ / "shim", "#!/bin/sh\n");
    UsageGauge::StatusLineInstaller(paths_.claudeSettings(), paths_.support()).install(home_ / "shim", start);
    clock_->turn(30.0);
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(store.installState(), State::notInstalled) << "a run does not look";
    store.refreshNow();
    EXPECT_EQ(store.installState(), State::installed);
}

TEST_F(StoreTest, AGaugeThatGoesBadLeavesTheLastGoodOneInForce) {
    writeGauge(42.0);
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    ASSERT_EQ(store.snapshot().meters.size(), 1U);
    EXPECT_NEAR(store.snapshot().meters[0].used, 0.42, 1e-9);

    TestSupport::writeFile(paths_.gaugeFile(), "{\"capturedAt\":");
    ASSERT_TRUE(becomes([&] { return published_ >= 2; })) << "a change of the gauge starts a run";
    ASSERT_EQ(store.snapshot().meters.size(), 1U);
    EXPECT_NEAR(store.snapshot().meters[0].used, 0.42, 1e-9);

    const int before = published_;
    writeGauge(50.0);
    ASSERT_TRUE(becomes([&] { return published_ > before; }));
    EXPECT_NEAR(store.snapshot().meters[0].used, 0.5, 1e-9);
}

TEST_F(StoreTest, TheDemoGaugeStandsInOnlyWhereThereIsNoReading) {
    UsageStore::World demo = world();
    demo.demoGauge = true;
    store_ = std::make_unique<UsageStore>(std::move(demo));
    connect();
    ASSERT_TRUE(runs(1));
    ASSERT_EQ(store_->snapshot().meters.size(), 3U);
    EXPECT_NEAR(store_->snapshot().meters[1].used, 0.58, 1e-9);
    EXPECT_EQ(store_->snapshot().meters[1].resetsAt, start + 259200.0);

    writeGauge(42.0);
    ASSERT_TRUE(becomes([&] { return store_->snapshot().meters.size() == 1; }));
    EXPECT_NEAR(store_->snapshot().meters[0].used, 0.42, 1e-9);
}

TEST_F(StoreTest, ALearntCapOutlivesItsEvidence) {
    {
        const std::lock_guard lock(shelf_->mutex);
        shelf_->events = {{.ts = start - 3600.0, .modelClass = UsageModel::ModelClass::opus, .input = 1'000'000}};
        shelf_->anchors = {{.ts = start - 1800.0,
                            .source = UsageModel::AnchorSource::syntheticLog,
                            .kind = UsageModel::AnchorKind::ceiling}};
    }
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    const auto learnt = store.snapshot().sessionCapInLogUnits;
    ASSERT_TRUE(learnt);
    {
        const std::lock_guard lock(shelf_->mutex);
        shelf_->anchors.clear();
    }
    for (int run = 2; run <= 3; ++run) {
        store.refresh();
        ASSERT_TRUE(runs(run));
        EXPECT_EQ(store.snapshot().sessionCapInLogUnits, learnt);
    }
}

TEST_F(StoreTest, EqualFieldsTellNobody) {
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    QSignalSpy snapshots(&store, &UsageStore::snapshotChanged);
    QSignalSpy readiness(&store, &UsageStore::readinessChanged);
    QSignalSpy errors(&store, &UsageStore::lastErrorChanged);
    store.refresh();
    ASSERT_TRUE(runs(2));
    EXPECT_EQ(snapshots.count(), 0) << "the clock stood still";
    clock_->set(start + 1.0);
    store.refresh();
    ASSERT_TRUE(runs(3));
    EXPECT_EQ(snapshots.count(), 1);
    EXPECT_EQ(readiness.count(), 0);
    EXPECT_EQ(errors.count(), 0);
}

TEST_F(StoreTest, InstallsTheShimOfTheBundleAndTakesItAway) {
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    store.installShim();
    EXPECT_EQ(store.lastError(), "Shim not found — build the app with Scripts/make-app");
    EXPECT_EQ(store.installState(), State::notInstalled);

    std::filesystem::create_directory(home_ / ".claude");
    TestSupport::writeFile(home_.path() / "Test.app/Contents/Helpers" / AppPaths::shimName, "#!/bin/sh\n");
    store.installShim();
    EXPECT_EQ(store.lastError(), std::nullopt);
    EXPECT_EQ(store.installState(), State::installed);
    store.uninstallShim();
    EXPECT_EQ(store.installState(), State::notInstalled);
}

TEST_F(StoreTest, AFailedInstallationTellsWhy) {
    TestSupport::writeFile(home_.path() / "Test.app/Contents/Helpers" / AppPaths::shimName, "#!/bin/sh\n");
    TestSupport::writeFile(home_ / ".claude", "a file where a folder should be");
    UsageStore& store = open();
    ASSERT_TRUE(runs(1));
    store.installShim();
    ASSERT_TRUE(store.lastError());
    EXPECT_THAT(*store.lastError(), testing::StartsWith("Install failed: "));
    EXPECT_EQ(store.installState(), State::notInstalled);
}

TEST_F(StoreTest, LeavesTheFirstRunScreensBeforeTheLimitMessagesAreRead) {
    shelf_->anchorsFailure = "not yet";
    UsageStore& store = open();
    ASSERT_TRUE(becomes([&] { return store.lastError().has_value(); }));
    EXPECT_EQ(store.readiness(), Readiness::ready);
    EXPECT_EQ(store.snapshot(), UsageSnapshot::warmingUp(start));
}

TEST_F(StoreTest, MayGoAtAnyMomentOfARun) {
    for (const char* moment : {"discover", "sync", "allEvents", "anchors"}) {
        shelf_->calls.clear();
        open();
        ASSERT_TRUE(becomes([&] { return shelf_->count(moment) > 0; }));
        store_.reset();
        QCoreApplication::processEvents();
    }
    SUCCEED() << "nothing was touched after its life";
}

TEST_F(StoreTest, LeavesNoSleeperBehind) {
    open();
    ASSERT_TRUE(runs(1));
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 1; }));
    store_->refreshNow();
    ASSERT_TRUE(becomes([&] { return clock_->sleepers() == 2; }));
    const std::weak_ptr<HandTurnedClock> clock = clock_;
    clock_.reset();
    store_.reset();
    EXPECT_TRUE(clock.expired()) << "a coroutine that still sleeps holds it";
}

// Fails where leaks are looked for, if at all: nobody runs the event loop any more.
TEST_F(StoreTest, LeavesNothingBehindWhereTheEventLoopHasEnded) {
    for (const bool duringARun : {false, true}) {
        UsageStore::World system = world();
        system.clock = std::make_shared<SystemClock>();
        store_ = std::make_unique<UsageStore>(std::move(system));
        connect();
        published_ = 0;
        if (!duringARun) {
            ASSERT_TRUE(runs(1));
        }
        store_.reset();
    }
}

TEST(UsageStorePreview, ShowsWhatItIsGivenAndStartsNothing) {
    constexpr Date start{1772323200};
    const auto store = UsageStore::preview({.snapshot = UsageSnapshot::warmingUp(start),
                                            .installState = State::conflict,
                                            .readiness = Readiness::noUsageYet,
                                            .sample = UsageSnapshot::warmingUp(start + 1.0)});
    QCoreApplication::processEvents();
    EXPECT_EQ(store->snapshot().generatedAt, start);
    EXPECT_EQ(store->installState(), State::conflict);
    EXPECT_EQ(store->readiness(), Readiness::noUsageYet);
    EXPECT_TRUE(store->isShowingSample());
    EXPECT_EQ(store->lastError(), std::nullopt);
}

} // namespace
} // namespace HarrowlaneApp
