// Logs that no well-behaved program writes. A bad line costs itself alone; a file that cannot be read fails the run,
// which then has changed nothing; and in either case the next sync goes on as if nothing had been.

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
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
using UsageIngest::SyncStats;
using UsageModel::Date;
using UsageModel::IngestProgress;
namespace fs = std::filesystem;

constexpr int noError = 0;
constexpr Date turnTime{1772360430}; // of every line of TurnLog
const std::string limitText = "session limit · resets 3pm (UTC)";

std::string repeated(std::size_t times, std::string_view text) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}

/// A line of an assistant, with its line feed; `members` end in a comma.
std::string assistant(const std::string& members, const std::string& message) {
    return R"({"type":"assistant","timestamp":"2026-03-01T10:20:30Z",)" + members + R"("message":{)" + message + "}}\n";
}
std::string turnWith(const std::string& members) {
    return assistant(members, R"("usage":{"output_tokens":9})");
}
std::string synthetic(const std::string& content) {
    return assistant("", R"("model":"<synthetic>","content":)" + content);
}

/// The system's error that `action` throws.
int errorOf(const std::function<void()>& action) {
    try {
        action();
        return noError;
    } catch (const std::system_error& error) {
        return error.code().value();
    }
}

/// The same in a process of its own; -1 where that process dies.
int errorInChild(const std::function<void()>& action) {
    const pid_t child = fork();
    if (child == 0) {
        try {
            _exit(errorOf(action));
        } catch (...) {
            abort();
        }
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void becomeNobody() {
    constexpr uid_t nobody = 65534;
    if (geteuid() != 0) return;
    if (setresgid(nobody, nobody, nobody) != 0 || setresuid(nobody, nobody, nobody) != 0) abort();
}

class HostileInputTest : public testing::Test {
protected:
    [[nodiscard]] fs::path logs() const { return folder_ / "logs"; }
    [[nodiscard]] fs::path log(const std::string& name) const { return logs() / (name + ".jsonl"); }
    /// Returns the bytes written.
    std::int64_t write(const std::string& name, const std::string& content) const {
        TestSupport::writeFile(log(name), content);
        return std::ssize(content);
    }
    std::int64_t append(const std::string& name, const std::string& content) const {
        TestSupport::appendFile(log(name), content);
        return std::ssize(content);
    }
    SyncStats sync() { return TurnLog::syncAll(store_, logs()); }
    TurnLog::Counts counts() { return TurnLog::countsIn(store_); }

    TemporaryFolder folder_;
    IngestStore store_{folder_ / "support/usage.db"};
};

TEST_F(HostileInputTest, ATurnOfAHundredMegabytesCountsOnceItEnds) {
    const std::string huge = R"({"x":")" + std::string(100'000'000, 'x') + R"(",)" + line(1).substr(1);
    write("a", huge.substr(0, huge.size() - 1));
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1}));
    append("a", "\n" + line(2));
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1,
                                 .filesChanged = 1,
                                 .eventsInserted = 2,
                                 .bytesRead = std::ssize(huge) + std::ssize(line(2))}));
    EXPECT_EQ(counts(), onceEach(1, 2));
}

TEST_F(HostileInputTest, MillionsOfTinyLinesGiveNothing) {
    const std::size_t million = 1'000'000;
    const std::int64_t size = write("a", repeated(million, "\n") + repeated(million, "\"assistant\"\n") +
                                             repeated(million, "{}\n") + line(1));
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1, .filesChanged = 1, .eventsInserted = 1, .bytesRead = size}));
    EXPECT_EQ(counts(), onceEach(1, 1));
}

struct BadLine {
    const char* name;
    std::string content;
    std::int64_t limits = 0;
};

void PrintTo(const BadLine& row, std::ostream* out) {
    *out << row.name;
}

class BadLineTest : public HostileInputTest, public testing::WithParamInterface<BadLine> {};

TEST_P(BadLineTest, CostsItselfAlone) {
    const std::int64_t size = write("a", line(1) + GetParam().content + line(2));
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1,
                                 .filesChanged = 1,
                                 .eventsInserted = 2,
                                 .anchorsInserted = GetParam().limits,
                                 .bytesRead = size}));
    EXPECT_EQ(counts(), onceEach(1, 2));
    EXPECT_EQ(std::ssize(store_.anchors()), GetParam().limits);
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1}));
}

constexpr std::size_t depth = 10'000;

