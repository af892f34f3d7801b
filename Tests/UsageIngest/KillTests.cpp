// The process is killed at random moments of an import and of later syncs, while the logs grow.

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/TurnLog.h"

namespace {

using TestSupport::TemporaryFolder;
using UsageIngest::IngestStore;
namespace fs = std::filesystem;

constexpr int kills = 200;
constexpr int killsPerDatabase = 10; // then the next import begins with nothing
constexpr int piecesPerKill = 5;
constexpr long turnsPerPiece = 3;
constexpr long filesInAll = 12;

class GrowingLogs {
public:
    explicit GrowingLogs(fs::path folder) : folder_(std::move(folder)) {}

    void add(long turns) {
        for (long i = 0; i < turns; ++i) {
            ++last_;
            const std::string line = TurnLog::line(last_);
            const fs::path file = folder_ / (std::to_string(last_ % filesInAll) + ".jsonl");
            // In two pieces: a sync in between meets half a line.
            TestSupport::appendFile(file, line.substr(0, line.size() / 2));
            TestSupport::appendFile(file, line.substr(line.size() / 2));
        }
    }
    [[nodiscard]] long last() const { return last_; }

private:
    fs::path folder_;
    long last_ = 0;
};

pid_t syncForEver(const fs::path& database, const fs::path& logs) {
    const pid_t child = fork();
    if (child != 0) return child;
    while (true) {
        IngestStore store(database);
        TurnLog::syncAll(store, logs);
    }
}

TEST(Kill, AtRandomMomentsLosesAndDoublesNothing) {
    const TemporaryFolder folder;
    const fs::path database = folder / "support/usage.db";
    fs::create_directories(folder / "logs");
    GrowingLogs logs(folder / "logs");
    logs.add(3000);
    std::mt19937 random(20260301);

    for (int kill = 0; kill < kills; ++kill) {
        if (kill % killsPerDatabase == 0) fs::remove_all(folder / "support");
        const pid_t child = syncForEver(database, folder / "logs");
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 40000);
        for (int piece = 0; piece < piecesPerKill; ++piece) logs.add(turnsPerPiece);
        std::this_thread::sleep_until(moment);
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child ended by itself with status " << status;

        if (kill % killsPerDatabase != killsPerDatabase - 1) continue;
        IngestStore store(database);
        TurnLog::syncAll(store, folder / "logs");
        ASSERT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, logs.last())) << "after kill " << kill;
    }
}

} // namespace
