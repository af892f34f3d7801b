#include "UsageIngest/LogDiscovery.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

namespace {

using TestSupport::TemporaryFolder;
namespace fs = std::filesystem;

std::set<std::string> found(const fs::path& root) {
    std::set<std::string> names;
    for (const std::string& path : UsageIngest::LogDiscovery(root).discover())
        names.insert(fs::path(path).lexically_relative(root).string());
    return names;
}

TEST(LogDiscovery, NestedLogsAndNothingElse) {
    const TemporaryFolder root;
    for (const char* name :
         {"top.jsonl", "a/b/c.jsonl", "x.JSONL", "y.json", "z.jsonl.bak", ".hidden/x.jsonl", "a/.x.jsonl", "jsonl"}) {
        TestSupport::writeFile(root / name, "");
    }
    EXPECT_EQ(found(root.path()), (std::set<std::string>{"top.jsonl", "a/b/c.jsonl"}));
}

TEST(LogDiscovery, TheKindOfAnEntryIsNotLookedAt) {
    const TemporaryFolder root;
    TestSupport::writeFile(root / "folder.jsonl/inner.jsonl", "");
    fs::create_symlink("nowhere", root / "dangling.jsonl");
    EXPECT_EQ(found(root.path()),
              (std::set<std::string>{"folder.jsonl", "folder.jsonl/inner.jsonl", "dangling.jsonl"}));
}

TEST(LogDiscovery, LinksToFoldersAreNotFollowed) {
    const TemporaryFolder root;
    TestSupport::writeFile(root / "a/x.jsonl", "");
    fs::create_directory_symlink("..", root / "a/loop");
    fs::create_directory_symlink(root / "a", root / "again");
    EXPECT_EQ(found(root.path()), (std::set<std::string>{"a/x.jsonl"}));
}

TEST(LogDiscovery, ARootThatIsALinkOrEndsInASlashIsWalked) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "real/x.jsonl", "");
    fs::create_directory_symlink("real", folder / "link");
    EXPECT_EQ(found(folder / "link").size(), 1U);
    const std::string withSlash = (folder / "real/").native();
    EXPECT_EQ(UsageIngest::LogDiscovery(withSlash).discover(), UsageIngest::LogFiles{withSlash + "x.jsonl"});
}

TEST(LogDiscovery, AMissingRootAndAFileAsRootAreEmpty) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "file.jsonl", "");
    EXPECT_TRUE(found(folder / "absent").empty());
    EXPECT_TRUE(found(folder / "file.jsonl").empty());
}

TEST(LogDiscovery, OddNamesComeThroughByteForByte) {
    const TemporaryFolder root;
    for (const char* name : {"new\nline.jsonl", "\xff\xfe.jsonl", "blank s.jsonl", "ü/ö.jsonl"})
        TestSupport::writeFile(root / name, "");
    EXPECT_EQ(found(root.path()),
              (std::set<std::string>{"new\nline.jsonl", "\xff\xfe.jsonl", "blank s.jsonl", "ü/ö.jsonl"}));
}

} // namespace