INSTANTIATE_TEST_SUITE_P(
    Hostile, BadLineTest,
    testing::Values(
        BadLine{"deep objects", turnWith(R"("x":)" + repeated(depth, R"({"x":)") + "0" + repeated(depth, "}") + ",")},
        BadLine{"deep and never closed", turnWith(R"("x":)" + repeated(depth, "["))},
        BadLine{"deep blocks", synthetic(repeated(depth, "[") + "\"" + limitText + "\"" + repeated(depth, "]"))},
        BadLine{"deep text", synthetic("\"" + repeated(depth, "[") + limitText + repeated(depth, "]") + "\""), 1},
        BadLine{"NUL for a blank", turnWith(std::string("\0", 1))},
        BadLine{"NUL in a string", turnWith(std::string("\"x\":\"\0\",", 8))},
        BadLine{"NUL behind", turnWith("").insert(turnWith("").size() - 1, 1, '\0')},
        BadLine{"a hole before a turn", std::string(1 << 20, '\0') + turnWith("")},
        BadLine{"NUL in the type", R"({"type":"assistant\u0000",)" + turnWith("").substr(20)},
        BadLine{"lone low surrogate", turnWith(R"("x":"\udc00",)")},
        BadLine{"high surrogate before a letter", turnWith(R"("x":"\ud800\u0061",)")},
        BadLine{"surrogate as a key", turnWith(R"("\ud800":1,)")},
        BadLine{"surrogate as UTF-8", turnWith("\"x\":\"\xED\xA0\x80\",")},
        BadLine{"surrogate in a limit message", synthetic(R"("\ud800 )" + limitText + "\"")},
        BadLine{"surrogate in blocks within a text", synthetic(R"("[{\"text\":\"\\ud800 )" + limitText + R"(\"}]")"),
                1}));

// Texts in which the search for a limit message finds a place to begin everywhere, and fails late.
TEST_F(HostileInputTest, ContrivedLimitMessagesDoNotHoldUpTheImport) {
    const unsigned secondsAllowed = 2; // a true message takes microseconds
    for (const std::string& text :
         {repeated(4, repeated(11'000, "session ") + "·"), repeated(4, repeated(6'000, "session limit ·") + "9")}) {
        write("a", synthetic("\"" + text + " resets (x)\""));
        const int error = errorInChild([&] {
            alarm(secondsAllowed);
            IngestStore store(folder_ / "other.db");
            TurnLog::syncAll(store, logs());
        });
        EXPECT_EQ(error, noError) << text.substr(0, 20);
    }
}

// What binds a text to a row ends it at its first NUL.
TEST_F(HostileInputTest, EscapedNulsEndTheStoredTexts) {
    write("a",
          assistant(R"("sessionId":"s\u0000t",)", R"("model":"\u0000claude-opus-4-5","usage":{"output_tokens":1})"));
    sync();
    const auto events = store_.allEvents();
    ASSERT_EQ(events->size(), 1U);
    EXPECT_EQ(events->front().sessionId, "s");
    EXPECT_TRUE(events->front().model.empty());
    EXPECT_EQ(events->front().modelClass, UsageModel::ModelClass::opus) << "as it was told before the name was cut";
}

struct TokenCounts {
    std::vector<std::string> written;
    /// The total of the stored turn.
    std::optional<std::int64_t> total;
};

void PrintTo(const TokenCounts& row, std::ostream* out) {
    for (const std::string& count : row.written) *out << count << ' ';
}

class TokenCountsTest : public HostileInputTest, public testing::WithParamInterface<TokenCounts> {};

TEST_P(TokenCountsTest, AreStoredExactlyOrNotAtAll) {
    const std::vector<std::string> keys{"input_tokens", "output_tokens", "cache_creation_input_tokens",
                                        "cache_read_input_tokens"};
    std::string usage;
    for (std::size_t i = 0; i < GetParam().written.size(); ++i)
        usage += (i == 0 ? "\"" : ",\"") + keys[i] + "\":" + GetParam().written[i];
    write("a", assistant("", R"("usage":{)" + usage + "}"));
    sync();
    const auto events = store_.allEvents();
    ASSERT_EQ(events->size(), GetParam().total ? 1U : 0U);
    if (events->empty()) return;
    const UsageModel::UsageEvent& event = events->front();
    EXPECT_EQ(UsageModel::rawTokens(event), *GetParam().total);
    const std::vector<std::int64_t> stored{event.input, event.output, event.cacheCreation, event.cacheRead};
    for (std::size_t i = 0; i < GetParam().written.size(); ++i) EXPECT_EQ(stored[i], std::stoll(GetParam().written[i]));
}

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
const std::string mostText = "9223372036854775807";
const std::string leastText = "-9223372036854775808";

INSTANTIATE_TEST_SUITE_P(
    Hostile, TokenCountsTest,
    testing::Values(TokenCounts{{mostText}, most}, TokenCounts{{mostText, "1"}, most},
                    TokenCounts{{mostText, mostText, mostText, mostText}, most},
                    TokenCounts{{mostText, mostText, leastText, "1"}, most}, TokenCounts{{mostText, leastText, "2"}, 1},
                    TokenCounts{{mostText, leastText, "1"}, {}}, TokenCounts{{leastText}, {}},
                    TokenCounts{{leastText, leastText}, {}},
                    TokenCounts{{"9223372036854774784.0"}, 9223372036854774784},
                    TokenCounts{{"9223372036854775808"}, {}}, TokenCounts{{"1", "-9223372036854775809"}, {}},
                    TokenCounts{{"1", "18446744073709551616"}, {}}, TokenCounts{{"1", "1e400"}, {}}));

struct Impostor {
    const char* name;
    std::function<void(const fs::path&)> make;
    int error;
};

void PrintTo(const Impostor& row, std::ostream* out) {
    *out << row.name;
}

class ImpostorTest : public HostileInputTest, public testing::WithParamInterface<Impostor> {};

TEST_P(ImpostorTest, FailsTheRunUntilItIsGone) {
    write("a", line(1));
    sync();
    const std::int64_t added = append("a", line(2));
    GetParam().make(log("b"));
    for (int attempt = 0; attempt < 2; ++attempt) EXPECT_EQ(errorOf([&] { sync(); }), GetParam().error);
    EXPECT_EQ(counts(), onceEach(1, 1));
    fs::remove_all(log("b"));
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1, .filesChanged = 1, .eventsInserted = 1, .bytesRead = added}));
    EXPECT_EQ(counts(), onceEach(1, 2));
}

