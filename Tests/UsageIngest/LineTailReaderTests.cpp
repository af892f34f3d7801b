#include "UsageIngest/LineTailReader.h"

#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "Support/TemporaryFolder.h"

namespace {

using TestSupport::TemporaryFolder;
using UsageIngest::LineTailReader;

struct Reading {
    std::vector<std::string> lines;
    std::uint64_t end = 0;

    bool operator==(const Reading&) const = default;
};

class LineTailReaderTest : public testing::Test {
protected:
    Reading readFrom(std::uint64_t start, std::int64_t chunkSize = 262144) const {
        Reading reading;
        const LineTailReader reader{.url = file_, .startOffset = start, .chunkSize = chunkSize};
        reading.end = reader.read([&](std::string_view line) { reading.lines.emplace_back(line); });
        return reading;
    }
    void write(const std::string& content) const { TestSupport::writeFile(file_, content); }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_ / "log.jsonl";
};

TEST_F(LineTailReaderTest, WholeLines) {
    write("a\nb\n");
    EXPECT_EQ(readFrom(0), (Reading{{"a", "b"}, 4}));
    EXPECT_EQ(readFrom(2), (Reading{{"b"}, 4}));
}

TEST_F(LineTailReaderTest, AnUnfinishedLineWaitsForItsEnd) {
    write("a\nb");
    EXPECT_EQ(readFrom(0), (Reading{{"a"}, 2}));
    TestSupport::appendFile(file_, "\n");
    EXPECT_EQ(readFrom(2), (Reading{{"b"}, 4}));
}

TEST_F(LineTailReaderTest, EmptyLinesAreConsumedInSilence) {
    write("\n\n");
    EXPECT_EQ(readFrom(0), (Reading{{}, 2}));
}

TEST_F(LineTailReaderTest, EmptyFileAndOffsetsAtAndPastTheEnd) {
    write("");
    EXPECT_EQ(readFrom(0), (Reading{{}, 0}));
    write("a\n");
    EXPECT_EQ(readFrom(2), (Reading{{}, 2}));
    EXPECT_EQ(readFrom(77), (Reading{{}, 77}));
}

TEST_F(LineTailReaderTest, ChunksSplitNothing) {
    const std::string content = "first\nsecond line\n\nx\nthe last one is longer than all\nhalf";
    write(content);
    const Reading whole = readFrom(0);
    EXPECT_EQ(whole.lines.size(), 4U);
    for (std::int64_t chunk = 1; chunk <= 60; ++chunk) EXPECT_EQ(readFrom(0, chunk), whole) << chunk;
}

TEST_F(LineTailReaderTest, CarriageReturnsAndNulsStayInTheLine) {
    write(std::string("a\r\nb\0c\n", 7));
    EXPECT_EQ(readFrom(0), (Reading{{"a\r", std::string("b\0c", 3)}, 7}));
}

TEST_F(LineTailReaderTest, LinesWithAHoleAreConsumedInSilenceWhereThatIsWanted) {
    const std::string hole(8, '\0');
    const std::string content = "a\n" + hole + "b\nc\nd" + hole + hole + "e\n\nf\n" + hole + hole + "\ng\n";
    write(content + "h" + hole);
    for (std::int64_t chunk = 1; chunk <= 4; ++chunk) {
        Reading reading;
        const LineTailReader reader{.url = file_, .chunkSize = chunk, .holes = LineTailReader::Holes::passedOver};
        reading.end = reader.read([&](std::string_view line) { reading.lines.emplace_back(line); });
        EXPECT_EQ(reading, (Reading{{"a", "c", "f", "g"}, content.size()})) << chunk;
    }
    EXPECT_EQ(readFrom(0, 4).lines.size(), 7U) << "else they are lines";
}

TEST_F(LineTailReaderTest, ALineOfManyChunks) {
    const std::string line(5'000'000, 'x');
    write("a\n" + line + "\nb\n");
    EXPECT_EQ(readFrom(0), (Reading{{"a", line, "b"}, 5'000'005}));
}

TEST_F(LineTailReaderTest, WhatCannotBeReadThrows) {
    EXPECT_THROW(readFrom(0), std::system_error);
    std::filesystem::create_directory(file_);
    EXPECT_THROW(readFrom(0), std::system_error);
    std::filesystem::remove(file_);
    std::filesystem::create_symlink(folder_ / "nowhere", file_);
    EXPECT_THROW(readFrom(0), std::system_error);
    std::filesystem::remove(file_);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    EXPECT_THROW(readFrom(0), std::system_error); // and does not wait for a writer
}

TEST_F(LineTailReaderTest, WhatTheCallbackThrowsIsPassedOn) {
    write("a\nb\n");
    const LineTailReader reader{.url = file_};
    EXPECT_THROW(reader.read([](std::string_view) { throw std::domain_error("stop"); }), std::domain_error);
}

} // namespace
