#include "UsageModel/Files.h"

#include <algorithm>
#include <array>
#include <future>
#include <system_error>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "UsageModel/FilesFixture.h"

namespace UsageModel {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using TestSupport::writeFile;

using FileStatTest = FilesTest;

TEST_F(FileStatTest, TellsSizeTimeAndInode) {
    writeFile(file, "12345");
    const std::array<timespec, 2> times{timespec{1, 0}, timespec{1790000000, 250'000'000}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times.data(), 0), 0);
    struct stat attributes {};
    ASSERT_EQ(stat(file.c_str(), &attributes), 0);
    EXPECT_EQ(fileStat(file),
              (FileStat{.size = 5, .mtime = 1790000000.25, .inode = static_cast<std::int64_t>(attributes.st_ino)}));
}

TEST_F(FileStatTest, TellsATimeBefore1970) {
    writeFile(file, "");
    const std::array<timespec, 2> times{timespec{0, 0}, timespec{-2, 500'000'000}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times.data(), 0), 0);
    EXPECT_EQ(fileStat(file).mtime, -1.5);
}

TEST_F(FileStatTest, FollowsLinks) {
    writeFile(file, "12345");
    fs::create_symlink(file, folder / "link");
    EXPECT_EQ(fileStat(folder / "link"), fileStat(file));
}

TEST_F(FileStatTest, IsAllZeroWhereThereIsNothing) {
    fs::create_symlink(folder / "nowhere", folder / "dangling");
    fs::create_symlink(folder / "loop", folder / "loop");
    writeFile(file, "12345");
    for (const fs::path& path :
         {folder / "missing", folder / "dangling", folder / "loop", file / "below", fs::path()}) {
        EXPECT_EQ(fileStat(path), FileStat{}) << path;
    }
}

using ReadableFileTest = FilesTest;

TEST_F(ReadableFileTest, ReadsInPieces) {
    writeFile(file, "abcdefg");
    ReadableFile open(file);
    std::array<char, 4> piece{};
    EXPECT_EQ(open.read(piece), 4U);
    EXPECT_EQ(std::string_view(piece.data(), 4), "abcd");
    EXPECT_EQ(open.read(piece), 3U);
    EXPECT_EQ(std::string_view(piece.data(), 3), "efg");
    EXPECT_EQ(open.read(piece), 0U);
}

TEST_F(ReadableFileTest, SeesWhatIsAppendedBehindTheEnd) {
    writeFile(file, "ab");
    ReadableFile open(file);
    std::array<char, 4> piece{};
    EXPECT_EQ(open.read(piece), 2U);
    EXPECT_EQ(open.read(piece), 0U);
    TestSupport::appendFile(file, "c");
    EXPECT_EQ(open.read(piece), 1U);
    EXPECT_EQ(piece[0], 'c');
}

TEST_F(ReadableFileTest, SeeksToAnyPlace) {
    writeFile(file, "abcdefg");
    ReadableFile open(file);
    std::array<char, 2> piece{};
    open.seek(5);
    EXPECT_EQ(open.read(piece), 2U);
    EXPECT_EQ(piece, (std::array{'f', 'g'}));
    open.seek(0);
    EXPECT_EQ(open.read(piece), 2U);
    EXPECT_EQ(piece, (std::array{'a', 'b'}));
    open.seek(1'000'000);
    EXPECT_EQ(open.read(piece), 0U);
}

TEST_F(ReadableFileTest, RefusesAPlaceThatNoFileHas) {
    writeFile(file, "abc");
    ReadableFile open(file);
    EXPECT_EQ(errorOf(file, [&] { open.seek(std::numeric_limits<std::uint64_t>::max()); }), EINVAL);
}

TEST_F(ReadableFileTest, RefusesAFolder) {
    EXPECT_EQ(errorOf(folder.path(), [&] { ReadableFile{folder.path()}; }), EISDIR);
}

TEST_F(ReadableFileTest, RefusesWhatIsNotThere) {
    EXPECT_EQ(errorOf(file, [&] { ReadableFile{file}; }), ENOENT);
    fs::create_symlink(folder / "nowhere", file);
    EXPECT_EQ(errorOf(file, [&] { ReadableFile{file}; }), ENOENT) << "a dangling link";
}

TEST_F(ReadableFileTest, RefusesAPipeWithoutWaitingForItsWriter) {
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(errorOf(file, [&] { ReadableFile{file}; }), EINVAL);
}

TEST_F(ReadableFileTest, RefusesADevice) {
    EXPECT_EQ(errorOf("/dev/zero", [&] { ReadableFile{"/dev/zero"}; }), EINVAL);
}

TEST_F(ReadableFileTest, KeepsNothingOpenWhereItRefuses) {
    const auto openFiles = [] { return folderEntries("/proc/self/fd").size(); };
    const std::size_t before = openFiles();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(errorOf(folder.path(), [&] { ReadableFile{folder.path()}; }), EISDIR);
    EXPECT_EQ(openFiles(), before);
    writeFile(file, "abc");
    { const ReadableFile open(file); }
    EXPECT_EQ(openFiles(), before);
}

TEST_F(ReadableFileTest, MovesWithItsPlaceInTheFile) {
    writeFile(file, "abcd");
    writeFile(folder / "other", "xyz");
    ReadableFile first(file);
    std::array<char, 2> piece{};
    EXPECT_EQ(first.read(piece), 2U);
    ReadableFile moved(std::move(first));
    EXPECT_EQ(moved.read(piece), 2U);
    EXPECT_EQ(piece, (std::array{'c', 'd'}));

    moved = ReadableFile(folder / "other");
    EXPECT_EQ(moved.read(piece), 2U);
    EXPECT_EQ(piece, (std::array{'x', 'y'}));
}

