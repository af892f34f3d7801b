// Random sequences of what can happen to logs and to the process, against a plain model of what the cursors promise.

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <unordered_map>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/FaultPoints.h"
#include "UsageIngest/TurnLog.h"
#include "UsageModel/Files.h"

namespace {

using TestSupport::TemporaryFolder;
using TurnLog::Counts;
using UsageIngest::IngestStore;
namespace fs = std::filesystem;

constexpr int sequences = 5000;
constexpr int sequencesPerDatabase = 50;
constexpr int stepsPerSequence = 14;

/// What the database should hold, by the plainest reading of the rules.
class Model {
public:
    void noteLine(const std::string& line, long turn) { turnOf_[line] = turn; }

    void sync(const UsageIngest::LogFiles& files) {
        for (const std::string& file : files) visit(file);
    }

    [[nodiscard]] Counts counts() const {
        Counts counts;
        for (const auto& [path, state] : files_) {
            for (const long turn : state.turns) ++counts[turn];
        }
        return counts;
    }

private:
    struct FileState {
        bool hasCursor = false;
        std::int64_t inode = 0;
        std::int64_t size = 0;
        std::size_t offset = 0;
        std::vector<long> turns;
    };

    void visit(const fs::path& file) {
        std::ifstream stream(file, std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(stream), {}};
        const auto now = UsageModel::fileStat(file);
        FileState& state = files_[file.native()];

        std::size_t offset = state.offset;
        if (state.hasCursor && (state.inode != now.inode || now.size < state.size)) {
            state.turns.clear();
            offset = 0;
        }
        // A file that was emptied is looked at no further: its cursor stays, with the size and offset of before.
        if (state.hasCursor && state.inode == now.inode && static_cast<std::size_t>(now.size) == offset) return;
        for (std::size_t lineFeed = 0; offset < content.size(); offset = lineFeed + 1) {
            lineFeed = content.find('\n', offset);
            if (lineFeed == std::string::npos) break;
            const auto known = turnOf_.find(content.substr(offset, lineFeed - offset));
            if (known != turnOf_.end()) state.turns.push_back(known->second);
        }
        state.hasCursor = true;
        state.inode = now.inode;
        state.size = now.size;
        state.offset = offset;
    }

    std::unordered_map<std::string, long> turnOf_;
    std::map<std::string, FileState> files_;
};

/// The logs, the process and the model side by side.
class World {
public:
    explicit World(unsigned seed) : random_(seed) {}

    void beginSequence(int number) {
        if (number % sequencesPerDatabase == 0) {
            store_.reset();
            folder_.emplace(TestSupport::fastestParent());
            model_ = {};
            restart();
        }
        logs_ = *folder_ / ("logs" + std::to_string(number));
        fs::create_directories(logs_);
    }

    void step() {
        switch (random_() % 12) {
        case 0:
        case 1:
        case 2: return append(goodLine());
        case 3: return appendHalfLine();
        case 4: return append("{\"type\":\"assistant\", broken\n");
        case 5: return renameAndCreate();
        case 6: return truncate();
        case 7: return remove();
        case 8: return killDuringSync();
        case 9: return restart();
        default: return sync();
        }
    }

    void finish() {
        sync();
        EXPECT_EQ(TurnLog::countsIn(*store_), model_.counts());
    }

private:
    std::string goodLine() {
        const std::string line = TurnLog::line(++turn_);
        model_.noteLine(line.substr(0, line.size() - 1), turn_);
        return line;
    }

    fs::path anyLog() { return logs_ / (std::to_string(random_() % 3) + ".jsonl"); }

    void append(const std::string& text) { TestSupport::appendFile(anyLog(), text); }

    void appendHalfLine() {
        const std::string line = goodLine();
        const fs::path log = anyLog();
        const std::size_t half = random_() % line.size();
        TestSupport::appendFile(log, line.substr(0, half));
        if (random_() % 2 == 0) return; // it stays torn, and spoils what comes behind it
        if (random_() % 2 == 0) sync();
        TestSupport::appendFile(log, line.substr(half));
    }

    void renameAndCreate() {
        const fs::path log = anyLog();
        std::error_code ignored;
        fs::rename(log, logs_ / ("old" + std::to_string(++renamed_) + ".jsonl"), ignored);
        TestSupport::appendFile(log, goodLine());
    }

    void truncate() {
        const fs::path log = anyLog();
        std::error_code error;
        const auto size = fs::file_size(log, error);
        if (!error) fs::resize_file(log, random_() % (size + 1));
    }

    void remove() {
        std::error_code ignored;
        fs::remove(anyLog(), ignored);
    }

    void sync() {
        const auto files = UsageIngest::LogDiscovery(logs_).discover();
        store_->sync(files);
        model_.sync(files);
        ASSERT_EQ(TurnLog::countsIn(*store_), model_.counts());
    }

    // The child has a connection of its own, begun after the fork: SQLite's must not be carried across one.
    void killDuringSync() {
        store_.reset();
        const auto files = UsageIngest::LogDiscovery(logs_).discover();
        const long fatalStep = 1 + static_cast<long>(random_() % 20);
        const pid_t child = fork();
        if (child == 0) {
            IngestStore store(database());
            FaultPoints::killAtStep(fatalStep);
            store.sync(files);
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        // All the steps that can be fatal lie before the commit.
        if (WIFEXITED(status) && WEXITSTATUS(status) == 0) model_.sync(files);
        restart();
        ASSERT_EQ(TurnLog::countsIn(*store_), model_.counts());
    }

    void restart() {
        store_.reset();
        store_.emplace(database());
    }

    [[nodiscard]] fs::path database() const { return *folder_ / "usage.db"; }

    std::mt19937 random_;
    std::optional<TemporaryFolder> folder_;
    std::optional<IngestStore> store_;
    Model model_;
    fs::path logs_;
    long turn_ = 0;
    int renamed_ = 0;
};

TEST(Model, RandomSequencesAgree) {
    World world(4711);
    for (int sequence = 0; sequence < sequences; ++sequence) {
        SCOPED_TRACE("sequence " + std::to_string(sequence));
        world.beginSequence(sequence);
        for (int step = 0; step < stepsPerSequence; ++step) {
            world.step();
            if (testing::Test::HasFailure()) return;
        }
        world.finish();
        if (testing::Test::HasFailure()) return;
    }
}

} // namespace
