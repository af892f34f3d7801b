#include "UsageIngest/IngestStore.h"

#include <fstream>
#include <iterator>
#include <thread>

#include <functional>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/TurnLog.h"

namespace {

using TestSupport::TemporaryFolder;
using UsageIngest::IngestStore;
using UsageIngest::SQLiteDB;
using UsageIngest::SQLiteError;
using UsageModel::Date;
using UsageModel::ModelClass;
namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

mode_t modeOf(const fs::path& path) {
    struct stat attributes {};
    return stat(path.c_str(), &attributes) == 0 ? attributes.st_mode & 07777 : 0;
}

class IngestStoreTest : public testing::Test {
protected:
    void exec(const std::string& sql) const { SQLiteDB(database_.native()).exec(sql); }
    [[nodiscard]] std::string value(const std::string& sql) const {
        SQLiteDB db(database_.native());
        auto row = db.prepare(sql);
        return row.step() && !row.isNull(0) ? std::string(row.text(0)) : "none";
    }
    [[nodiscard]] std::string meta(const std::string& key) const {
        return value("SELECT value FROM meta WHERE key='" + key + "';");
    }
    void insertEvent(double ts, const std::string& columnsAndValues = "") const {
        exec("INSERT INTO usage_event(ts,file_path,output) VALUES(" + std::to_string(ts) + ",'f',1);" +
             (columnsAndValues.empty()
                  ? ""
                  : "UPDATE usage_event SET " + columnsAndValues + " WHERE rowid=last_insert_rowid();"));
    }

    TemporaryFolder folder_;
    fs::path database_ = folder_ / "a/b/usage.db";
};

TEST_F(IngestStoreTest, OpeningMakesAPrivateDatabaseAndTwiceChangesNothing) {
    const mode_t before = umask(0);
    { const IngestStore store(database_); }
    umask(before);
    EXPECT_EQ(modeOf(folder_ / "a/b"), 0700U);
    EXPECT_EQ(modeOf(database_), 0600U);
    const std::string content = contentOf(database_);
    const IngestStore store(database_);
    EXPECT_EQ(contentOf(database_), content);
    EXPECT_EQ(modeOf(fs::path(database_.native() + "-wal")), 0600U);
    EXPECT_EQ(meta("schema_version"), "2");
    EXPECT_EQ(meta("reingest_pending"), "none");
}

TEST_F(IngestStoreTest, AnOlderSchemaIsBroughtUpToDateOnce) {
    fs::create_directories(database_.parent_path());
    exec(
        "CREATE TABLE usage_event(ts REAL NOT NULL, session_id TEXT, file_path TEXT NOT NULL, model TEXT, model_class TEXT,"
        "input INTEGER, output INTEGER, cache_creation INTEGER, cache_read INTEGER);"
        "INSERT INTO usage_event(ts,file_path,model) VALUES(5,'f','claude-opus-x');");
    { EXPECT_EQ(IngestStore(database_).allEvents()->size(), 1U); }
    EXPECT_EQ(meta("reingest_pending"), "1");
    exec("DELETE FROM meta WHERE key='reingest_pending';");
    { const IngestStore store(database_); }
    EXPECT_EQ(meta("reingest_pending"), "none");
}

TEST_F(IngestStoreTest, RowsAreReadTolerantly) {
    IngestStore store(database_);
    insertEvent(1, "model='claude-opus-x', model_class='sonnet', effort='bogus'");
    insertEvent(2, "model='', model_class='haiku', effort='max'");
    insertEvent(3, "model='', model_class='bogus', session_id='s'");
    insertEvent(4);
    const auto events = *store.allEvents();
    ASSERT_EQ(events.size(), 4U);
    EXPECT_EQ(events[0].modelClass, ModelClass::opus);
    EXPECT_FALSE(events[0].effort);
    EXPECT_EQ(events[1].modelClass, ModelClass::haiku);
    EXPECT_EQ(events[1].effort, UsageModel::EffortLevel::max);
    EXPECT_EQ(events[2].modelClass, ModelClass::other);
    EXPECT_EQ(events[2].sessionId, "s");
    EXPECT_EQ(events[3].input, 0);
    EXPECT_TRUE(events[3].model.empty());
}

TEST_F(IngestStoreTest, EventsSinceIncludeTheInstantAndGoByTime) {
    IngestStore store(database_);
    for (const double ts : {30.0, 10.0, 20.0}) insertEvent(ts);
    const auto since = store.events(Date{20});
    ASSERT_EQ(since.size(), 2U);
    EXPECT_EQ(since[0].ts, Date{20});
    EXPECT_EQ(store.events(std::nullopt), *store.allEvents());
    EXPECT_EQ(store.events(std::nullopt)[0].ts, Date{10});
    EXPECT_EQ(store.eventSpan(), (IngestStore::Span{3, Date{10}, Date{30}}));
}

TEST_F(IngestStoreTest, TurnsOfTheSameTimeKeepTheOrderOfTheirRows) {
    IngestStore store(database_);
    // Forty times, shuffled, each of them some fifty times over.
    exec("WITH RECURSIVE row(n) AS (SELECT 0 UNION ALL SELECT n+1 FROM row WHERE n<1999) "
         "INSERT INTO usage_event(ts,session_id,file_path,output) "
         "SELECT (n*7919)%1999%40, 's'||n, 'f', n FROM row;");
    const auto events = *store.allEvents();
    ASSERT_EQ(events.size(), 2000U);
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const auto& event = events[i];
        EXPECT_EQ(event.ts, Date{static_cast<double>(event.output * 7919 % 1999 % 40)});
        EXPECT_EQ(event.sessionId, "s" + std::to_string(event.output));
        sum += event.output;
        if (i == 0) continue;
        EXPECT_TRUE(std::pair(events[i - 1].ts, events[i - 1].output) < std::pair(event.ts, event.output)) << i;
    }
    EXPECT_EQ(sum, 1999 * 2000 / 2);
}

