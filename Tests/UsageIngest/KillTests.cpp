// The process is killed at random moments of an import and of later syncs, while the logs grow.

#include <chrono>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "UsageIngest/GrowingLogs.h"
#include "UsageIngest/SyncingChild.h"

namespace {

using TestSupport::TemporaryFolder;
using UsageIngest::IngestStore;
namespace fs = std::filesystem;

constexpr int kills = 200;
constexpr int killsPerDatabase = 10; // then the next import begins with nothing
constexpr int piecesPerKill = 5;
constexpr long turnsPerPiece = 3;

TEST(Kill, AtRandomMomentsLosesAndDoublesNothing) {
    const TemporaryFolder folder;
    const fs::path database = folder / "support/usage.db";
    fs::create_directories(folder / "logs");
    TurnLog::GrowingLogs logs(folder / "logs");
    logs.add(3000);
    std::mt19937 random(20260301);

    for (int kill = 0; kill < kills; ++kill) {
        if (kill % killsPerDatabase == 0) fs::remove_all(folder / "support");
        TurnLog::SyncingChild child(database, folder / "logs");
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 40000);
        for (int piece = 0; piece < piecesPerKill; ++piece) logs.add(turnsPerPiece);
        std::this_thread::sleep_until(moment);
        ASSERT_TRUE(child.killed()) << "the child ended by itself";

        if (kill % killsPerDatabase != killsPerDatabase - 1) continue;
        IngestStore store(database);
        TurnLog::syncAll(store, folder / "logs");
        ASSERT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, logs.last())) << "after kill " << kill;
    }
}

} // namespace