using ReadWholeFileTest = FilesTest;

TEST_F(ReadWholeFileTest, GivesEveryByte) {
    for (const std::size_t size : {0U, 1U, 65535U, 65536U, 65537U, 200'000U}) {
        std::string content(size, '\0');
        for (std::size_t i = 0; i < size; ++i) content[i] = static_cast<char>(i * 7);
        writeFile(file, content);
        EXPECT_EQ(readWholeFile(file), content) << size;
    }
}

TEST_F(ReadWholeFileTest, ReadsThroughALink) {
    writeFile(file, "abc");
    fs::create_symlink(file, folder / "link");
    EXPECT_EQ(readWholeFile(folder / "link"), "abc");
}

TEST_F(ReadWholeFileTest, ThrowsWhereThereIsNoFile) {
    EXPECT_EQ(errorOf(file, [&] { (void)readWholeFile(file); }), ENOENT);
    EXPECT_EQ(errorOf(folder.path(), [&] { (void)readWholeFile(folder.path()); }), EISDIR);
}

using FolderEntriesTest = FilesTest;

TEST_F(FolderEntriesTest, NameEverythingButTheFolderAndItsParent) {
    writeFile(folder / "file", "");
    writeFile(folder / ".hidden", "");
    fs::create_directory(folder / "sub");
    fs::create_directory_symlink(folder / "sub", folder / "link");
    fs::create_symlink(folder / "nowhere", folder / "dangling");

    std::vector<std::pair<std::string, bool>> entries;
    for (const FolderEntry& entry : folderEntries(folder.path())) entries.emplace_back(entry.name, entry.isFolder);
    EXPECT_THAT(entries,
                UnorderedElementsAre(std::pair("file", false), std::pair(".hidden", false), std::pair("sub", true),
                                     std::pair("link", false), std::pair("dangling", false)));
}

TEST_F(FolderEntriesTest, AreNoneWhereThereIsNoFolderToRead) {
    writeFile(file, "");
    EXPECT_THAT(folderEntries(folder.path() / "missing"), IsEmpty());
    EXPECT_THAT(folderEntries(file), IsEmpty());
    fs::create_directory(folder / "empty");
    EXPECT_THAT(folderEntries(folder / "empty"), IsEmpty());
}

class ReplaceFile : public testing::Test {
protected:
    [[nodiscard]] FileReplacement with(std::string_view content) const {
        return {.file = folder / "file", .temporary = folder / "temporary", .content = content};
    }
    [[nodiscard]] std::vector<FolderEntry> entries() const { return folderEntries(folder.path()); }

    TestSupport::TemporaryFolder folder;
};

TEST_F(ReplaceFile, MakesAFileOrReplacesItAndLeavesNothingBeside) {
    for (const std::string content : {"first", "", "third"}) {
        replaceFile(with(content));
        EXPECT_EQ(readWholeFile(folder / "file"), content);
        EXPECT_EQ(modeOf(folder / "file"), 0600U);
        EXPECT_EQ(entries().size(), 1U);
    }
}

TEST_F(ReplaceFile, GivesTheModeWhateverTheMask) {
    const mode_t mask = umask(0777);
    FileReplacement replacement = with("x");
    replacement.mode = fs::perms{0644};
    replacement.durability = FileReplacement::Durability::wholeOnDisk;
    replaceFile(replacement);
    umask(mask);
    EXPECT_EQ(modeOf(folder / "file"), 0644U);
}

TEST_F(ReplaceFile, IsNotLedAstrayByWhatLiesInTheTemporaryPlace) {
    writeFile(folder / "elsewhere", "kept");
    fs::create_symlink(folder / "elsewhere", folder / "temporary");
    replaceFile(with("new"));
    EXPECT_EQ(readWholeFile(folder / "elsewhere"), "kept");
    EXPECT_EQ(readWholeFile(folder / "file"), "new");
}

TEST_F(ReplaceFile, AFailureLeavesTheOldFileAlone) {
    writeFile(folder / "file/inside", "a folder in the way");
    EXPECT_EQ(errorOf(folder / "file", [&] { replaceFile(with("new")); }), EISDIR);
    EXPECT_EQ(entries().size(), 1U);
    EXPECT_EQ(
        errorOf(
            folder / "nowhere",
            [&] { replaceFile({.file = folder / "file", .temporary = folder / "nowhere/temporary", .content = "x"}); }),
        ENOENT);
}

TEST(RemoveFile, ThrowsOnlyWhereSomethingStays) {
    const TestSupport::TemporaryFolder folder;
    writeFile(folder / "file", "x");
    removeFile(folder / "file");
    EXPECT_TRUE(fs::is_empty(folder.path()));
    EXPECT_NO_THROW(removeFile(folder / "file"));
    EXPECT_NE(errorOf(folder.path(), [&] { removeFile(folder.path()); }), 0);
}

TEST(ReadToEnd, TakesWhatADescriptorStillGives) {
    std::array<int, 2> channel{};
    ASSERT_EQ(pipe(channel.data()), 0);
    const std::string sent(200'000, 'x');
    auto writer = std::async(std::launch::async, [&] {
        EXPECT_EQ(write(channel[1], sent.data(), sent.size()), static_cast<ssize_t>(sent.size()));
        close(channel[1]);
    });
    EXPECT_EQ(readToEnd(channel[0]), sent);
    writer.get();
    close(channel[0]);
    EXPECT_EQ(readToEnd(-1), "");
}

} // namespace
} // namespace UsageModel
