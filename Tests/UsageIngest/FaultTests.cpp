// Whatever call fails, and whenever: afterwards the database is whole, holds each turn once, and a clean sync brings it
// up to date.

#include <cerrno>
#include <fstream>
#include <functional>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"
#include "UsageIngest/FaultPoints.h"
#include "UsageIngest/TurnLog.h"

namespace {

using FaultPoints::Lasting;
using FaultPoints::Layer;
using TestSupport::TemporaryFolder;
using TurnLog::Counts;
using UsageIngest::IngestStore;
namespace fs = std::filesystem;

constexpr long turnsBefore = 20;
constexpr long turnsAfter = 40;

/// What the child process tells of its fate.
struct Fate {
    bool struck = false;
    bool threw = false;
    std::string sql;
};

/// A home in which half of the turns are stored and the other half waits in the logs.
class FaultTest : public testing::Test {
protected:
    FaultTest() {
        for (long i = 1; i <= turnsBefore; ++i) TestSupport::appendFile(logOf(i), TurnLog::line(i));
        {
            IngestStore store(database());
            TurnLog::syncAll(store, logs());
        }
        for (long i = turnsBefore + 1; i <= turnsAfter; ++i) TestSupport::appendFile(logOf(i), TurnLog::line(i));
        TestSupport::writeFile(folder_ / "blank/usage.db", "");
        fs::copy(folder_ / "support", folder_ / "saved", fs::copy_options::recursive);
    }

    [[nodiscard]] fs::path logs() const { return folder_ / "logs"; }
    [[nodiscard]] fs::path database() const { return folder_ / "support/usage.db"; }
    // Turns 1, 5, 9, … share a file, and so on: every file holds old turns and new ones.
    [[nodiscard]] fs::path logOf(long turn) const { return logs() / (std::to_string(turn % 4) + ".jsonl"); }

    void restoreDatabase() const {
        fs::remove_all(folder_ / "support");
        fs::copy(folder_ / "saved", folder_ / "support", fs::copy_options::recursive);
    }

    /// Opens the store and syncs in a process of its own, after `arrange` there.
    Fate syncInChild(const std::function<void()>& arrange) const {
        int channel[2];
        EXPECT_EQ(pipe(channel), 0);
        const pid_t child = fork();
        if (child == 0) {
            arrange();
            bool threw = false;
            try {
                IngestStore store(database());
                TurnLog::syncAll(store, logs());
            } catch (const std::runtime_error&) {
                threw = true;
            }
            const std::string told =
                std::string(FaultPoints::struck() ? "s" : "-") + (threw ? "t" : "-") + FaultPoints::struckSql();
            [[maybe_unused]] const ssize_t sent = write(channel[1], told.data(), told.size());
            _exit(0);
        }
        close(channel[1]);
        std::ifstream reading("/proc/self/fd/" + std::to_string(channel[0]));
        const std::string told{std::istreambuf_iterator<char>(reading), {}};
        close(channel[0]);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0 && told.size() >= 2) << "status " << status;
        return {.struck = told.starts_with('s'),
                .threw = told.size() > 1 && told[1] == 't',
                .sql = told.substr(std::min<std::size_t>(2, told.size()))};
    }

    void expectWhole(IngestStore& store) const {
        UsageIngest::SQLiteDB db(database().native());
        auto check = db.prepare("PRAGMA integrity_check;");
        ASSERT_TRUE(check.step());
        EXPECT_EQ(check.text(0), "ok");
        for (const auto& [turn, count] : TurnLog::countsIn(store)) EXPECT_EQ(count, 1) << "turn " << turn;
        for (long turn = 1; turn <= turnsBefore; ++turn) EXPECT_EQ(TurnLog::countsIn(store).count(turn), 1U) << turn;
    }

    void expectCleanSyncCompletes(IngestStore& store) const {
        TurnLog::syncAll(store, logs());
        EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, turnsAfter));
    }

    TemporaryFolder folder_{TestSupport::fastestParent()};
};

struct SystemFault {
    const char* name;
    Lasting lasting;
    int error;
};

class SystemFaultTest : public FaultTest, public testing::WithParamInterface<SystemFault> {};

TEST_P(SystemFaultTest, EveryCallInTurn) {
    long n = 1;
    for (bool struck = true; struck && !HasFailure(); ++n) {
        SCOPED_TRACE("call " + std::to_string(n));
        restoreDatabase();
        struck = syncInChild([&] {
                     FaultPoints::failAt(Layer::systemCall, n, GetParam().lasting, GetParam().error);
                 }).struck;
        IngestStore store(database());
        expectWhole(store);
        expectCleanSyncCompletes(store);
    }
    EXPECT_GT(n, 40) << "the faults did not reach the calls they are meant for";
}

