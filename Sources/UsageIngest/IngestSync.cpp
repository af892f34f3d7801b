#include <algorithm>
#include <future>
#include <string>
#include <vector>

#include "UsageIngest/IngestStore.h"
#include "UsageIngest/LineTailReader.h"
#include "UsageIngest/Schema.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Files.h"

namespace UsageIngest {

namespace {

using UsageModel::Anchor;
using UsageModel::FileStat;
using UsageModel::fileStat;
using UsageModel::IngestProgress;
using UsageModel::UsageEvent;

constexpr const char* insertEvent =
    "INSERT INTO usage_event(ts,session_id,file_path,model,model_class,input,output,cache_creation,cache_read,effort)\n"
    "VALUES(?,?,?,?,?,?,?,?,?,?);";
constexpr const char* insertAnchor =
    "INSERT OR IGNORE INTO anchor(ts,source,window,kind,used_fraction,resets_at)\nVALUES(?,?,?,?,?,?);";
constexpr const char* upsertCursor =
    "INSERT INTO file_cursor(path,inode,size,mtime,byte_offset,last_ts) VALUES(?,?,?,?,?,?)\n"
    "ON CONFLICT(path) DO UPDATE SET inode=excluded.inode,size=excluded.size,\n"
    "    mtime=excluded.mtime,byte_offset=excluded.byte_offset,last_ts=excluded.last_ts;";
constexpr const char* selectCursor = "SELECT inode,size,mtime,byte_offset,last_ts FROM file_cursor WHERE path=?;";
constexpr const char* deleteEvents = "DELETE FROM usage_event WHERE file_path=?;";

// Reporting costs a redraw: while files are read, every eighth is often enough.
constexpr std::size_t filesPerReport = 8;

// While the rows of some files are stored, another thread reads the next. So many bytes in one go that to wake the
// thread costs nothing beside them, and so few that their rows take little memory; of a file that is larger the rows
// are stored as it is read.
constexpr std::int64_t bytesPerBatch = 4'000'000;
constexpr std::int64_t largestAhead = 16'000'000;
constexpr std::size_t filesPerBatch = 256;

/// How far a file was read. `mtime` is stored for the curious; nothing rests on it.
struct Cursor {
    FileStat file;
    std::int64_t byteOffset = 0;
    double lastTs = 0.0;
};

/// The turns and limit messages behind a file's cursor, and where its last complete line ends.
struct ParsedFile {
    std::vector<ParsedLine> rows;
    std::uint64_t end = 0;
};

/// What is to be done with one file.
struct Visit {
    const std::string& file;
    /// Where to begin, and the file as it was before the reading.
    Cursor cursor;
    bool nothingNew = false;
    /// Its rows, where they were read ahead.
    std::optional<ParsedFile> ahead;

    [[nodiscard]] LineTailReader reader() const {
        return {.url = file,
                .startOffset = static_cast<std::uint64_t>(cursor.byteOffset),
                .holes = LineTailReader::Holes::passedOver};
    }
    [[nodiscard]] std::int64_t bytesToRead() const { return nothingNew ? 0 : cursor.file.size - cursor.byteOffset; }
};

using Batch = std::vector<Visit>;

ParsedFile parseFile(const LineTailReader& reader, LogLineParser& parser) {
    ParsedFile parsed;
    parsed.end = reader.read([&](std::string_view line) {
        ParsedLine row = parser.parse(line);
        if (!std::holds_alternative<Ignored>(row)) parsed.rows.push_back(std::move(row));
    });
    return parsed;
}

Batch readAhead(Batch batch, LogLineParser& parser) {
    for (Visit& visit : batch) {
        if (!visit.nothingNew && visit.bytesToRead() <= largestAhead) visit.ahead = parseFile(visit.reader(), parser);
    }
    return batch;
}

/// Whether the batch holds rows of the file that are not stored yet.
bool isReading(const Batch& batch, const std::string& file) {
    return std::ranges::any_of(batch, [&](const Visit& visit) { return !visit.nothingNew && visit.file == file; });
}

// The text form as SQLite takes it: a NUL follows every name of an enumeration.
template <typename Enum>
const char* cText(Enum value) {
    return UsageModel::text(value).data();
}

std::int64_t totalSize(std::span<const std::string> files) {
    std::int64_t total = 0;
    for (const std::string& file : files) total += fileStat(file).size;
    return total;
}

/// Nothing was stored yet, so that no row has to be found while the logs are read.
bool isUntouched(SQLiteDB& db) {
    SQLiteStmt query =
        db.prepare("SELECT NOT EXISTS(SELECT 1 FROM usage_event) AND NOT EXISTS(SELECT 1 FROM file_cursor);");
    return query.step() && query.integer(0) == 1;
}

/// One run over all files, within a transaction that its caller holds.
class SyncRun {
public:
    SyncRun(SQLiteDB& db, LogLineParser& parser)
        : db_(db),
          parser_(parser),
          insertEvent_(db.prepare(insertEvent)),
          insertAnchor_(db.prepare(insertAnchor)),
          upsertCursor_(db.prepare(upsertCursor)) {}