INSTANTIATE_TEST_SUITE_P(
    Hostile, ImpostorTest,
    testing::Values(
        Impostor{"folder", [](const fs::path& path) { fs::create_directory(path); }, EISDIR},
        Impostor{"folder with a log", [](const fs::path& path) { TestSupport::writeFile(path / "c.jsonl", line(3)); },
                 EISDIR},
        Impostor{"link to a folder", [](const fs::path& path) { fs::create_directory_symlink("..", path); }, EISDIR},
        Impostor{"dangling link", [](const fs::path& path) { fs::create_symlink("nowhere", path); }, ENOENT},
        Impostor{"link below a file", [](const fs::path& path) { fs::create_symlink("a.jsonl/x", path); }, ENOTDIR},
        Impostor{"link to itself", [](const fs::path& path) { fs::create_symlink(path.filename(), path); }, ELOOP},
        Impostor{"pipe", [](const fs::path& path) { mkfifo(path.c_str(), 0600); }, EINVAL},
        Impostor{"endless device", [](const fs::path& path) { fs::create_symlink("/dev/zero", path); }, EINVAL}));

TEST_F(HostileInputTest, LoopsOfFolderLinksAreWalkedOnce) {
    write("a/b/c", line(1));
    fs::create_directory_symlink("..", logs() / "a/b/up");
    fs::create_directory_symlink("there", logs() / "here");
    fs::create_directory_symlink("here", logs() / "there");
    EXPECT_EQ(sync().filesScanned, 1);
    EXPECT_EQ(counts(), onceEach(1, 1));
}

TEST_F(HostileInputTest, FoldersBeyondTheLongestPathArePassedOver) {
    write("a", line(1));
    const std::string name(250, 'd');
    int folder = open(logs().c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < 20; ++level) { // 5,000 bytes; a path has 4,096 at most
        ASSERT_EQ(mkdirat(folder, name.c_str(), 0700), 0);
        const int inner = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY);
        close(std::exchange(folder, inner));
    }
    close(openat(folder, "b.jsonl", O_WRONLY | O_CREAT, 0600));
    close(folder);
    EXPECT_EQ(sync().filesScanned, 1);
    EXPECT_EQ(counts(), onceEach(1, 1));
}

