#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/TurnLog.h"

namespace {

using TestSupport::TemporaryFolder;
using TurnLog::line;
using TurnLog::onceEach;
using UsageIngest::IngestStore;
using UsageIngest::SQLiteError;
using UsageIngest::SyncStats;
using UsageModel::IngestProgress;
namespace fs = std::filesystem;

std::string limitLine(const std::string& timestamp) {
    return R"({"type":"assistant","timestamp":")" + timestamp +
           R"x(","message":{"model":"<synthetic>","content":"session limit · resets 3pm (UTC)"}})x" + "\n";
}

class IngestSyncTest : public testing::Test {
protected:
    [[nodiscard]] fs::path log(const std::string& name) const { return folder_ / ("logs/" + name + ".jsonl"); }
    void write(const std::string& name, const std::string& content) const {
        TestSupport::writeFile(log(name), content);
    }
    void append(const std::string& name, const std::string& content) const {
        TestSupport::appendFile(log(name), content);
    }
    SyncStats sync() { return TurnLog::syncAll(store_, folder_ / "logs"); }
    TurnLog::Counts counts() { return TurnLog::countsIn(store_); }

    /// A second connection, for what the store does not offer.
    void execElsewhere(const std::string& sql) const { UsageIngest::SQLiteDB(database_.native()).exec(sql); }
    [[nodiscard]] double cursorOf(const std::string& name, const std::string& column) const {
        UsageIngest::SQLiteDB db(database_.native());
        auto row = db.prepare("SELECT " + column + " FROM file_cursor WHERE path=?;");
        row.bind(1, log(name).c_str());
        return row.step() ? row.real(0) : -1;
    }

    [[nodiscard]] std::vector<std::string> indexes() const {
        UsageIngest::SQLiteDB db(database_.native());
        auto rows = db.prepare("SELECT name FROM sqlite_master WHERE name LIKE 'ix%' ORDER BY name;");
        std::vector<std::string> names;
        while (rows.step()) names.emplace_back(rows.text(0));
        return names;
    }

    TemporaryFolder folder_;
    fs::path database_ = folder_ / "support/usage.db";
    IngestStore store_{database_};
};

TEST_F(IngestSyncTest, NoFilesAtAll) {
    std::vector<IngestProgress> told;
    EXPECT_EQ(store_.sync({}, [&](const IngestProgress& progress) { told.push_back(progress); }), SyncStats{});
    EXPECT_EQ(told, (std::vector<IngestProgress>{{0, 0, true}}));
}

TEST_F(IngestSyncTest, CountsWhatItDid) {
    write("a", line(1) + "{\"type\":\"user\"}\n" + line(2));
    write("b", limitLine("2026-03-01T10:00:00Z"));
    write("c", "{\"type\":\"user\"}\n");
    const SyncStats stats = sync();
    EXPECT_EQ(stats.filesScanned, 3);
    EXPECT_EQ(stats.filesChanged, 2); // one of them by a limit message alone
    EXPECT_EQ(stats.eventsInserted, 2);
    EXPECT_EQ(stats.anchorsInserted, 1);
    EXPECT_EQ(stats.bytesRead,
              static_cast<std::int64_t>(fs::file_size(log("a")) + fs::file_size(log("b")) + fs::file_size(log("c"))));
    EXPECT_EQ(counts(), onceEach(1, 2));
    EXPECT_EQ(store_.anchors().size(), 1U);
}

TEST_F(IngestSyncTest, TheFirstImportLeavesTheIndexesWhereverItEnds) {
    const std::vector<std::string> both{"ix_event_path", "ix_event_ts"};
    write("a", line(1));
    const UsageIngest::LogFiles files{log("a"), log("missing")};
    EXPECT_THROW(store_.sync(files), std::system_error);
    EXPECT_EQ(indexes(), both);
    sync();
    EXPECT_EQ(indexes(), both);
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, ASecondSyncAddsNothing) {
    write("a", line(1));
    sync();
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1}));
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, AHalfWrittenLineCountsOnceItEnds) {
    const std::string second = line(2);
    write("a", line(1) + second.substr(0, 20));
    sync();
    EXPECT_EQ(cursorOf("a", "byte_offset"), static_cast<double>(line(1).size()));
    EXPECT_EQ(cursorOf("a", "size"), static_cast<double>(line(1).size() + 20));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 1));
    append("a", second.substr(20));
    sync();
    sync();
    EXPECT_EQ(counts(), onceEach(1, 2));
}

TEST_F(IngestSyncTest, AReplacedFileLosesItsRows) {
    write("a", line(1) + line(2));
    sync();
    TestSupport::writeFile(folder_ / "new", line(3) + line(4) + line(5));
    fs::rename(folder_ / "new", log("a"));
    sync();
    EXPECT_EQ(counts(), onceEach(3, 5));
}

