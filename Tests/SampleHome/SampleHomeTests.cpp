#include "SampleHome/SampleHome.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/IngestStore.h"
#include "UsageIngest/LogDiscovery.h"

namespace {

using SampleHome::makeSampleHome;
using SampleHome::Summary;
using TestSupport::TemporaryFolder;
namespace fs = std::filesystem;

constexpr double now = 1790000000;
constexpr std::uint64_t wishedBytes = 3'000'000;

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::map<std::string, std::string> treeOf(const fs::path& home) {
    std::map<std::string, std::string> tree;
    for (const auto& entry : fs::recursive_directory_iterator(home)) {
        if (entry.is_regular_file()) tree[fs::relative(entry.path(), home).string()] = contentOf(entry.path());
    }
    return tree;
}

struct Made {
    TemporaryFolder folder;
    Summary summary;

    explicit Made(std::uint64_t seed = 1)
        : summary(makeSampleHome({.home = folder / "home", .seed = seed, .bytes = wishedBytes, .now = now})) {}
    [[nodiscard]] fs::path home() const { return folder / "home"; }
};

TEST(SampleHome, OneSeedOneTree) {
    const Made first(7);
    const Made second(7);
    const Made other(8);
    EXPECT_EQ(treeOf(first.home()), treeOf(second.home()));
    EXPECT_NE(treeOf(first.home()), treeOf(other.home()));
    EXPECT_EQ(first.summary, second.summary);
}

TEST(SampleHome, SummaryIsWhatAnotherReaderCounts) {
    const Made made;
    Summary counted;
    bool nestedUsage = false;
    int torn = 0;
    for (const auto& [name, content] : treeOf(made.home())) {
        ++counted.files;
        const std::size_t complete = content.rfind('\n') + 1;
        torn += complete == content.size() ? 0 : 1;
        counted.bytes += complete;
        std::istringstream lines(content.substr(0, complete));
        for (std::string line; std::getline(lines, line);) {
            ++counted.lines;
            if (line.empty() || line.starts_with("//")) continue;
            const auto json = nlohmann::json::parse(line);
            const std::string type = json.value("type", "");
            nestedUsage = nestedUsage || (type != "assistant" && line.find("\"usage\"") != std::string::npos);
            if (type != "assistant" || json["message"].value("model", "") == "<synthetic>") continue;
            const auto& usage = json["message"]["usage"];
            ++counted.turns;
            counted.tokens.input += usage.value("input_tokens", 0U);
            counted.tokens.output += usage.value("output_tokens", 0U);
            counted.tokens.cacheCreation += usage.value("cache_creation_input_tokens", 0U);
            counted.tokens.cacheRead += usage.value("cache_read_input_tokens", 0U);
        }
    }
    counted.limitMessages = made.summary.limitMessages;
    EXPECT_EQ(made.summary, counted);
    EXPECT_TRUE(nestedUsage);
    EXPECT_EQ(torn, 1) << "the newest file ends in half a line";
    EXPECT_NEAR(static_cast<double>(counted.bytes), wishedBytes, 10'000) << "within about a line";
    const double share = static_cast<double>(counted.turns) / static_cast<double>(counted.lines);
    EXPECT_GT(share, 0.25);
    EXPECT_LT(share, 0.45);
}

TEST(SampleHome, AnImportFindsJustThat) {
    const Made made;
    auto store = UsageIngest::IngestStore::inMemory();
    const auto stats = store.sync(UsageIngest::LogDiscovery(made.home() / ".claude/projects").discover());
    EXPECT_EQ(static_cast<std::uint64_t>(stats.filesScanned), made.summary.files);
    EXPECT_EQ(static_cast<std::uint64_t>(stats.eventsInserted), made.summary.turns);
    EXPECT_EQ(static_cast<std::uint64_t>(stats.anchorsInserted), made.summary.limitMessages);
    EXPECT_EQ(static_cast<std::uint64_t>(stats.bytesRead), made.summary.bytes);
    SampleHome::Tokens tokens;
    for (const auto& event : *store.allEvents()) {
        tokens.input += static_cast<std::uint64_t>(event.input);
        tokens.output += static_cast<std::uint64_t>(event.output);
        tokens.cacheCreation += static_cast<std::uint64_t>(event.cacheCreation);
        tokens.cacheRead += static_cast<std::uint64_t>(event.cacheRead);
        EXPECT_LE(event.ts.secondsSince1970, now);
    }
    EXPECT_EQ(tokens, made.summary.tokens);
}

TEST(SampleHome, AHomeInUseIsRefusedUntouched) {
    const TemporaryFolder home;
    TestSupport::writeFile(home / ".claude/settings.json", "{}");
    EXPECT_THROW(makeSampleHome({.home = home.path(), .now = now}), SampleHome::HomeOccupied);
    EXPECT_EQ(treeOf(home.path()).size(), 1U);
}

TEST(SampleHome, TheNewestFileIsTheOneInHalfALine) {
    const Made made;
    fs::path newest;
    for (const auto& entry : fs::recursive_directory_iterator(made.home())) {
        if (!entry.is_regular_file()) continue;
        if (newest.empty() || entry.last_write_time() > fs::last_write_time(newest)) newest = entry.path();
    }
    const std::string content = contentOf(newest);
    const std::string last = content.substr(content.rfind('\n') + 1);
    EXPECT_TRUE(last.starts_with("{"));
    EXPECT_FALSE(nlohmann::json::accept(last));
}

TEST(SampleHome, AWishedNumberOfFilesIsKeptWhileFilesHaveFourKilobytes) {
    const TemporaryFolder folder;
    const auto made = [&](const char* name, std::size_t files) {
        return makeSampleHome({.home = folder / name, .bytes = 400'000, .now = now, .files = files}).files;
    };
    EXPECT_EQ(made("one", 1), 1U);
    EXPECT_EQ(made("fifty", 50), 50U);
    EXPECT_EQ(made("tooMany", 5000), 400'000U / 4096U);
}

TEST(SampleHome, TheSmallestWishIsOneLineAtLeast) {
    const TemporaryFolder folder;
    const Summary summary = makeSampleHome({.home = folder / "home", .bytes = 1, .now = now, .days = 1});
    EXPECT_EQ(summary.files, 1U);
    EXPECT_EQ(summary.lines, 1U);
}

TEST(SampleHome, WishesOutOfRangeAreRefusedUntouched) {
    const TemporaryFolder folder;
    EXPECT_THROW(makeSampleHome({.now = now}), std::invalid_argument);
    EXPECT_THROW(makeSampleHome({.home = folder / "home", .now = now, .days = 0}), std::invalid_argument);
    EXPECT_THROW(makeSampleHome({.home = folder / "home", .now = now, .days = 3651}), std::invalid_argument);
    EXPECT_THROW(makeSampleHome({.home = folder / "home", .now = std::nan("")}), std::invalid_argument);
    EXPECT_THROW(makeSampleHome({.home = folder / "home", .now = 0}), std::invalid_argument);
    EXPECT_FALSE(fs::exists(folder / "home"));
}

TEST(SampleHome, AHomeThatCannotBeMadeIsToldWithPathAndReason) {
    const TemporaryFolder folder;
    TestSupport::writeFile(folder / "file", "");
    try {
        makeSampleHome({.home = folder / "file/home", .now = now});
        FAIL() << "a file took the place of a folder";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find((folder / "file/home").string()), std::string::npos) << error.what();
        EXPECT_NE(std::string(error.what()).find("Not a directory"), std::string::npos) << error.what();
    }
}

TEST(SampleHome, ALinkInThePlaceOfTheFolderIsAHomeInUse) {
    const TemporaryFolder home;
    fs::create_directory_symlink("nowhere", home / ".claude");
    EXPECT_THROW(makeSampleHome({.home = home.path(), .now = now}), SampleHome::HomeOccupied);
}

} // namespace
