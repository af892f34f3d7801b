// Logs whose names and inode numbers change hands. A log is known by its path; that the file behind it is still the
// same one is told by its inode number and by its not having shrunk, and by nothing else.

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/TurnLog.h"
#include "UsageModel/Files.h"

namespace {

using TestSupport::TemporaryFolder;
using TurnLog::Counts;
using TurnLog::line;
using TurnLog::onceEach;
using UsageIngest::IngestStore;
using UsageIngest::SyncStats;
namespace fs = std::filesystem;

std::string lines(long first, long last) {
    std::string text;
    for (long number = first; number <= last; ++number) text += line(number);
    return text;
}

class RotationTest : public testing::Test {
protected:
    [[nodiscard]] fs::path log(const std::string& name) const { return folder_ / ("logs/" + name); }
    SyncStats sync() { return TurnLog::syncAll(store_, folder_ / "logs"); }
    Counts counts() { return TurnLog::countsIn(store_); }

    TemporaryFolder folder_;
    fs::path database_ = folder_ / "support/usage.db";
    IngestStore store_{database_};
};

class InodeReuseTest : public RotationTest {
protected:
    /// Writes a file that has the inode number which `known`, a log that is gone by now, has in its cursor. Many file
    /// systems give a number that has become free to the next file; where this one does not, the cursor is changed
    /// instead, which to a sync is the same.
    void writeWithInodeOf(const fs::path& known, std::int64_t inode, const fs::path& file, const std::string& text) {
        constexpr int tries = 20;
        for (int i = 0; i < tries; ++i) {
            TestSupport::writeFile(file, text);
            if (UsageModel::fileStat(file).inode == inode) return;
            fs::remove(file);
        }
        TestSupport::writeFile(file, text);
        UsageIngest::SQLiteDB db(database_.native());
        auto change = db.prepare("UPDATE file_cursor SET inode=? WHERE path=?;");
        change.bind(1, UsageModel::fileStat(file).inode);
        change.bind(2, known.c_str());
        change.step();
    }
    void replace(const fs::path& known, const fs::path& file, const std::string& text) {
        const std::int64_t inode = UsageModel::fileStat(known).inode;
        fs::remove(known);
        writeWithInodeOf(known, inode, file, text);
    }
};

TEST_F(InodeReuseTest, UnderTheSamePathASmallerFileIsReadAnew) {
    TestSupport::writeFile(log("a.jsonl"), lines(1, 3));
    sync();
    replace(log("a.jsonl"), log("a.jsonl"), lines(4, 5));
    sync();
    EXPECT_EQ(counts(), onceEach(4, 5));
}

TEST_F(InodeReuseTest, UnderTheSamePathAFileOfTheSameSizeGoesUnnoticed) {
    TestSupport::writeFile(log("a.jsonl"), lines(1, 3));
    sync();
    replace(log("a.jsonl"), log("a.jsonl"), lines(4, 6));
    EXPECT_EQ(sync().bytesRead, 0);
    EXPECT_EQ(counts(), onceEach(1, 3));
    TestSupport::appendFile(log("a.jsonl"), line(7));
    sync();
    EXPECT_EQ(counts(), (Counts{{1, 1}, {2, 1}, {3, 1}, {7, 1}})) << "and is read on";
}

TEST_F(InodeReuseTest, UnderTheSamePathALargerFileIsTakenForTheOldOneGrown) {
    TestSupport::writeFile(log("a.jsonl"), lines(1, 3));
    sync();
    // Reading goes on in the middle of a line, which is lost.
    replace(log("a.jsonl"), log("a.jsonl"), lines(1001, 1005));
    sync();
    EXPECT_EQ(counts(), (Counts{{1, 1}, {2, 1}, {3, 1}, {1004, 1}, {1005, 1}}));
    sync();
    EXPECT_EQ(counts().size(), 5U) << "once";
}

class InodeUnderAnotherPathTest : public InodeReuseTest, public testing::WithParamInterface<long> {};

TEST_P(InodeUnderAnotherPathTest, IsAnotherLog) {
    TestSupport::writeFile(log("a.jsonl"), lines(1, 3));
    sync();
    const long last = 3 + GetParam();
    replace(log("a.jsonl"), log("b.jsonl"), lines(4, last));
    sync();
    EXPECT_EQ(counts(), onceEach(1, last)) << "the rows of a log that is gone stay";
    TestSupport::writeFile(log("a.jsonl"), lines(1, 3));
    if (UsageModel::fileStat(log("a.jsonl")).inode != UsageModel::fileStat(log("b.jsonl")).inode) sync();
    EXPECT_EQ(counts(), onceEach(1, last)) << "and count once when it comes back";
}

INSTANTIATE_TEST_SUITE_P(SmallerTheSameLarger, InodeUnderAnotherPathTest, testing::Values(1, 3, 5));

TEST_F(RotationTest, LogsThatSwapTheirNamesCountOnce) {
    TestSupport::writeFile(log("a.jsonl"), lines(1, 3));
    TestSupport::writeFile(log("b.jsonl"), lines(4, 9));
    sync();
    fs::rename(log("a.jsonl"), folder_ / "aside");
    fs::rename(log("b.jsonl"), log("a.jsonl"));
    fs::rename(folder_ / "aside", log("b.jsonl"));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 9));
}