TEST_F(IngestSyncTest, ATruncatedFileLosesItsRows) {
    write("a", line(1) + line(2));
    sync();
    fs::resize_file(log("a"), line(1).size());
    sync();
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, ATruncationThatGrewPastTheOldSizeGoesUnnoticed) {
    write("a", line(1) + line(2));
    sync();
    std::ofstream(log("a"), std::ios::trunc) << line(3) << line(4) << line(5);
    sync();
    EXPECT_EQ(counts(), (TurnLog::Counts{{1, 1}, {2, 1}, {5, 1}}));
}

TEST_F(IngestSyncTest, ARewriteOfTheSameSizeGoesUnnoticed) {
    write("a", line(1));
    sync();
    std::ofstream(log("a"), std::ios::trunc) << line(2);
    EXPECT_EQ(sync().bytesRead, 0);
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, LastTimestampNeverFalls) {
    write("a", line(1));
    sync();
    EXPECT_EQ(cursorOf("a", "last_ts"), 1772360430.0);
    fs::remove(log("a"));
    std::string earlier = line(2);
    earlier.replace(earlier.find("2026"), 4, "2020");
    TestSupport::writeFile(folder_ / "new", earlier + earlier);
    fs::rename(folder_ / "new", log("a"));
    sync();
    EXPECT_EQ(cursorOf("a", "last_ts"), 1772360430.0);
}

TEST_F(IngestSyncTest, RowsOfAFileThatHasGoneStay) {
    write("a", line(1));
    sync();
    fs::remove(log("a"));
    EXPECT_EQ(sync().filesScanned, 0);
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, AReingestReadsEverythingAnewAndOnce) {
    write("a", line(1) + limitLine("2026-03-01T10:00:00Z"));
    sync();
    write("gone", line(2));
    sync();
    fs::remove(log("gone"));
    execElsewhere("INSERT INTO meta VALUES('reingest_pending','1');");
    const SyncStats stats = sync();
    EXPECT_EQ(stats.bytesRead, static_cast<std::int64_t>(fs::file_size(log("a"))));
    EXPECT_EQ(stats.anchorsInserted, 1); // met, but not stored again
    EXPECT_EQ(store_.anchors().size(), 1U);
    EXPECT_EQ(counts(), onceEach(1, 2));
    EXPECT_EQ(sync().bytesRead, 0);
}

TEST_F(IngestSyncTest, AFileThatCannotBeReadUndoesTheRun) {
    write("a", line(1));
    write("b", line(2));
    sync();
    append("a", line(3));
    append("b", line(4));
    fs::create_directory(log("folder"));
    const UsageIngest::LogFiles files{log("a"), log("b"), log("folder")};
    EXPECT_THROW(store_.sync(files), std::system_error);
    EXPECT_EQ(counts(), onceEach(1, 2));
    EXPECT_EQ(cursorOf("a", "byte_offset"), static_cast<double>(line(1).size()));
    fs::remove(log("folder"));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 4));
}

TEST_F(IngestSyncTest, AFileThatVanishesAfterDiscoveryKeepsItsRows) {
    write("a", line(1));
    sync();
    fs::remove(log("a"));
    EXPECT_THROW(store_.sync(UsageIngest::LogFiles{log("a")}), std::system_error);
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, AnInsertThatFailsLosesItsRowAlone) {
    execElsewhere(
        "CREATE TRIGGER refuse BEFORE INSERT ON usage_event WHEN NEW.output=2 BEGIN SELECT RAISE(ABORT,'no'); END;");
    write("a", line(1) + line(2) + line(3));
    EXPECT_EQ(sync().eventsInserted, 3);
    EXPECT_EQ(counts(), (TurnLog::Counts{{1, 1}, {3, 1}}));
    EXPECT_EQ(sync().bytesRead, 0);
}

TEST_F(IngestSyncTest, ACursorThatCannotBeWrittenIsReadAgain) {
    execElsewhere("CREATE TRIGGER refuse BEFORE INSERT ON file_cursor BEGIN SELECT RAISE(ABORT,'no'); END;");
    write("a", line(1));
    sync();
    execElsewhere("DROP TRIGGER refuse;");
    sync();
    EXPECT_EQ(counts(), (TurnLog::Counts{{1, 2}}));
}

TEST_F(IngestSyncTest, ProgressIsToldForEveryEighthTheLastAndTheSkipped) {
    UsageIngest::LogFiles files;
    for (int i = 0; i < 10; ++i) {
        write(std::to_string(i), line(i + 1));
        files.push_back(log(std::to_string(i)));
    }
    std::vector<double> told;
    const auto note = [&](const IngestProgress& progress) {
        told.push_back(progress.complete ? 2 : progress.fraction());
    };
    store_.sync(files, note);
    ASSERT_EQ(told.size(), 4U); // the first, the ninth, the last, the end
    EXPECT_EQ(told[2], 1.0);
    EXPECT_EQ(told[3], 2.0);
    told.clear();
    store_.sync(files, note);
    EXPECT_EQ(told.size(), 11U);
}

