#include "Report/Refresher.h"

#include <utility>

#include "UsageEngine/Aggregator.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageIngest/LogDiscovery.h"
#include "UsageModel/Files.h"

namespace Report {

namespace {

using UsageIngest::IngestStore;
using UsageIngest::LogFiles;
using UsageModel::AppPaths;

IngestStore openStore(const AppPaths& paths) {
    UsageModel::createPrivateFolders(paths.support());
    UsageModel::makePrivate(paths.support());
    return IngestStore(paths.database());
}

/// Why the record could not be brought up to date; absent where it could.
std::optional<std::string> sync(IngestStore& store, const LogFiles& logs, const IngestStore::Progress& progress) try {
    store.sync(logs, progress);
    return std::nullopt;
} catch (const UsageIngest::SQLiteError& error) {
    return std::string("cannot store what is new; showing what was known before: ") + error.what();
} catch (const std::exception& error) {
    return std::string("cannot read the logs; showing what was known before: ") + error.what();
}

History historyOf(const LogFiles& logs, const UsageIngest::EventList& events) {
    if (!events->empty()) return History::turns;
    return logs.empty() ? History::noLogs : History::noTurns;
}

} // namespace

Refresher::Refresher(AppPaths paths, const UsageModel::Calendar& calendar)
    : paths_(std::move(paths)),
      calendar_(calendar),
      store_(openStore(paths_)) {}

Knowledge Refresher::load(const IngestStore::Progress& progress) {
    const LogFiles logs = UsageIngest::LogDiscovery(paths_.sessionLogs()).discover();
    std::optional<std::string> complaint = sync(store_, logs, progress);
    UsageIngest::EventList events = store_.allEvents();
    if (auto reading = UsageGauge::GaugeReader{paths_.gaugeFile()}.read()) lastGoodGauge_ = std::move(reading);
    return {
        .events = events,
        .anchors = store_.anchors(),
        .gauge = lastGoodGauge_,
        .history = historyOf(logs, events),
        .complaint = std::move(complaint),
    };
}

UsageModel::UsageSnapshot Refresher::snapshot(const Knowledge& knowledge, UsageModel::Date now) {
    UsageModel::UsageSnapshot snapshot = UsageEngine::Aggregator{.calendar = calendar_}.snapshot({
        .events = *knowledge.events,
        .anchors = knowledge.anchors,
        .gauge = knowledge.gauge,
        .now = now,
        .ingest = UsageModel::IngestProgress::idle(),
        .heldSessionCap = heldSessionCap_,
    });
    if (snapshot.sessionCapInLogUnits) heldSessionCap_ = snapshot.sessionCapInLogUnits;
    return snapshot;
}

} // namespace Report