TEST_F(IngestStoreTest, AnEmptyStoreSpansNothing) {
    IngestStore store = IngestStore::inMemory();
    EXPECT_EQ(store.eventSpan(), IngestStore::Span{});
    EXPECT_TRUE(store.allEvents()->empty());
    EXPECT_TRUE(store.anchors().empty());
}

TEST_F(IngestStoreTest, AnchorsThatCannotBeUnderstoodAreLeftOut) {
    IngestStore store(database_);
    exec(
        "INSERT OR IGNORE INTO anchor VALUES(2,'syntheticLog','session5h','ceiling',1.0,9),(2,'syntheticLog','session5h','ceiling',0.5,8),"
        "(1,'oauth','weeklyOpus','percentage',NULL,NULL),(3,'oauth','bogus','ceiling',1,1),(4,'bogus','session5h','ceiling',1,1),"
        "(5,'oauth','session5h','bogus',1,1);");
    const auto anchors = store.anchors();
    ASSERT_EQ(anchors.size(), 2U);
    EXPECT_EQ(anchors[0].window, UsageModel::WindowKind::weeklyOpus);
    EXPECT_FALSE(anchors[0].usedFraction || anchors[0].resetsAt);
    EXPECT_EQ(anchors[1].usedFraction, 1.0);
    EXPECT_EQ(anchors[1].resetsAt, Date{9});
}

TEST_F(IngestStoreTest, AllEventsKeepsItsListUntilSomethingChanges) {
    IngestStore store(database_);
    TestSupport::writeFile(folder_ / "logs/a.jsonl", TurnLog::line(1) + TurnLog::line(2));
    TurnLog::syncAll(store, folder_ / "logs");
    const auto first = store.allEvents();
    EXPECT_EQ(store.allEvents(), first);

    TestSupport::appendFile(folder_ / "logs/a.jsonl", TurnLog::line(3));
    TurnLog::syncAll(store, folder_ / "logs");
    EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, 3));
    EXPECT_EQ(first->size(), 2U) << "what was given out never changes";

    exec("DELETE FROM usage_event WHERE output=1;"); // another connection
    EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(2, 3));

    fs::resize_file(folder_ / "logs/a.jsonl", TurnLog::line(1).size());
    TurnLog::syncAll(store, folder_ / "logs");
    EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, 1));
}

TEST_F(IngestStoreTest, DamagedAndForeignFilesAreRefusedUntouched) {
    fs::create_directories(database_.parent_path());
    const auto expectRefused = [&] {
        fs::permissions(database_, fs::perms(0644));
        const std::string content = contentOf(database_);
        EXPECT_THROW(IngestStore{database_}, SQLiteError);
        EXPECT_EQ(contentOf(database_), content);
        EXPECT_EQ(modeOf(database_), 0644U);
    };
    TestSupport::writeFile(database_, std::string(5000, 'x'));
    expectRefused();
    TestSupport::writeFile(database_, "short");
    expectRefused();
    fs::remove(database_);
    exec("CREATE TABLE meta(key TEXT PRIMARY KEY, value TEXT); CREATE TABLE songs(title TEXT);");
    expectRefused();
    fs::remove(database_);
    exec("CREATE TABLE usage_event(ts REAL);");
    expectRefused();
}