TEST_F(IngestSyncTest, ACallbackThatThrowsUndoesTheRun) {
    write("a", line(1));
    EXPECT_THROW(
        store_.sync(UsageIngest::LogFiles{log("a")}, [](const IngestProgress&) { throw std::domain_error("stop"); }),
        std::domain_error);
    EXPECT_TRUE(counts().empty());
    sync();
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, MatchesAPrefixOfNamesByNoAccident) {
    write("a", line(1));
    write("a_", line(2));
    write("new\nline \xff", line(3));
    sync();
    fs::resize_file(log("a"), 0);
    sync();
    EXPECT_EQ(counts(), onceEach(2, 3));
}

TEST_F(IngestSyncTest, HugeAndTinyLines) {
    write("a", line(1) + "{\"type\":\"user\",\"x\":\"" + std::string(100'000'000, 'x') + "\"}\n" + line(2));
    std::string tiny;
    for (int i = 0; i < 1'000'000; ++i) tiny += "x\n";
    write("b", tiny + line(3));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 3));
}

std::string turnWith(const std::string& members, const std::string& usage) {
    return R"({"type":"assistant","timestamp":"2026-03-01T10:20:30Z",)" + members + R"("message":{"usage":{)" + usage +
           "}}}\n";
}

TEST_F(IngestSyncTest, BadLinesCostOnlyThemselves) {
    const std::size_t deep = 10'000;
    const std::string nested = R"("x":)" + std::string(deep, '[') + std::string(deep, ']') + ",";
    const std::string bad = turnWith(nested, R"("output_tokens":1)") + std::string("{\"type\":\"assistant\"\0}\n", 23) +
                            turnWith(R"("x":"\ud800",)", R"("output_tokens":2)") +
                            turnWith("", R"("output_tokens":9223372036854775808)") +
                            turnWith("\"x\":\"\xFF\",", R"("output_tokens":3)") + "\xEF\xBB\xBF" + line(4) + "\r\n\n";
    write("a", line(10) + bad + line(11) + turnWith("", R"("output_tokens":9223372036854775807)"));
    sync();
    EXPECT_EQ(counts(), (TurnLog::Counts{{10, 1}, {11, 1}, {std::numeric_limits<long>::max(), 1}}));
}

TEST_F(IngestSyncTest, AClockThatWasSetBackLosesNothing) {
    write("a", turnWith("", R"("output_tokens":1)"));
    sync();
    append("a", R"({"type":"assistant","timestamp":"1999-01-01T00:00:00Z","message":{"usage":{"output_tokens":2}}})"
                "\n");
    sync();
    EXPECT_EQ(counts(), onceEach(1, 2));
    const auto events = store_.allEvents();
    EXPECT_EQ(events->front().output, 2) << "by time, not by arrival";
}

TEST_F(IngestSyncTest, WhatOnlyLooksLikeALogFailsTheRun) {
    write("a", line(1));
    sync();
    const std::vector<std::function<void()>> impostors{
        [&] { fs::create_directory(log("b")); },
        [&] { fs::create_symlink("nowhere", log("b")); },
        [&] { fs::create_symlink(log("b"), log("b")); },
        [&] { mkfifo(log("b").c_str(), 0600); },
    };
    for (const auto& make : impostors) {
        make();
        append("a", line(2));
        EXPECT_THROW(sync(), std::system_error);
        EXPECT_EQ(counts(), onceEach(1, 1));
        fs::remove(log("b"));
        write("a", line(1));
    }
    sync();
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(IngestSyncTest, NoPermissionFailsClearly) {
    if (geteuid() != 0) {
        write("a", line(1));
        fs::permissions(log("a"), fs::perms::none);
        EXPECT_THROW(sync(), std::system_error);
        return;
    }
    write("a", line(1));
    fs::permissions(log("a"), fs::perms::none);
    fs::permissions(folder_.path(), fs::perms::all);
    fs::create_directory(folder_ / "other");
    fs::permissions(folder_ / "other", fs::perms::all);
    const pid_t child = fork();
    if (child == 0) {
        if (setgid(65534) != 0 || setuid(65534) != 0) _exit(2);
        try {
            IngestStore other(folder_ / "other/usage.db");
            other.sync(UsageIngest::LogFiles{log("a")});
            _exit(1);
        } catch (const std::system_error&) {
            _exit(0);
        }
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

} // namespace
