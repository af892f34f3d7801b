#include "UsageIngest/EventCache.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

namespace UsageIngest {

namespace {

using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::SharedText;
using UsageModel::UsageEvent;

constexpr const char* columns = "ts,session_id,model,model_class,input,output,cache_creation,cache_read,effort";
constexpr int rowNumberColumn = 9;

/// One copy of each text, whatever the number of turns that bear it.
template <typename Attached>
class Interned {
public:
    struct Entry {
        SharedText text;
        Attached attached;
    };

    explicit Interned(Attached (*attach)(std::string_view)) : attach_(attach) {}

    const Entry& of(std::string_view text) {
        // Turns come in runs of one session and model.
        if (last_ == nullptr || last_->text.view() != text) last_ = &lookUp(text);
        return *last_;
    }

private:
    const Entry& lookUp(std::string_view text) {
        const auto known = entries_.find(text);
        if (known != entries_.end()) return known->second;
        Entry entry{SharedText(text), attach_(text)};
        // The key lies in the entry's own text, which moves with no rehashing.
        const std::string_view key = entry.text.view();
        return entries_.emplace(key, std::move(entry)).first->second;
    }

    Attached (*attach_)(std::string_view);
    std::unordered_map<std::string_view, Entry> entries_;
    const Entry* last_ = nullptr;
};

struct Nothing {};

/// Turns rows of `columns` into turns.
class RowReader {
public:
    UsageEvent read(const SQLiteStmt& row) {
        const auto& model = models_.of(row.text(2));
        return {
            .ts = Date{row.real(0)},
            .sessionId = sessions_.of(row.text(1)).text,
            .model = model.text,
            .modelClass = model.text.empty() ? storedClass(row) : model.attached,
            .input = row.integer(4),
            .output = row.integer(5),
            .cacheCreation = row.integer(6),
            .cacheRead = row.integer(7),
            .effort = UsageModel::fromText<EffortLevel>(row.text(8)),
        };
    }

private:
    // The class is told by the name, so that a change of the rules holds for all history; what is stored counts only
    // where there is no name.
    static ModelClass storedClass(const SQLiteStmt& row) {
        return UsageModel::fromText<ModelClass>(row.text(3)).value_or(ModelClass::other);
    }

    Interned<Nothing> sessions_{[](std::string_view) { return Nothing{}; }};
    Interned<ModelClass> models_{UsageModel::modelClass};
};

std::int64_t singleInteger(SQLiteDB& db, const char* sql) {
    SQLiteStmt query = db.prepare(sql);
    return query.step() ? query.integer(0) : 0;
}

/// Where a turn lies, and when it was.
struct Place {
    Date ts;
    std::size_t from = 0;
};

/// Moves each turn to where its place stands. No second list is needed: one turn waits aside while those of its cycle
/// move up, each into the gap that the one before it left.
void arrange(std::vector<UsageEvent>& events, std::vector<Place>& order) {
    for (std::size_t start = 0; start < events.size(); ++start) {
        if (order[start].from == start) continue;
        UsageEvent aside = std::move(events[start]);
        std::size_t gap = start;
        while (order[gap].from != start) {
            const std::size_t from = std::exchange(order[gap].from, gap);
            events[gap] = std::move(events[from]);
            gap = from;
        }
        order[gap].from = gap;
        events[gap] = std::move(aside);
    }
}

/// Equal times stay in their order. The places are sorted in the turns' stead, as a turn is five times as large.
void sortByTime(std::vector<UsageEvent>& events) {
    std::vector<Place> order;
    order.reserve(events.size());
    for (const UsageEvent& event : events) order.push_back({.ts = event.ts, .from = order.size()});
    std::ranges::stable_sort(order, {}, &Place::ts);
    arrange(events, order);
}

struct Rows {
    std::vector<UsageEvent> events;
    std::int64_t last = 0;
};

/// The rows behind row `after`, by time. They are read in the order in which they lie and sorted here: walking the
/// index instead would jump to each row, at several times the cost.
Rows rowsBehind(SQLiteDB& db, std::int64_t after) {
    Rows rows{.events = {}, .last = after};
    if (after == 0)
        rows.events.reserve(static_cast<std::size_t>(singleInteger(db, "SELECT COUNT(*) FROM usage_event;")));

    SQLiteStmt query =
        db.prepare(std::string("SELECT ") + columns + ",rowid FROM usage_event WHERE rowid>? ORDER BY rowid;");
    query.bind(1, after);
    RowReader reader;
    while (query.step()) {
        rows.events.push_back(reader.read(query));
        rows.last = query.integer(rowNumberColumn);
    }
    sortByTime(rows.events);
    return rows;
}

std::vector<UsageEvent> merged(const std::vector<UsageEvent>& older, std::vector<UsageEvent> newer) {
    std::vector<UsageEvent> all;
    all.reserve(older.size() + newer.size());
    std::ranges::merge(older, newer, std::back_inserter(all), {}, &UsageEvent::ts, &UsageEvent::ts);
    return all;
}

} // namespace

EventList EventCache::all(SQLiteDB& db) {
    const HeldConnection held(db);
    // Asked before the rows are read: a commit in between is then found next time.
    const std::int64_t foreignCommits = singleInteger(db, "PRAGMA data_version;");
    const bool current = events_ && foreignCommits == foreignCommits_;

    Rows added = rowsBehind(db, current ? lastRow_ : 0);
    if (current && added.events.empty()) return events_;
    events_ = std::make_shared<const std::vector<UsageEvent>>(current ? merged(*events_, std::move(added.events))
                                                                      : std::move(added.events));
    lastRow_ = added.last;
    foreignCommits_ = foreignCommits;
    return events_;
}

std::vector<UsageEvent> eventsSince(SQLiteDB& db, Date since) {
    const HeldConnection held(db);
    SQLiteStmt query = db.prepare(std::string("SELECT ") + columns + " FROM usage_event WHERE ts>=? ORDER BY ts;");
    query.bind(1, since.secondsSince1970);
    std::vector<UsageEvent> events;
    RowReader reader;
    while (query.step()) events.push_back(reader.read(query));
    return events;
}

} // namespace UsageIngest