TEST_F(IngestStoreTest, AnOpeningMakesWhatIsMissing) {
    fs::create_directories(database_.parent_path());
    exec("CREATE TABLE meta(key TEXT PRIMARY KEY, value TEXT);");
    TestSupport::writeFile(folder_ / "logs/a.jsonl", TurnLog::line(1));
    const auto expectWhole = [&] {
        IngestStore store(database_);
        TurnLog::syncAll(store, folder_ / "logs");
        EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, 1));
    };
    expectWhole();
    for (const char* loss : {"DROP TABLE anchor;", "DROP INDEX ix_event_path;", "DELETE FROM meta;"}) {
        exec(loss);
        expectWhole();
    }
}

TEST_F(IngestStoreTest, AFileThatNobodyMayWriteIsMadeTheOwnersAgain) {
    fs::permissions(folder_.path(), fs::perms(0777));
    const auto asNobody = [&](const std::function<void()>& work) {
        const pid_t child = fork();
        if (child == 0) {
            if (setgid(65534) != 0 || setuid(65534) != 0) _exit(2);
            try {
                work();
            } catch (const std::exception&) {
                _exit(1);
            }
            _exit(0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        return WEXITSTATUS(status);
    };
    if (geteuid() != 0) GTEST_SKIP() << "needs the right to become another user";
    TestSupport::writeFile(folder_ / "logs/a.jsonl", TurnLog::line(1));
    const auto sync = [&] {
        IngestStore store(database_);
        TurnLog::syncAll(store, folder_ / "logs");
        TestSupport::appendFile(folder_ / "note", "x");
    };
    EXPECT_EQ(asNobody(sync), 0);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(asNobody([&] { fs::permissions(database_, fs::perms(0400)); }), 0);
        EXPECT_EQ(asNobody(sync), 0);
        EXPECT_EQ(modeOf(database_), 0600U);
    }
}

TEST_F(IngestStoreTest, AFolderInTheWayIsAnError) {
    fs::create_directories(database_);
    EXPECT_THROW(IngestStore{database_}, SQLiteError);
    TestSupport::writeFile(folder_ / "file", "x");
    EXPECT_THROW(IngestStore{folder_ / "file/usage.db"}, std::system_error);
}

TEST_F(IngestStoreTest, IsOpenedAndReadWhileAnotherWrites) {
    IngestStore(database_).sync({});
    SQLiteDB other(database_.native());
    other.exec("BEGIN IMMEDIATE;");
    const auto begun = std::chrono::steady_clock::now();
    IngestStore store(database_);
    EXPECT_TRUE(store.allEvents()->empty());
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(SQLiteDB::busyTimeoutMilliseconds));
}

TEST_F(IngestStoreTest, AWriterIsWaitedFor) {
    IngestStore store(database_);
    SQLiteDB other(database_.native());
    other.exec("BEGIN IMMEDIATE;");
    TestSupport::writeFile(folder_ / "logs/a.jsonl", TurnLog::line(1));
    std::thread release([&] { other.exec("COMMIT;"); });
    EXPECT_NO_THROW(TurnLog::syncAll(store, folder_ / "logs"));
    release.join();
}

TEST_F(IngestStoreTest, ManyProcessesMayOpenANewDatabaseAtOnce) {
    TestSupport::writeFile(folder_ / "logs/a.jsonl", TurnLog::line(1));
    std::vector<pid_t> children;
    for (int i = 0; i < 8; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            try {
                IngestStore store(database_);
                TurnLog::syncAll(store, folder_ / "logs");
                _exit(0);
            } catch (const std::exception& error) {
                std::fprintf(stderr, "%s\n", error.what());
                _exit(1);
            }
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    IngestStore store(database_);
    EXPECT_EQ(TurnLog::countsIn(store), TurnLog::onceEach(1, 1));
}

TEST(SQLite, ErrorsTellTheirWordsAndCode) {
    try {
        SQLiteDB(":memory:").exec("nonsense;");
        FAIL();
    } catch (const SQLiteError& error) {
        EXPECT_EQ(error.code(), SQLITE_ERROR);
        EXPECT_EQ(error.description(), "SQLite error 1: near \"nonsense\": syntax error");
    }
    SQLiteDB db(":memory:");
    EXPECT_THROW(static_cast<void>(db.prepare("SELECT nothing;")), SQLiteError);
    EXPECT_THROW(static_cast<void>(db.prepare("")), SQLiteError);
    EXPECT_THROW(SQLiteDB("/nowhere/at/all.db"), SQLiteError);
}

} // namespace