    enum class Reading { onlyNew, everything };

    /// Finds out what is to be done with the file, and deletes the rows that it must lose.
    Visit begin(const std::string& file, Reading reading);
    /// Stores what the file holds behind its cursor.
    void finish(Visit& visit);

    [[nodiscard]] const SyncStats& stats() const { return stats_; }
    [[nodiscard]] bool deletedRows() const { return deletedRows_; }

private:
    std::optional<Cursor> cursorOf(const std::string& file);
    Cursor startOf(const std::string& file, const FileStat& now, const std::optional<Cursor>& cursor, Reading reading);
    void deleteEventsOf(const std::string& file);
    std::uint64_t storeRows(Visit& visit);
    void take(const ParsedLine& row, Visit& visit);
    void take(const UsageEvent& event, const std::string& file);
    void take(const Anchor& anchor);
    void store(const Cursor& cursor, const std::string& file);
    bool succeeds(const std::function<void()>& operation);

    SQLiteDB& db_;
    LogLineParser& parser_;
    SQLiteStmt insertEvent_;
    SQLiteStmt insertAnchor_;
    SQLiteStmt upsertCursor_;
    std::optional<SQLiteStmt> selectCursor_;
    SyncStats stats_;
    bool deletedRows_ = false;
};

Visit SyncRun::begin(const std::string& file, Reading reading) {
    const FileStat now = fileStat(file);
    const std::optional<Cursor> known = cursorOf(file);
    Visit visit{.file = file, .cursor = startOf(file, now, known, reading), .nothingNew = false, .ahead = {}};
    visit.nothingNew =
        known && reading == Reading::onlyNew && known->file.inode == now.inode && now.size == visit.cursor.byteOffset;
    return visit;
}

void SyncRun::finish(Visit& visit) {
    ++stats_.filesScanned;
    if (visit.nothingNew) return;

    const std::int64_t rowsBefore = stats_.eventsInserted + stats_.anchorsInserted;
    const auto end = static_cast<std::int64_t>(storeRows(visit));
    const std::int64_t rows = stats_.eventsInserted + stats_.anchorsInserted - rowsBefore;
    stats_.filesChanged += rows > 0 ? 1 : 0;
    stats_.bytesRead += end - visit.cursor.byteOffset;
    visit.cursor.byteOffset = end;
    store(visit.cursor, visit.file);
}

std::optional<Cursor> SyncRun::cursorOf(const std::string& file) {
    const bool prepared = selectCursor_ || succeeds([&] { selectCursor_ = db_.prepare(selectCursor); });
    if (!prepared) return std::nullopt;

    SQLiteStmt& query = *selectCursor_;
    query.reset();
    query.bind(1, file.c_str());
    bool found = false;
    std::optional<Cursor> cursor;
    if (succeeds([&] { found = query.step(); }) && found) {
        cursor = Cursor{
            .file = {.size = query.integer(1), .mtime = query.real(2), .inode = query.integer(0)},
            .byteOffset = query.integer(3),
            .lastTs = query.real(4),
        };
    }
    query.reset();
    return cursor;
}

/// Where to begin: the old cursor where the file has only grown; else its beginning, without the rows it gave before.
Cursor SyncRun::startOf(const std::string& file, const FileStat& now, const std::optional<Cursor>& cursor,
                        Reading reading) {
    const Cursor beginning{.file = now, .byteOffset = 0, .lastTs = cursor ? cursor->lastTs : 0.0};
    if (reading == Reading::onlyNew) {
        if (!cursor) return beginning;
        const bool onlyGrew = cursor->file.inode == now.inode && now.size >= cursor->file.size;
        if (onlyGrew) return {.file = now, .byteOffset = cursor->byteOffset, .lastTs = cursor->lastTs};
    }
    deleteEventsOf(file);
    return beginning;
}

void SyncRun::deleteEventsOf(const std::string& file) {
    SQLiteStmt removal = db_.prepare(deleteEvents);
    removal.bind(1, file.c_str());
    removal.step();
    deletedRows_ = deletedRows_ || sqlite3_changes(db_.handle()) > 0;
}

/// Returns where the last complete line ends.
std::uint64_t SyncRun::storeRows(Visit& visit) {
    if (!visit.ahead) return visit.reader().read([&](std::string_view line) { take(parser_.parse(line), visit); });
    for (const ParsedLine& row : visit.ahead->rows) take(row, visit);
    return visit.ahead->end;
}

void SyncRun::take(const ParsedLine& row, Visit& visit) {
    if (const auto* event = std::get_if<UsageEvent>(&row)) {
        take(*event, visit.file);
        visit.cursor.lastTs = std::max(visit.cursor.lastTs, event->ts.secondsSince1970);
    } else if (const auto* anchor = std::get_if<Anchor>(&row)) {
        take(*anchor);
    }
}

void SyncRun::take(const UsageEvent& event, const std::string& file) {
    insertEvent_.reset();
    insertEvent_.bind(1, event.ts.secondsSince1970);
    insertEvent_.bind(2, event.sessionId.c_str());
    insertEvent_.bind(3, file.c_str());
    insertEvent_.bind(4, event.model.c_str());
    insertEvent_.bind(5, cText(event.modelClass));
    insertEvent_.bind(6, event.input);
    insertEvent_.bind(7, event.output);
    insertEvent_.bind(8, event.cacheCreation);
    insertEvent_.bind(9, event.cacheRead);
    if (event.effort) insertEvent_.bind(10, cText(*event.effort));
    succeeds([&] { insertEvent_.step(); });
    ++stats_.eventsInserted;
}

void SyncRun::take(const Anchor& anchor) {
    insertAnchor_.reset();
    insertAnchor_.bind(1, anchor.ts.secondsSince1970);
    insertAnchor_.bind(2, cText(anchor.source));
    insertAnchor_.bind(3, cText(anchor.window));
    insertAnchor_.bind(4, cText(anchor.kind));
    if (anchor.usedFraction) insertAnchor_.bind(5, *anchor.usedFraction);
    if (anchor.resetsAt) insertAnchor_.bind(6, anchor.resetsAt->secondsSince1970);
    succeeds([&] { insertAnchor_.step(); });
    ++stats_.anchorsInserted;
}

void SyncRun::store(const Cursor& cursor, const std::string& file) {
    upsertCursor_.reset();
    upsertCursor_.bind(1, file.c_str());
    upsertCursor_.bind(2, cursor.file.inode);
    upsertCursor_.bind(3, cursor.file.size);
    upsertCursor_.bind(4, cursor.file.mtime);
    upsertCursor_.bind(5, cursor.byteOffset);
    upsertCursor_.bind(6, cursor.lastTs);
    succeeds([&] { upsertCursor_.step(); });
}

// A cursor that cannot be read counts as none, and a row that cannot be stored is lost alone. But where the failure has
// taken the whole transaction with it (a full disk, a failing one), going on would store the later rows one by one,
// without their cursors, and count them twice next time.
bool SyncRun::succeeds(const std::function<void()>& operation) {
    try {
        operation();
        return true;
    } catch (const SQLiteError&) {
        if (!db_.inTransaction()) throw;
        return false;
    }
}

/// Gives out the files in their order, a batch at a time, each being read by another thread meanwhile.
class BatchReader {
public:
    BatchReader(std::span<const std::string> files, SyncRun& run, SyncRun::Reading reading)
        : files_(files),
          run_(run),
          reading_(reading) {}

