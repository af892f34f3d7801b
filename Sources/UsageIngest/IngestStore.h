#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "UsageIngest/EventCache.h"
#include "UsageIngest/LogLineParser.h"
#include "UsageIngest/SQLiteDB.h"
#include "UsageModel/Anchor.h"
#include "UsageModel/IngestProgress.h"
#include "UsageModel/UsageEvent.h"

namespace UsageIngest {

/// What one sync did.
struct SyncStats {
    /// Files visited, and those that gave at least one turn or limit message.
    std::int64_t filesScanned = 0;
    std::int64_t filesChanged = 0;
    /// Turns and limit messages met, whether or not their row could be stored or was new.
    std::int64_t eventsInserted = 0;
    std::int64_t anchorsInserted = 0;
    std::int64_t bytesRead = 0;

    friend bool operator==(const SyncStats&, const SyncStats&) = default;
};

/// The database of turns and limit messages: brings it up to date with the logs, and reads from it. Owns its one
/// connection. For one thread at a time: each operation runs to its end before the next begins. Another process may
/// use the same file; each waits up to five seconds for the other. Operations throw `SQLiteError` unless told
/// otherwise.
class IngestStore {
public:
    struct Span {
        std::int64_t count = 0;
        /// Absent where there are no turns.
        std::optional<UsageModel::Date> earliest;
        std::optional<UsageModel::Date> latest;

        friend bool operator==(const Span&, const Span&) = default;
    };

    using Progress = std::function<void(const UsageModel::IngestProgress&)>;

    /// Opens the file, makes it and its folder where they are missing, and brings an older schema up to date. The file
    /// is readable by its owner alone. Throws `SQLiteError` or `std::system_error`; a file that is damaged, or another
    /// program's, is left as it is.
    explicit IngestStore(const std::filesystem::path& path);
    /// A store without a file.
    [[nodiscard]] static IngestStore inMemory();

    /// The turns at or after `since`, all of them without it, by time; those of one time in no settled order.
    [[nodiscard]] std::vector<UsageModel::UsageEvent> events(std::optional<UsageModel::Date> since);
    /// All turns by time, as a list that is shared and never changes. Between two calls only what was added is read.
    [[nodiscard]] EventList allEvents();
    /// The limit messages by time; rows that cannot be understood are left out.
    [[nodiscard]] std::vector<UsageModel::Anchor> anchors();

    /// Gives back the memory in which pages of the database are kept; what needs them reads them again.
    void releaseMemory();
    [[nodiscard]] Span eventSpan();

    /// Reads what is new in each file since the last sync, in one transaction: where anything but the storing of a
    /// single row fails, the whole run is undone and the failure thrown on (also `std::system_error` of a file that
    /// cannot be read). A file that only grew is read on from where the last complete line ended; one that was
    /// replaced or shrank loses its rows and is read anew. `progress` is called as the run goes on, in bytes of logs,
    /// and must not call back into the store.
    SyncStats sync(std::span<const std::string> files, const Progress& progress = {});

private:
    explicit IngestStore(SQLiteDB db);

    [[nodiscard]] bool isCurrent();
    void migrate();
    [[nodiscard]] std::optional<std::string> meta(const char* key);
    void setMeta(const char* key, const char* value);
    void clearMeta(const char* key);
    [[nodiscard]] bool addColumnIfMissing(const std::string& table, const std::string& column,
                                          const std::string& declaration);

    SQLiteDB db_;
    LogLineParser parser_;
    EventCache cache_;
};

} // namespace UsageIngest
