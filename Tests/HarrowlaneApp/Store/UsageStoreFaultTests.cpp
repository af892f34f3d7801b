// What breaks below a running store: it tells the words, keeps the last snapshot, and is itself again with the next run
// that nothing disturbs.

#include <csignal>

#include <gmock/gmock.h>

#include <QTimer>

#include <sys/resource.h>

#include "HarrowlaneApp/Store/StoreOnARealHome.h"
#include "Support/SmallDisk.h"
#include "UsageIngest/SQLiteDB.h"

namespace HarrowlaneApp {
namespace {

using State = UsageGauge::StatusLineInstaller::State;
using UsageModel::AppPaths;
using UsageModel::UsageSnapshot;
namespace fs = std::filesystem;

/// Nothing is written to any file, as on a full disk.
class FullDisk {
public:
    FullDisk() {
        getrlimit(RLIMIT_FSIZE, &usual_);
        const rlimit none{.rlim_cur = 0, .rlim_max = usual_.rlim_max};
        signal_ = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &none);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &usual_);
        std::signal(SIGXFSZ, signal_);
    }

private:
    rlimit usual_{};
    void (*signal_)(int) = SIG_DFL;
};

class StoreFaults : public StoreOnARealHome {
protected:
    void SetUp() override {
        addTurn();
        openAndRun();
        ASSERT_EQ(turnsInSnapshot(), 1U);
        before_ = store_->snapshot();
    }

    void expectFailure(const char* words) {
        ASSERT_TRUE(store_->lastError());
        EXPECT_THAT(*store_->lastError(), testing::HasSubstr(words));
        EXPECT_EQ(store_->snapshot(), before_);
    }
    void expectRecovery(std::size_t turns) {
        runAfter(30.0);
        EXPECT_TRUE(becomes([&] { return isUpToDate() && !store_->lastError(); }));
        runOnceMore();
        EXPECT_EQ(turnsInSnapshot(), turns);
    }
    /// What another start of the program shows.
    UsageSnapshot snapshotOfAnotherStart() {
        store_.reset();
        published_ = 0;
        openAndRun();
        return store_->snapshot();
    }

    UsageSnapshot before_ = UsageSnapshot::warmingUp(start);
};

TEST_F(StoreFaults, ADatabaseThatAnotherProgramLocksFreezesNothing) {
    QTimer mainThread;
    int ticks = 0;
    QObject::connect(&mainThread, &QTimer::timeout, [&] { ++ticks; });
    mainThread.start(10);
    addTurn();
    {
        UsageIngest::SQLiteDB other(paths_.database().native());
        other.exec("BEGIN IMMEDIATE;");
        clock_->turn(30.0);
        // It waits for the lock for five seconds.
        ASSERT_TRUE(becomes([&] { return store_->lastError().has_value(); }));
    }
    EXPECT_GT(ticks, 50);
    expectFailure("database is locked");
    expectRecovery(2);
}

TEST_F(StoreFaults, AFullDiskCostsNothingOnceThereIsRoom) {
    for (std::size_t attempt = 0; attempt < 3; ++attempt) {
        addTurn();
        const FullDisk full;
        runAfter(30.0);
        expectFailure("disk I/O error");
    }
    expectRecovery(4);
    addTurn();
    expectRecovery(5);
    EXPECT_EQ(snapshotOfAnotherStart().live.turns, 5);
}