// Some differ in bytes alone that are no UTF-8, or are one name for whoever reads them as patterns or to the first NUL.
TEST_F(HostileInputTest, FilesOfOddNamesAreToldApart) {
    const std::vector<std::string> names{
        "x\xff", "x\xfe", "x\xED\xA0\x80", "x\n", "x", "\n", "x\n\n", "x'; --", "x%", "x_", " x", "x ", "X", "\\x00"};
    const auto turnsOf = [](std::size_t i) { return line(static_cast<long>(i)) + line(static_cast<long>(i) + 100); };
    for (std::size_t i = 0; i < names.size(); ++i) write(names[i], turnsOf(i + 1));
    sync();
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = std::ssize(names)}));

    auto expected = onceEach(1, std::ssize(names));
    expected.merge(onceEach(101, 100 + std::ssize(names)));
    EXPECT_EQ(counts(), expected);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto turn = static_cast<long>(i + 1);
        fs::resize_file(log(names[i]), line(turn).size());
        sync();
        expected.erase(turn + 100);
        EXPECT_EQ(counts(), expected) << names[i];
    }
}

TEST_F(HostileInputTest, WithoutPermission) {
    write("a", line(1));
    write("sub/b", line(2));
    const fs::path locked = log("sub/b");
    fs::create_directory(folder_ / "nobody");
    for (const fs::path& path : {folder_.path(), folder_ / "nobody", logs(), logs() / "sub", log("a"), locked})
        fs::permissions(path, fs::perms::all);
    const fs::path database = folder_ / "nobody/usage.db";
    const auto error = [&] {
        return errorInChild([&] {
            becomeNobody();
            IngestStore store(database);
            TurnLog::syncAll(store, logs());
        });
    };
    const auto stored = [&] {
        IngestStore store(database);
        return TurnLog::countsIn(store);
    };
    EXPECT_EQ(error(), noError);
    append("a", line(3));
    append("sub/b", line(4));

    fs::permissions(locked, fs::perms::none);
    EXPECT_EQ(error(), EACCES);
    EXPECT_EQ(stored(), onceEach(1, 2));

    fs::permissions(locked.parent_path(), fs::perms::owner_read | fs::perms::others_read); // its names can be read
    EXPECT_EQ(error(), EACCES);
    EXPECT_EQ(stored(), onceEach(1, 2));

    fs::permissions(locked.parent_path(), fs::perms::none);
    EXPECT_EQ(error(), noError) << "a folder that cannot be read is passed over";
    EXPECT_EQ(stored(), onceEach(1, 3));

    fs::permissions(locked.parent_path(), fs::perms::all);
    fs::permissions(locked, fs::perms::all);
    EXPECT_EQ(error(), noError);
    EXPECT_EQ(stored(), onceEach(1, 4));
}

TEST_F(HostileInputTest, AFileThatVanishesDuringTheRunKeepsItsRows) {
    const long last = 1000; // far behind what is read ahead of the first report
    UsageIngest::LogFiles files;
    for (long i = 1; i <= last; ++i) {
        write(std::to_string(i), line(i));
        files.push_back(log(std::to_string(i)));
    }
    store_.sync(files);
    for (const long i : {1L, last}) append(std::to_string(i), line(last + i));
    const auto vanish = [&](const IngestProgress&) { fs::remove(files.back()); };
    EXPECT_EQ(errorOf([&] { store_.sync(files, vanish); }), ENOENT);
    EXPECT_EQ(counts(), onceEach(1, last));
    sync();
    EXPECT_EQ(counts(), onceEach(1, last + 1));
}

TEST_F(HostileInputTest, AClockSetBackLosesAndRepeatsNothing) {
    write("a", line(1));
    sync();
    std::string early = line(2);
    early.replace(early.find("2026-03-01T10:20:30.000"), 23, "1970-01-01T00:00:00.000");
    const std::int64_t added = append("a", early);
    fs::last_write_time(log("a"), fs::last_write_time(log("a")) - std::chrono::years(50));
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1, .filesChanged = 1, .eventsInserted = 1, .bytesRead = added}));
    EXPECT_EQ(sync(), (SyncStats{.filesScanned = 1}));
    EXPECT_EQ(counts(), onceEach(1, 2));
    EXPECT_EQ(store_.eventSpan(), (IngestStore::Span{2, Date{0}, turnTime}));
    EXPECT_EQ(store_.allEvents()->front().output, 2);
    EXPECT_EQ(store_.events(turnTime).size(), 1U);
}

} // namespace
