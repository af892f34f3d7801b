#include "UsageIngest/IngestStore.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "UsageIngest/Schema.h"
#include "UsageModel/Files.h"

namespace UsageIngest {

namespace {

using UsageModel::Anchor;
using UsageModel::AnchorKind;
using UsageModel::AnchorSource;
using UsageModel::Date;
using UsageModel::fromText;
using UsageModel::WindowKind;

constexpr const char* connectionSettings =
    "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA foreign_keys=ON;";

constexpr const char* schemaVersion = "2";
constexpr std::string_view eventTable = "usage_event";

std::vector<std::string> namesIn(SQLiteDB& db, const std::string& query, int column) {
    SQLiteStmt rows = db.prepare(query);
    std::vector<std::string> names;
    while (rows.step()) names.emplace_back(rows.text(column));
    return names;
}

std::vector<std::string> columnsOf(SQLiteDB& db, const std::string& table) {
    return namesIn(db, "PRAGMA table_info(" + table + ");", 1);
}

bool holds(const std::vector<std::string>& names, std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

// Reads only: somebody else's database must not even be switched to another journal.
void refuseForeign(SQLiteDB& db) {
    const auto tables =
        namesIn(db, "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite_%';", 0);
    if (!holds(tables, eventTable)) {
        // One that was left half made is ours to finish.
        const auto isOurs = [](const std::string& name) {
            return std::ranges::find(Schema::tableNames, name) != Schema::tableNames.end();
        };
        if (std::ranges::all_of(tables, isOurs)) return;
    }
    constexpr std::array<std::string_view, 9> firstColumns{
        "ts", "session_id", "file_path", "model", "model_class", "input", "output", "cache_creation", "cache_read"};
    const auto columns = columnsOf(db, std::string(eventTable));
    const bool ours = std::ranges::all_of(firstColumns, [&](std::string_view name) { return holds(columns, name); });
    if (!ours) throw SQLiteError("the file is another program's database", SQLITE_NOTADB);
}

std::optional<Anchor> toAnchor(const SQLiteStmt& row) {
    const auto source = fromText<AnchorSource>(row.text(1));
    const auto window = fromText<WindowKind>(row.text(2));
    const auto kind = fromText<AnchorKind>(row.text(3));
    if (!source || !window || !kind) return std::nullopt;
    const std::optional<double> resetsAt = row.optionalReal(5);
    return Anchor{
        .ts = Date{row.real(0)},
        .source = *source,
        .window = *window,
        .kind = *kind,
        .usedFraction = row.optionalReal(4),
        .resetsAt = resetsAt ? std::optional(Date{*resetsAt}) : std::nullopt,
    };
}

// Two processes that make the same new file meet here, where SQLite does not wait for a lock as it does elsewhere.
void applySettings(SQLiteDB& db) {
    constexpr int pauseMilliseconds = 10;
    for (int waited = 0;; waited += pauseMilliseconds) {
        try {
            return db.exec(connectionSettings);
        } catch (const SQLiteError& error) {
            if (error.code() != SQLITE_BUSY || waited >= SQLiteDB::busyTimeoutMilliseconds) throw;
        }
        sqlite3_sleep(pauseMilliseconds);
    }
}

SQLiteDB openFile(const std::filesystem::path& path) {
    UsageModel::createPrivateFolders(path.parent_path());
    SQLiteDB db(path.native());
    refuseForeign(db);
    // Before anything is written: the files that SQLite lays beside it take the database's mode.
    UsageModel::makePrivate(path);
    for (const char* suffix : {"-wal", "-shm"}) {
        std::filesystem::path beside = path;
        beside += suffix;
        try {
            if (std::filesystem::exists(beside)) UsageModel::makePrivate(beside);
        } catch (const std::system_error&) {
            // Another process that closes the database takes them away.
            if (std::filesystem::exists(beside)) throw;
        }
    }
    // A file that nobody might write was opened for reading alone.
    if (sqlite3_db_readonly(db.handle(), "main") == 1) return SQLiteDB(path.native());
    return db;
}

} // namespace

IngestStore::IngestStore(const std::filesystem::path& path) : IngestStore(openFile(path)) {}

IngestStore IngestStore::inMemory() {
    return IngestStore(SQLiteDB(":memory:"));
}

IngestStore::IngestStore(SQLiteDB db) : db_(std::move(db)) {
    applySettings(db_);
    // Not to wait for a process that is in the middle of a long import.
    if (isCurrent()) return;
    Transaction migration(db_);
    migrate();
    migration.commit();
}

bool IngestStore::isCurrent() {
    const std::vector<std::string> names = namesIn(db_, "SELECT name FROM sqlite_master;", 0);
    const auto isThere = [&](std::string_view name) { return holds(names, name); };
    return std::ranges::all_of(Schema::tableNames, isThere) && std::ranges::all_of(Schema::indexNames, isThere) &&
           holds(columnsOf(db_, std::string(eventTable)), "effort") && meta("schema_version") == schemaVersion;
}

void IngestStore::migrate() {
    db_.exec(std::string(Schema::tables) + Schema::eventIndexes);
    // Rows from before the column hold no effort; only a fresh reading of the logs can fill it.
    if (addColumnIfMissing(std::string(eventTable), "effort", "TEXT")) setMeta("reingest_pending", "1");
    // Nothing is written where nothing changes: opening then leaves the file as it is.
    if (meta("schema_version") != schemaVersion) setMeta("schema_version", schemaVersion);
}

std::optional<std::string> IngestStore::meta(const char* key) try {
    SQLiteStmt query = db_.prepare("SELECT value FROM meta WHERE key=?;");
    query.bind(1, key);
    if (!query.step() || query.isNull(0)) return std::nullopt;
    return std::string(query.text(0));
} catch (const SQLiteError&) {
    return std::nullopt;
}

void IngestStore::setMeta(const char* key, const char* value) {
    SQLiteStmt upsert =
        db_.prepare("INSERT INTO meta(key,value) VALUES(?,?) ON CONFLICT(key) DO UPDATE SET value=excluded.value;");
    upsert.bind(1, key);
    upsert.bind(2, value);
    upsert.step();
}

void IngestStore::clearMeta(const char* key) try {
    SQLiteStmt removal = db_.prepare("DELETE FROM meta WHERE key=?;");
    removal.bind(1, key);
    removal.step();
} catch (const SQLiteError&) {
    // What stays set is done once more by the next sync.
}

bool IngestStore::addColumnIfMissing(const std::string& table, const std::string& column,
                                     const std::string& declaration) {
    if (holds(columnsOf(db_, table), column)) return false;
    db_.exec("ALTER TABLE " + table + " ADD COLUMN " + column + " " + declaration + ";");
    return true;
}

std::vector<UsageModel::UsageEvent> IngestStore::events(std::optional<Date> since) {
    return since ? eventsSince(db_, *since) : *allEvents();
}

EventList IngestStore::allEvents() {
    return cache_.all(db_);
}

void IngestStore::releaseMemory() {
    db_.exec("PRAGMA shrink_memory;");
}

std::vector<Anchor> IngestStore::anchors() {
    SQLiteStmt rows = db_.prepare("SELECT ts,source,window,kind,used_fraction,resets_at FROM anchor ORDER BY ts;");
    std::vector<Anchor> anchors;
    while (rows.step()) {
        if (const auto anchor = toAnchor(rows)) anchors.push_back(*anchor);
    }
    return anchors;
}

IngestStore::Span IngestStore::eventSpan() {
    SQLiteStmt row = db_.prepare("SELECT COUNT(*), MIN(ts), MAX(ts) FROM usage_event;");
    if (!row.step() || row.integer(0) < 1) return {};
    return {.count = row.integer(0), .earliest = Date{row.real(1)}, .latest = Date{row.real(2)}};
}

} // namespace UsageIngest