    /// The batch that was started, once it is read; else the first. Empty where the next file must wait for rows that
    /// are not stored yet, and at the end.
    Batch next() {
        if (!ahead_.valid()) start({});
        return ahead_.get();
    }

    /// Begins with the next batch while the rows of `unfinished` are still to be stored. A file that is listed twice
    /// has its cursor only once they are.
    void start(const Batch& unfinished) {
        Batch batch;
        batch.reserve(std::min(filesPerBatch, files_.size()));
        std::int64_t bytes = 0;
        // Mostly nothing is read at all, and no file need be looked for among so many.
        bool reads = std::ranges::any_of(unfinished, [](const Visit& visit) { return !visit.nothingNew; });
        while (!files_.empty() && batch.size() < filesPerBatch && bytes < bytesPerBatch) {
            if (reads && (isReading(batch, files_.front()) || isReading(unfinished, files_.front()))) break;
            batch.push_back(run_.begin(files_.front(), reading_));
            bytes += batch.back().bytesToRead();
            reads = reads || !batch.back().nothingNew;
            files_ = files_.subspan(1);
        }
        // Nothing to read is not worth a thread.
        const auto policy = bytes > 0 ? std::launch::async : std::launch::deferred;
        ahead_ = std::async(
            policy, [this, batch = std::move(batch)]() mutable { return readAhead(std::move(batch), parser_); });
    }

private:
    std::span<const std::string> files_;
    SyncRun& run_;
    SyncRun::Reading reading_;
    LogLineParser parser_; // of the reading thread
    std::future<Batch> ahead_;
};

} // namespace

SyncStats IngestStore::sync(std::span<const std::string> files, const Progress& progress) {
    const auto reading = meta("reingest_pending") == "1" ? SyncRun::Reading::everything : SyncRun::Reading::onlyNew;
    // Only who is told of progress has a use for the sum, which takes one more look at every file.
    const std::int64_t bytesTotal = progress ? totalSize(files) : 0;
    const auto report = [&](const IngestProgress& reached) {
        if (progress) progress(reached);
    };

    SyncRun run(db_, parser_);
    Transaction transaction(db_);
    // Building the indexes once over all rows costs half of keeping them up row by row.
    const bool isFirstImport = !files.empty() && isUntouched(db_);
    if (isFirstImport) db_.exec(Schema::dropEventIndexes);
    BatchReader reader(files, run, reading);
    std::int64_t bytesDone = 0;
    std::size_t filesDone = 0;
    while (filesDone < files.size()) {
        Batch batch = reader.next();
        reader.start(batch);
        for (Visit& visit : batch) {
            run.finish(visit);
            bytesDone += visit.cursor.file.size;
            const bool due = visit.nothingNew || filesDone % filesPerReport == 0 || filesDone + 1 == files.size();
            if (due) report({.bytesDone = bytesDone, .bytesTotal = bytesTotal, .complete = false});
            ++filesDone;
        }
        if (run.deletedRows()) cache_.forget();
    }
    if (isFirstImport) db_.exec(Schema::eventIndexes);
    transaction.commit();

    if (reading == SyncRun::Reading::everything) clearMeta("reingest_pending");
    report({.bytesDone = bytesTotal, .bytesTotal = bytesTotal, .complete = true});
    return run.stats();
}

} // namespace UsageIngest
