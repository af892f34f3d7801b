#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "UsageIngest/SQLiteDB.h"
#include "UsageModel/UsageEvent.h"

namespace UsageIngest {

/// Turns by time. Shared between threads, never changed.
using EventList = std::shared_ptr<const std::vector<UsageModel::UsageEvent>>;

/// The turns of a database, kept in memory between two readings so that the second reads only what was added.
class EventCache {
public:
    /// All turns by time. Throws `SQLiteError`; what was kept stays.
    [[nodiscard]] EventList all(SQLiteDB& db);

    /// To be called when rows were taken away through this connection: the next reading starts afresh.
    /// What other connections do is noticed without it.
    void forget() { events_.reset(); }

private:
    EventList events_;
    std::int64_t lastRow_ = 0; // the largest row number among `events_`
    /// SQLite's counter of commits by other connections, at the time of the last reading.
    std::int64_t foreignCommits_ = 0;
};

/// The turns at or after an instant, by time. Throws `SQLiteError`.
[[nodiscard]] std::vector<UsageModel::UsageEvent> eventsSince(SQLiteDB& db, UsageModel::Date since);

} // namespace UsageIngest
