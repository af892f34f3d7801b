// The process is killed at random moments of an import and of later syncs, while the logs grow.

#include <chrono>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "UsageIngest/DatabaseChecks.h"
#include "UsageIngest/GrowingLogs.h"
#include "UsageIngest/SyncingChild.h"

namespace {

using TestSupport::TemporaryFolder;
namespace fs = std::filesystem;

constexpr int kills = 200;
constexpr int killsPerDatabase = 10; // then the next import begins with nothing
constexpr int piecesPerKill = 5;
constexpr long turnsPerPiece = 3;

TEST(Kill, AtRandomMomentsLosesAndDoublesNothing) {
    const TemporaryFolder folder(TestSupport::fastestParent());
    fs::create_directories(folder / "logs");
    TurnLog::GrowingLogs logs(folder / "logs");
    logs.add(2000);
    std::mt19937 random(20260301);
    int unfinished = 0;

    for (int kill = 0; kill < kills; ++kill) {
        if (kill % killsPerDatabase == 0) fs::remove_all(folder / "support");
        TurnLog::SyncingChild child(folder / "support/usage.db", folder / "logs");
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 30000);
        for (int piece = 0; piece < piecesPerKill; ++piece) logs.add(turnsPerPiece);
        std::this_thread::sleep_until(moment);
        ASSERT_TRUE(child.killed()) << "the child ended by itself";

        // Of a copy, for the next child is to meet what this one left.
        const TemporaryFolder left(TestSupport::fastestParent());
        TurnLog::copyDatabase(folder / "support", left.path());
        if (TurnLog::expectConsistent(left / "usage.db") < logs.last()) ++unfinished;
        TurnLog::expectCatchesUp(left / "usage.db", folder / "logs", logs.last());
        ASSERT_FALSE(testing::Test::HasFailure()) << "after kill " << kill;
    }
    EXPECT_GT(unfinished, kills / killsPerDatabase) << "the kills came too late to interrupt anything";
}

} // namespace