TEST_F(RotationTest, ALogThatIsRenamedCountsTwiceForItsFormerNameIsKept) {
    TestSupport::writeFile(log("a.jsonl"), lines(1, 2));
    sync();
    fs::rename(log("a.jsonl"), log("a.1.jsonl"));
    sync();
    EXPECT_EQ(counts(), (Counts{{1, 2}, {2, 2}})) << "the rows of a log that is gone stay";
    TestSupport::writeFile(log("a.jsonl"), line(3));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 3)) << "until a log of its name comes";
}

/// A rotation that copies the log and empties it, while its writer has it open.
class CopyAndTruncateTest : public RotationTest {
protected:
    CopyAndTruncateTest() {
        TestSupport::writeFile(log("a.jsonl"), lines(1, 5));
        sync();
    }
    void copyTo(const std::string& name) const { fs::copy_file(log("a.jsonl"), log(name)); }
    void truncate() const { fs::resize_file(log("a.jsonl"), 0); }
    void writeOn(const std::string& text) const { TestSupport::appendFile(log("a.jsonl"), text); }
};

TEST_F(CopyAndTruncateTest, WithACopyThatIsALogEachTurnCountsOnce) {
    copyTo("a.1.jsonl");
    truncate();
    writeOn(lines(6, 7));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 7));
}

TEST_F(CopyAndTruncateTest, ASyncInBetweenSeesBothButTheNextCountsOnce) {
    copyTo("a.1.jsonl");
    sync();
    EXPECT_EQ(counts(), (Counts{{1, 2}, {2, 2}, {3, 2}, {4, 2}, {5, 2}}));
    truncate();
    sync();
    EXPECT_EQ(counts(), onceEach(1, 5));
    writeOn(lines(6, 7));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 7));
}

TEST_F(CopyAndTruncateTest, WithACopyThatIsNoLogWhatWasTruncatedIsLost) {
    copyTo("a.jsonl.1");
    sync();
    EXPECT_EQ(counts(), onceEach(1, 5));
    truncate();
    writeOn(lines(6, 7));
    sync();
    EXPECT_EQ(counts(), onceEach(6, 7));
}

TEST_F(CopyAndTruncateTest, OfALogThatGrowsPastItsFormerSizeAtOnceGoesUnnoticed) {
    copyTo("a.1.jsonl");
    truncate();
    writeOn(lines(6, 12));
    sync();
    Counts twice = onceEach(1, 5);
    for (auto& [turn, count] : twice) count = 2;
    twice.merge(onceEach(11, 12));
    EXPECT_EQ(counts(), twice);
    sync();
    EXPECT_EQ(counts(), twice);
}

TEST_F(CopyAndTruncateTest, OfALogThatWasSeenEmptyIsReadAnewUnlessItGrowsPastItsFormerSizeAtOnce) {
    truncate();
    sync();
    EXPECT_EQ(counts(), Counts{});
    writeOn(lines(6, 7));
    sync();
    EXPECT_EQ(counts(), onceEach(6, 7));
    // An emptied log leaves its cursor where it was.
    truncate();
    sync();
    writeOn(lines(8, 11));
    sync();
    EXPECT_EQ(counts(), onceEach(10, 11));
}

// A writer that does not append goes on where it was: what is before it becomes a hole, which reads as zeros.
TEST_F(CopyAndTruncateTest, BeforeAWriterThatKeepsItsPlaceLosesNoNewTurn) {
    const std::uintmax_t place = fs::file_size(log("a.jsonl"));
    truncate();
    fs::resize_file(log("a.jsonl"), place);
    writeOn(lines(6, 7));
    sync();
    EXPECT_EQ(counts(), onceEach(1, 7)) << "for it looks like one that grew";
}

TEST_F(CopyAndTruncateTest, BeforeAWriterThatKeepsItsPlaceLosesTheOldTurnsWhereASyncMeetsTheEmptyLog) {
    const std::uintmax_t place = fs::file_size(log("a.jsonl"));
    truncate();
    sync();
    fs::resize_file(log("a.jsonl"), place);
    writeOn(lines(6, 7));
    sync();
    EXPECT_EQ(counts(), onceEach(6, 7));
}

TEST_F(CopyAndTruncateTest, AHoleCostsTheTurnThatSharesItsLine) {
    TestSupport::writeFile(log("holed.jsonl"), "");
    fs::resize_file(log("holed.jsonl"), 4096);
    TestSupport::appendFile(log("holed.jsonl"), lines(6, 8));
    sync();
    Counts expected = onceEach(1, 5);
    expected.merge(onceEach(7, 8));
    EXPECT_EQ(counts(), expected);
}

} // namespace