INSTANTIATE_TEST_SUITE_P(Errors, SystemFaultTest,
                         testing::Values(SystemFault{"ioErrorOnce", Lasting::once, EIO},
                                         SystemFault{"ioErrorForGood", Lasting::forGood, EIO},
                                         SystemFault{"noSpaceOnce", Lasting::once, ENOSPC},
                                         SystemFault{"noSpaceForGood", Lasting::forGood, ENOSPC},
                                         SystemFault{"noMemoryOnce", Lasting::once, ENOMEM}),
                         [](const auto& fault) { return fault.param.name; });

TEST_F(FaultTest, InterruptionsAndShortReadsEverywhereChangeNothing) {
    const Fate fate = syncInChild([] { FaultPoints::interruptEverything(); });
    EXPECT_FALSE(fate.threw);
    IngestStore store(database());
    EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, turnsAfter));
}

// What a failing call of SQLite may cost is settled: the row of a failed insert; and where a cursor cannot be read or
// written, the turns of that one file are met again. Everything else costs nothing.
void expectSettledLoss(const Counts& counts, const std::string& sql) {
    Counts surplus;
    Counts missing;
    for (const auto& [turn, expected] : TurnLog::onceEach(1, turnsAfter)) {
        const int count = counts.contains(turn) ? counts.at(turn) : 0;
        if (count > expected) surplus[turn] = count;
        if (count < expected) missing[turn] = count;
    }
    EXPECT_EQ(counts.size() + missing.size(), static_cast<std::size_t>(turnsAfter));

    EXPECT_EQ(missing.size(), sql.starts_with("INSERT INTO usage_event") ? 1U : 0U) << sql;
    const bool cursorLost = sql.starts_with("SELECT inode") || sql.starts_with("INSERT INTO file_cursor");
    EXPECT_TRUE(cursorLost || surplus.empty()) << sql;
    for (const auto& [turn, count] : surplus) {
        EXPECT_EQ(turn % 4, surplus.begin()->first % 4) << "only one file's turns may be met again; " << sql;
        EXPECT_EQ(count, 2) << sql;
    }
}

TEST_F(FaultTest, EverySQLiteCallInTurnOnce) {
    long n = 1;
    for (bool struck = true; struck && !HasFailure(); ++n) {
        SCOPED_TRACE("call " + std::to_string(n));
        restoreDatabase();
        const Fate fate = syncInChild([&] { FaultPoints::failAt(Layer::sqliteCall, n, Lasting::once, EIO); });
        struck = fate.struck;
        IngestStore store(database());
        TurnLog::syncAll(store, logs());
        if (fate.threw) {
            EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, turnsAfter)) << fate.sql;
        } else {
            expectSettledLoss(TurnLog::countsIn(store), fate.sql);
        }
    }
    EXPECT_GT(n, 200) << "the faults did not reach the calls they are meant for";
}

TEST_F(FaultTest, EverySQLiteCallInTurnForGood) {
    long n = 1;
    for (bool struck = true; struck && !HasFailure(); ++n) {
        SCOPED_TRACE("call " + std::to_string(n));
        restoreDatabase();
        const Fate fate = syncInChild([&] { FaultPoints::failAt(Layer::sqliteCall, n, Lasting::forGood, EIO); });
        struck = fate.struck;
        EXPECT_EQ(fate.threw, struck) << fate.sql;
        IngestStore store(database());
        expectWhole(store);
        expectCleanSyncCompletes(store);
    }
}

TEST(SmallDiskTest, FullDiskFailsClearlyAndCostsNothing) {
    const TemporaryFolder folder;
    const TestSupport::SmallDisk disk(folder / "support");
    if (!disk.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
    TestSupport::writeFile(folder / "logs/a.jsonl", TurnLog::line(1));
    IngestStore store(folder / "support/usage.db");
    TurnLog::syncAll(store, folder / "logs");

    std::string many;
    for (long i = 2; i <= 5000; ++i) many += TurnLog::line(i);
    TestSupport::appendFile(folder / "logs/a.jsonl", many);
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_THROW(TurnLog::syncAll(store, folder / "logs"), UsageIngest::SQLiteError);
        EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, 1));
    }
    disk.grow();
    TurnLog::syncAll(store, folder / "logs");
    EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, 5000));
}

TEST(SmallDiskTest, ReadOnlyFolderFailsClearlyAndCostsNothing) {
    const TemporaryFolder folder;
    const TestSupport::SmallDisk disk(folder / "support");
    if (!disk.isMounted()) GTEST_SKIP() << "no right to mount a small disk here";
    TestSupport::writeFile(folder / "logs/a.jsonl", TurnLog::line(1));
    const auto syncOnce = [&] {
        IngestStore store(folder / "support/usage.db");
        TurnLog::syncAll(store, folder / "logs");
        return TurnLog::countsIn(store);
    };
    syncOnce();
    TestSupport::appendFile(folder / "logs/a.jsonl", TurnLog::line(2));

    disk.makeReadOnly();
    EXPECT_THROW(syncOnce(), std::runtime_error);
    disk.makeWritable();
    EXPECT_EQ(syncOnce(), TurnLog::onceEach(1, 2));
}

} // namespace
