// More logs, and larger ones, than anybody has. The short form is part of the test suite; BRINDLEWICK_LARGE_TREE gives
// the long one, which tells what it took.

#include <chrono>
#include <cstdlib>
#include <iostream>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/TurnLog.h"

namespace {

using TestSupport::TemporaryFolder;
using TurnLog::line;
using TurnLog::onceEach;
using UsageIngest::IngestStore;
using UsageIngest::SyncStats;
namespace fs = std::filesystem;

constexpr std::uintmax_t megabyte = 1'000'000;

bool isLongForm() {
    return std::getenv("BRINDLEWICK_LARGE_TREE") != nullptr;
}

long openDescriptors() {
    return static_cast<long>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

long residentAtMost() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

class LargeTreeTest : public testing::Test {
protected:
    [[nodiscard]] fs::path log(long number) const {
        return folder_ / ("logs/project" + std::to_string(number / 50)) / (std::to_string(number) + ".jsonl");
    }
    SyncStats sync() {
        const auto begin = std::chrono::steady_clock::now();
        const SyncStats stats = TurnLog::syncAll(store_, folder_ / "logs");
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        std::cout << stats.filesScanned << " files, " << stats.bytesRead << " bytes in " << taken.count()
                  << " s; at most " << residentAtMost() << " MiB resident\n";
        return stats;
    }
    /// A log of a hole, which takes no room on the disk.
    void writeHole(long number, std::uintmax_t bytes) const {
        TestSupport::writeFile(log(number), "");
        fs::resize_file(log(number), bytes);
    }

    TemporaryFolder folder_;
    IngestStore store_{folder_ / "support/usage.db"};
};

TEST_F(LargeTreeTest, ManyLogsAreEachReadOnce) {
    const long files = isLongForm() ? 100'000 : 2'000;
    for (long number = 1; number <= files; ++number) TestSupport::writeFile(log(number), line(number));
    const long descriptors = openDescriptors();
    EXPECT_EQ(sync().filesChanged, files);
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = files}));
    TestSupport::appendFile(log(files / 2), line(files + 1));
    EXPECT_EQ(sync().eventsInserted, 1);
    EXPECT_EQ(TurnLog::countsIn(store_), onceEach(1, files + 1));
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST_F(LargeTreeTest, TurnsBehindHolesCountOnceAndTheHolesTakeNoMemory) {
    const long files = isLongForm() ? 20 : 2;
    const std::uintmax_t hole = isLongForm() ? 1'000 * megabyte : 100 * megabyte;
    for (long number = 0; number < files; ++number) {
        writeHole(number, hole);
        TestSupport::appendFile(log(number), "\n" + line(2 * number + 1) + line(2 * number + 2));
    }
    const long resident = residentAtMost();
    EXPECT_GT(sync().bytesRead, files * static_cast<std::int64_t>(hole));
    EXPECT_EQ(sync().bytesRead, 0);
    EXPECT_EQ(TurnLog::countsIn(store_), onceEach(1, 2 * files));
    EXPECT_LT(residentAtMost() - resident, 50) << "MiB";
}

// It has no end that a cursor could pass: each sync looks through it again.
TEST_F(LargeTreeTest, AHoleWithoutAnEndTakesNoMemoryAndWaits) {
    const std::uintmax_t hole = isLongForm() ? 20'000 * megabyte : 200 * megabyte;
    TestSupport::writeFile(log(0), line(1));
    fs::resize_file(log(0), hole);
    TestSupport::writeFile(log(1), line(2));
    const long resident = residentAtMost();
    EXPECT_EQ(sync().eventsInserted, 2);
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 2}));
    EXPECT_LT(residentAtMost() - resident, 50) << "MiB";
    TestSupport::appendFile(log(0), "\n" + line(3));
    EXPECT_EQ(sync().eventsInserted, 1);
    EXPECT_EQ(TurnLog::countsIn(store_), onceEach(1, 3));
}

} // namespace
