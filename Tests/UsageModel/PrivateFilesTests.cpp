// What is for the owner alone: folders, files, and what is made so.

#include <future>

#include "UsageModel/Files.h"
#include "UsageModel/FilesFixture.h"

namespace UsageModel {
namespace {

namespace fs = std::filesystem;
using TestSupport::writeFile;

using PrivateFoldersTest = FilesTest;

TEST_F(PrivateFoldersTest, AreMadeForTheOwnerAloneWhateverTheMask) {
    for (const mode_t mask : {mode_t{0}, mode_t{022}, mode_t{077}, mode_t{0177}, mode_t{0777}}) {
        const fs::path top = folder.path() / std::to_string(mask);
        {
            const Umask during(mask);
            createPrivateFolders(top / "b" / "c");
        }
        for (const fs::path& made : {top, top / "b", top / "b" / "c"}) EXPECT_EQ(modeOf(made), 0700U) << made;
    }
}

TEST_F(PrivateFoldersTest, ThatExistKeepTheirModes) {
    fs::create_directory(folder / "open");
    fs::permissions(folder / "open", fs::perms(0755));
    createPrivateFolders(folder / "open");
    createPrivateFolders(folder / "open" / "new");
    EXPECT_EQ(modeOf(folder / "open"), 0755U);
    EXPECT_EQ(modeOf(folder / "open" / "new"), 0700U);
}

TEST_F(PrivateFoldersTest, MayBeReachedThroughALinkOrEndInASlash) {
    fs::create_directory(folder / "real");
    fs::create_directory_symlink(folder / "real", folder / "link");
    createPrivateFolders(folder / "link");
    createPrivateFolders(folder / "link" / "new");
    EXPECT_TRUE(fs::is_directory(folder / "real" / "new"));
    createPrivateFolders(folder.path() / "x" / "y" / "");
    EXPECT_TRUE(fs::is_directory(folder.path() / "x" / "y"));
}

TEST_F(PrivateFoldersTest, OfNoNameAreNoWork) {
    EXPECT_NO_THROW(createPrivateFolders({}));
    EXPECT_NO_THROW(createPrivateFolders("/"));
}

TEST_F(PrivateFoldersTest, CannotBeMadeWhereAFileIsInTheWay) {
    writeFile(file, "stays");
    EXPECT_EQ(errorOf(file, [&] { createPrivateFolders(file); }), EEXIST);
    EXPECT_EQ(errorOf(file / "below", [&] { createPrivateFolders(file / "below"); }), ENOTDIR);
    EXPECT_EQ(readWholeFile(file), "stays");
}

TEST_F(PrivateFoldersTest, CannotBeMadeOfADanglingLink) {
    fs::create_symlink(folder / "nowhere", file);
    EXPECT_EQ(errorOf(file, [&] { createPrivateFolders(file); }), EEXIST);
    EXPECT_FALSE(fs::exists(folder / "nowhere"));
}

TEST_F(PrivateFoldersTest, MayBeMadeByManyAtOnce) {
    for (int round = 0; round < 50; ++round) {
        const fs::path deep = folder.path() / std::to_string(round) / "a" / "b" / "c";
        std::vector<std::future<void>> makers;
        for (int i = 0; i < 4; ++i) {
            makers.push_back(std::async(std::launch::async, [&] { createPrivateFolders(deep); }));
        }
        for (auto& maker : makers) EXPECT_NO_THROW(maker.get());
        EXPECT_EQ(modeOf(deep), 0700U);
    }
}

using MakePrivateTest = FilesTest;

TEST_F(MakePrivateTest, LeavesTheOwnerAlone) {
    writeFile(file, "stays");
    fs::permissions(file, fs::perms(0777));
    makePrivate(file);
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(readWholeFile(file), "stays");

    fs::create_directory(folder / "sub");
    fs::permissions(folder / "sub", fs::perms(01777));
    makePrivate(folder / "sub");
    EXPECT_EQ(modeOf(folder / "sub"), 0700U);
}

TEST_F(MakePrivateTest, GivesTheOwnerWhatWasMissing) {
    writeFile(file, "");
    fs::permissions(file, fs::perms(0400));
    makePrivate(file);
    EXPECT_EQ(modeOf(file), 0600U);
}

TEST_F(MakePrivateTest, DoesNothingWhereThatIsSo) {
    writeFile(file, "");
    fs::permissions(file, fs::perms(0600));
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(stat(file.c_str(), &before), 0);
    makePrivate(file);
    ASSERT_EQ(stat(file.c_str(), &after), 0);
    EXPECT_EQ(before.st_ctim.tv_sec, after.st_ctim.tv_sec);
    EXPECT_EQ(before.st_ctim.tv_nsec, after.st_ctim.tv_nsec);
}

TEST_F(MakePrivateTest, ThrowsWhereThereIsNothing) {
    EXPECT_EQ(errorOf(file, [&] { makePrivate(file); }), ENOENT);
}

using PrivateFileTest = FilesTest;

TEST_F(PrivateFileTest, IsMadeForTheOwnerAloneWhateverTheMask) {
    for (const mode_t mask : {mode_t{0}, mode_t{022}, mode_t{077}, mode_t{0177}, mode_t{0777}}) {
        const fs::path path = folder.path() / std::to_string(mask);
        {
            const Umask during(mask);
            createPrivateFile(path);
        }
        EXPECT_EQ(modeOf(path), 0600U) << "under mask " << mask;
        EXPECT_EQ(fileStat(path).size, 0);
    }
}

TEST_F(PrivateFileTest, ThatExistsKeepsItsContentAndItsMode) {
    writeFile(file, "stays");
    fs::permissions(file, fs::perms(0644));
    createPrivateFile(file);
    EXPECT_EQ(readWholeFile(file), "stays");
    EXPECT_EQ(modeOf(file), 0644U);
}

TEST_F(PrivateFileTest, CannotBeMadeWhereItHasNoPlace) {
    EXPECT_EQ(errorOf(folder.path(), [&] { createPrivateFile(folder.path()); }), EISDIR);
    EXPECT_EQ(errorOf(folder / "missing" / "file", [&] { createPrivateFile(folder / "missing" / "file"); }), ENOENT);
}

TEST_F(PrivateFileTest, MayBeMadeByManyAtOnce) {
    std::vector<std::future<void>> makers;
    for (int i = 0; i < 8; ++i) makers.push_back(std::async(std::launch::async, [&] { createPrivateFile(file); }));
    for (auto& maker : makers) EXPECT_NO_THROW(maker.get());
    EXPECT_EQ(modeOf(file), 0600U);
}

} // namespace
} // namespace UsageModel
