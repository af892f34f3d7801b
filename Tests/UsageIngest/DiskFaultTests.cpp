// The disk refuses SQLite's writes, truncations and syncs, and the power goes right behind it.

#include <random>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "UsageIngest/DatabaseChecks.h"
#include "UsageIngest/GrowingLogs.h"
#include "UsageIngest/RecordedDisk.h"

namespace {

using Lasting = RecordedDisk::Lasting;
using TestSupport::TemporaryFolder;
using UsageIngest::IngestStore;
namespace fs = std::filesystem;

constexpr long turnsAdded = 40;

struct DiskFault {
    const char* name;
    Lasting lasting;
    /// Stored before, and not at stake.
    long turnsBefore;
    /// What is to be reached, or the faults missed their aim.
    std::size_t fewestCalls;
};

class DiskFaultTest : public testing::TestWithParam<DiskFault> {
protected:
    /// A start of the program, two syncs and its end. A failure that has passed is made up for by the second sync.
    static void liveThrough(const fs::path& home, long lastTurn) try {
        IngestStore store(home / "usage.db");
        try {
            TurnLog::syncAll(store, home / "logs");
        } catch (const UsageIngest::SQLiteError&) {
            if (GetParam().lasting == Lasting::forGood) throw;
            TurnLog::syncAll(store, home / "logs");
        }
        EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, lastTurn));
    } catch (const UsageIngest::SQLiteError&) {
        // The words are for the user.
    }

    /// Whether there was an n-th call to fail.
    bool survives(std::size_t n) {
        const TemporaryFolder home(TestSupport::fastestParent());
        const TemporaryFolder afterPowerCut(TestSupport::fastestParent());
        fs::create_directories(home / "logs");
        TurnLog::GrowingLogs logs(home / "logs");
        RecordedDisk disk;
        logs.add(GetParam().turnsBefore);
        if (logs.last() > 0) liveThrough(home.path(), logs.last());
        logs.add(turnsAdded);
        disk.failAt(n, GetParam().lasting);
        liveThrough(home.path(), logs.last());
        disk.end();

        disk.layDown(disk.steps().size(), random_, afterPowerCut.path());
        for (const fs::path& folder : {home.path(), afterPowerCut.path()}) {
            EXPECT_GE(TurnLog::expectConsistent(folder / "usage.db"), GetParam().turnsBefore);
            TurnLog::expectCatchesUp(folder / "usage.db", home / "logs", logs.last());
        }
        return disk.hasFailed();
    }

    std::mt19937 random_{20260303};
};

TEST_P(DiskFaultTest, EveryWriteTruncationAndSyncInTurn) {
    std::size_t n = 1;
    while (survives(n)) {
        ASSERT_FALSE(HasFailure()) << "call " << n;
        ++n;
    }
    EXPECT_FALSE(HasFailure()) << "without a fault";
    EXPECT_GT(n, GetParam().fewestCalls);
}

INSTANTIATE_TEST_SUITE_P(Faults, DiskFaultTest,
                         testing::Values(DiskFault{"onceInASync", Lasting::once, 60, 30},
                                         DiskFault{"forGoodInASync", Lasting::forGood, 60, 30},
                                         DiskFault{"onceInTheFirst", Lasting::once, 0, 50},
                                         DiskFault{"forGoodInTheFirst", Lasting::forGood, 0, 50}),
                         [](const auto& fault) { return std::string(fault.param.name); });

} // namespace