/// The whole home lies on a disk that runs full.
class StoreOnASmallDisk : public StoreFaults {
protected:
    void SetUp() override {
        if (!disk_.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
        StoreFaults::SetUp();
    }
    [[nodiscard]] std::string alertState() const { return UsageModel::readWholeFile(paths_.notificationState()); }

    TestSupport::SmallDisk disk_{home_.path()};
};

TEST_F(StoreOnASmallDisk, ThatIsFullCostsNothingOnceThereIsRoom) {
    for (int attempt = 0; attempt < 3; ++attempt) {
        addTurn();
        disk_.fill();
        runAfter(30.0);
        expectFailure("database or disk is full");
        disk_.makeRoom();
    }
    expectRecovery(4);
    EXPECT_EQ(snapshotOfAnotherStart().live.turns, 4);
}

TEST_F(StoreOnASmallDisk, ThatIsFullHoldsNoBannerBackAndKeepsTheFormerAlertState) {
    writeGauge(91.0, start + 3600.0);
    runAfter(30.0);
    const std::size_t first = service_.posted.size();
    const std::string former = alertState();
    ASSERT_GE(first, 1U);

    writeGauge(96.0, start + 3600.0);
    disk_.fill();
    runAfter(30.0);
    const std::size_t second = service_.posted.size();
    EXPECT_GT(second, first);
    EXPECT_EQ(store_->lastError(), std::nullopt);
    EXPECT_EQ(alertState(), former);
    EXPECT_THAT(TestSupport::temporaryFilesBelow(paths_.support()), testing::IsEmpty());

    disk_.makeRoom();
    // It tries again, but not at once.
    for (int run = 0; run < 30 && alertState() == former; ++run) runAfter(30.0);
    EXPECT_NE(alertState(), former);
    (void)snapshotOfAnotherStart();
    EXPECT_EQ(service_.posted.size(), second) << "nothing comes twice";
}

TEST_F(StoreFaults, ADatabaseThatIsDeletedIsNotMissedAndMadeAnewAtTheNextStart) {
    for (const char* ending : {"", "-wal", "-shm"}) fs::remove(fs::path(paths_.database()) += ending);
    addTurn();
    expectRecovery(2);
    const UsageSnapshot last = store_->snapshot();
    EXPECT_EQ(snapshotOfAnotherStart(), last) << "from the logs";
    EXPECT_TRUE(fs::exists(paths_.database()));
}

TEST_F(StoreFaults, AWholeFolderThatIsDeletedIsMadeAnew) {
    writeGauge(42.0, start + 3600.0);
    runAfter(30.0);
    ASSERT_EQ(store_->snapshot().meters.size(), 2U);
    fs::remove_all(paths_.support());
    addTurn();
    expectRecovery(2);
    EXPECT_NEAR(store_->snapshot().meters.at(0).used, 0.42, 0.01) << "the last good reading";

    writeGauge(50.0, start + 3600.0);
    runAfter(30.0);
    EXPECT_NEAR(store_->snapshot().meters.at(0).used, 0.5, 1e-9) << "by the loop, for the watched folder is gone";
    EXPECT_TRUE(fs::exists(paths_.notificationState()));
}

TEST_F(StoreFaults, ADatabaseThatTurnsToRubbishUnderARunningStoreEndsNothing) {
    TestSupport::writeFile(paths_.database(), std::string(64 * 1024, 'x'));
    fs::resize_file(fs::path(paths_.database()) += "-wal", 0);
    for (int run = 0; run < 3; ++run) {
        addTurn();
        runAfter(30.0);
        // What it still has in memory may do.
        if (store_->lastError()) {
            EXPECT_EQ(store_->snapshot(), before_);
        }
        before_ = store_->snapshot();
    }

    store_.reset();
    open();
    ASSERT_TRUE(becomes([&] { return store_->lastError().has_value(); }));
    EXPECT_THAT(*store_->lastError(), testing::HasSubstr("file is not a database"));
    EXPECT_EQ(clock_->sleepers(), 0U);

    for (const char* ending : {"", "-wal", "-shm"}) fs::remove(fs::path(paths_.database()) += ending);
    const int runs = published_;
    store_->refreshNow();
    ASSERT_TRUE(becomes([&] { return published_ > runs; }));
    EXPECT_EQ(store_->lastError(), std::nullopt);
    EXPECT_EQ(turnsInSnapshot(), 4U) << "the button starts anew, from the logs";
}

TEST_F(StoreFaults, LogsThatGoAndComeBackCountOnce) {
    const fs::path aside = home_ / "aside";
    fs::rename(paths_.sessionLogs(), aside);
    expectRecovery(1);
    EXPECT_EQ(store_->readiness(), Readiness::noLogsFound);

    fs::rename(aside, paths_.sessionLogs());
    expectRecovery(1);
    EXPECT_EQ(store_->readiness(), Readiness::ready);

    // As a backup brings them: other files of the same content.
    fs::copy(paths_.sessionLogs(), aside, fs::copy_options::recursive);
    fs::remove_all(paths_.sessionLogs());
    expectRecovery(1);
    fs::rename(aside, paths_.sessionLogs());
    addTurn();
    expectRecovery(2);
}

TEST_F(StoreFaults, ATornGaugeIsNoneUntilTheNext) {
    writeGauge(42.0, start + 3600.0);
    runAfter(30.0);
    const std::string whole = UsageModel::readWholeFile(paths_.gaugeFile());
    for (const std::size_t length : {std::size_t{0}, whole.size() / 2, whole.size() - 1}) {
        TestSupport::writeFile(paths_.gaugeFile(), whole.substr(0, length));
        runAfter(30.0);
        ASSERT_EQ(store_->snapshot().meters.size(), 2U) << length;
        EXPECT_NEAR(store_->snapshot().meters[0].used, 0.42, 1e-9) << length;
        EXPECT_EQ(store_->lastError(), std::nullopt);
    }
    writeGauge(50.0, start + 3600.0);
    runAfter(30.0);
    EXPECT_NEAR(store_->snapshot().meters.at(0).used, 0.5, 1e-9);
}

TEST_F(StoreFaults, AnAlertStateThatIsTornCostsAtMostABannerThatComesTwice) {
    writeGauge(96.0, start + 3600.0);
    runAfter(30.0);
    const std::size_t once = service_.posted.size();
    ASSERT_GE(once, 1U);
    const std::string whole = UsageModel::readWholeFile(paths_.notificationState());
    (void)snapshotOfAnotherStart();
    EXPECT_EQ(service_.posted.size(), once) << "the state was whole";

    store_.reset();
    TestSupport::writeFile(paths_.notificationState(), whole.substr(0, whole.size() / 2));
    (void)snapshotOfAnotherStart();
    EXPECT_LE(service_.posted.size(), 2 * once);
    EXPECT_EQ(UsageModel::readWholeFile(paths_.notificationState()).size(), whole.size()) << "and it is whole again";
    EXPECT_EQ(store_->lastError(), std::nullopt);
}

TEST_F(StoreFaults, ClaudesSettingsThatCannotBeWrittenStayAsTheyAre) {
    const std::string mine = R"({"model": "opus"})";
    TestSupport::writeFile(paths_.claudeSettings(), mine);
    TestSupport::writeFile(home_.path() / "Test.app/Contents/Helpers" / AppPaths::shimName, "#!/bin/sh\n");
    {
        const FullDisk full;
        store_->installShim();
    }
    expectFailure("Install failed: ");
    EXPECT_EQ(store_->installState(), State::notInstalled);
    EXPECT_EQ(UsageModel::readWholeFile(paths_.claudeSettings()), mine);
    store_->installShim();
    EXPECT_EQ(store_->lastError(), std::nullopt);
    EXPECT_EQ(store_->installState(), State::installed);

    const std::string installed = UsageModel::readWholeFile(paths_.claudeSettings());
    {
        const FullDisk full;
        store_->uninstallShim();
    }
    expectFailure("Uninstall failed: ");
    EXPECT_EQ(store_->installState(), State::installed);
    EXPECT_EQ(UsageModel::readWholeFile(paths_.claudeSettings()), installed);
    expectRecovery(1);
    store_->uninstallShim();
    EXPECT_EQ(store_->installState(), State::notInstalled);
}

} // namespace
} // namespace HarrowlaneApp
