// The power goes at random moments of an import, of later syncs and of the checkpoints in between.

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "UsageIngest/GrowingLogs.h"
#include "UsageIngest/RecordedDisk.h"
#include "UsageIngest/SyncingChild.h"
#include "UsageModel/Files.h"

namespace {

using TestSupport::TemporaryFolder;
using UsageIngest::IngestStore;
using UsageIngest::SQLiteDB;
namespace fs = std::filesystem;

std::string integrityOf(const fs::path& database) {
    SQLiteDB db(database.native());
    auto row = db.prepare("PRAGMA integrity_check;");
    return row.step() ? std::string(row.text(0)) : "nothing said";
}

/// How many rows of each log the cursors promise: a row for each line in front of them.
std::map<std::string, long> rowsThatCursorsPromise(const fs::path& database) {
    SQLiteDB db(database.native());
    auto row = db.prepare("SELECT path, byte_offset FROM file_cursor WHERE byte_offset > 0;");
    std::map<std::string, long> promised;
    while (row.step()) {
        const std::string log = UsageModel::readWholeFile(row.text(0));
        promised[std::string(row.text(0))] = std::count(log.begin(), log.begin() + row.integer(1), '\n');
    }
    return promised;
}

std::map<std::string, long> rowsOfEachLog(const fs::path& database) {
    SQLiteDB db(database.native());
    auto row = db.prepare("SELECT file_path, COUNT(*) FROM usage_event GROUP BY file_path;");
    std::map<std::string, long> rows;
    while (row.step()) rows[std::string(row.text(0))] = static_cast<long>(row.integer(1));
    return rows;
}

/// A database that was left by a power cut is whole, and its cursors stand where its rows end; returns the turns in it.
std::size_t expectConsistent(const fs::path& database) {
    IngestStore store(database);
    EXPECT_EQ(integrityOf(database), "ok");
    const TurnLog::Counts counts = TurnLog::countsIn(store);
    for (const auto& [turn, count] : counts) EXPECT_EQ(count, 1) << "turn " << turn;
    EXPECT_EQ(rowsOfEachLog(database), rowsThatCursorsPromise(database));
    return counts.size();
}

void expectCatchesUp(const fs::path& database, const fs::path& logs, long lastTurn) {
    IngestStore store(database);
    TurnLog::syncAll(store, logs);
    EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, lastTurn));
    EXPECT_EQ(integrityOf(database), "ok");
}

/// Half of the moments lie around a sync, where a checkpoint is at work; there are few of these among the writes.
std::size_t randomMoment(const std::vector<RecordedDisk::Step>& steps, std::mt19937& random) {
    if (random() % 2 == 0) return random() % (steps.size() + 1);
    std::vector<std::size_t> syncs;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].kind == RecordedDisk::Step::Kind::sync) syncs.push_back(i);
    }
    constexpr std::size_t before = 40;
    constexpr std::size_t behind = 10;
    const std::size_t moment = syncs[random() % syncs.size()] + random() % (before + behind);
    return std::min(moment - std::min(moment, before), steps.size());
}

// The disk is told apart from what the system still keeps in memory: SQLite's own writes and syncs are recorded, and
// what was not synced is dropped, kept or torn.
TEST(PowerCut, LosesNoTurnWhateverTheDiskHadNotTakenYet) {
    constexpr int lives = 2;
    constexpr int syncsPerLife = 300; // enough for a checkpoint in a life, beside the one that ends it
    constexpr int cuts = 150;
    const TemporaryFolder folder(TestSupport::fastestParent());
    fs::create_directories(folder / "logs");
    TurnLog::GrowingLogs logs(folder / "logs");
    logs.add(600);
    RecordedDisk disk;
    for (int life = 0; life < lives; ++life) {
        IngestStore store(folder / "support/usage.db");
        for (int sync = 0; sync < syncsPerLife; ++sync) {
            logs.add(3);
            TurnLog::syncAll(store, folder / "logs");
        }
    }
    disk.end();
    const std::size_t stepsInAll = disk.steps().size();
    ASSERT_GT(std::ranges::count(disk.steps(), RecordedDisk::Step::Kind::sync, &RecordedDisk::Step::kind), 4 * lives)
        << "checkpoints, each a sync of the log and of the database";

    std::mt19937 random(20260301);
    std::set<std::size_t> found;
    for (int cut = 0; cut < cuts; ++cut) {
        const TemporaryFolder after(TestSupport::fastestParent());
        const std::size_t step = randomMoment(disk.steps(), random);
        disk.layDown(step, random, after.path());
        found.insert(expectConsistent(after / "usage.db"));
        expectCatchesUp(after / "usage.db", folder / "logs", logs.last());
        ASSERT_FALSE(testing::Test::HasFailure()) << "cut " << cut << " after step " << step << " of " << stepsInAll;
    }
    EXPECT_GT(found.size(), static_cast<std::size_t>(lives)) << "the cuts left different states";
}

enum class SharedMemory { copied, leftOut };

void copyDatabase(const fs::path& from, const fs::path& to, SharedMemory sharedMemory) {
    for (const auto& entry : fs::directory_iterator(from)) {
        if (sharedMemory == SharedMemory::leftOut && entry.path().native().ends_with("-shm")) continue;
        fs::copy_file(entry.path(), to / entry.path().filename().native());
    }
}

// A copy of files that are being written is torn in ways that no power cut tears them: it may hold the end of a
// checkpoint and the log from before it. So the writer, which is the only one, is stopped for as long as the copying
// takes: all files are of one moment, as on a disk that had taken everything.
TEST(PowerCut, ACopyOfAnyMomentIsWhole) {
    constexpr int copies = 60;
    constexpr int copiesPerDatabase = 6; // then the next import begins with nothing
    const TemporaryFolder folder(TestSupport::fastestParent());
    fs::create_directories(folder / "logs");
    TurnLog::GrowingLogs logs(folder / "logs");
    logs.add(2000);
    std::mt19937 random(20260302);
    std::optional<TurnLog::SyncingChild> child;
    for (int copy = 0; copy < copies; ++copy) {
        if (copy % copiesPerDatabase == 0) {
            child.reset();
            fs::remove_all(folder / "support");
            fs::create_directories(folder / "support");
            child.emplace(folder / "support/usage.db", folder / "logs");
        }
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 20000);
        logs.add(2);
        std::this_thread::sleep_until(moment);
        ASSERT_TRUE(child->stopped()) << "the child ended by itself";
        const TemporaryFolder after(TestSupport::fastestParent());
        copyDatabase(folder / "support", after.path(), copy % 2 == 0 ? SharedMemory::copied : SharedMemory::leftOut);
        child->goOn();
        expectConsistent(after / "usage.db");
        expectCatchesUp(after / "usage.db", folder / "logs", logs.last());
        EXPECT_FALSE(testing::Test::HasFailure()) << "copy " << copy;
    }
}

} // namespace
