// The power goes at random moments of an import, of later syncs and of the checkpoints in between.

#include <algorithm>
#include <chrono>
#include <optional>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "UsageIngest/DatabaseChecks.h"
#include "UsageIngest/GrowingLogs.h"
#include "UsageIngest/RecordedDisk.h"
#include "UsageIngest/SyncingChild.h"

namespace {

using TestSupport::TemporaryFolder;
using UsageIngest::IngestStore;
namespace fs = std::filesystem;

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
    std::set<long> found;
    for (int cut = 0; cut < cuts; ++cut) {
        const TemporaryFolder after(TestSupport::fastestParent());
        const std::size_t step = randomMoment(disk.steps(), random);
        disk.layDown(step, random, after.path());
        found.insert(TurnLog::expectConsistent(after / "usage.db"));
        TurnLog::expectCatchesUp(after / "usage.db", folder / "logs", logs.last());
        ASSERT_FALSE(testing::Test::HasFailure()) << "cut " << cut << " after step " << step << " of " << stepsInAll;
    }
    EXPECT_GT(found.size(), 10U) << "the cuts left different states";
}

std::uintmax_t sizeOf(const fs::path& file) {
    return fs::exists(file) ? fs::file_size(file) : 0;
}

// A copy of files that are being written is torn in ways that no power cut tears them: it may hold the end of a
// checkpoint and the log from before it. So the writer, which is the only one, is stopped for as long as the copying
// takes: all files are of one moment, as on a disk that had taken everything.
TEST(PowerCut, ACopyOfAnyMomentIsWhole) {
    constexpr int copies = 60;
    constexpr int mostCopies = 10 * copies; // where no copy was of a moment that matters
    constexpr int copiesPerDatabase = 6;    // then the next import begins with nothing
    const TemporaryFolder folder(TestSupport::fastestParent());
    fs::create_directories(folder / "logs");
    TurnLog::GrowingLogs logs(folder / "logs");
    logs.add(2000);
    std::mt19937 random(20260302);
    std::optional<TurnLog::SyncingChild> child;
    int withLog = 0;
    int inBetween = 0;
    const auto haveAllKinds = [&] { return withLog > 0 && inBetween > 0; };
    for (int copy = 0; copy < copies || (!haveAllKinds() && copy < mostCopies); ++copy) {
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
        TurnLog::copyDatabase(folder / "support", after.path(),
                              copy % 2 == 0 ? TurnLog::SharedMemory::copied : TurnLog::SharedMemory::leftOut);
        child->goOn();
        if (sizeOf(after / "usage.db-wal") > 0) ++withLog;
        const long turns = TurnLog::expectConsistent(after / "usage.db");
        if (turns > 0 && turns < logs.last()) ++inBetween;
        TurnLog::expectCatchesUp(after / "usage.db", folder / "logs", logs.last());
        ASSERT_FALSE(testing::Test::HasFailure()) << "copy " << copy;
    }
    EXPECT_GT(withLog, 0) << "no copy has a log of SQLite's to be taken over";
    EXPECT_GT(inBetween, 0) << "each copy holds all or nothing";
}

} // namespace
