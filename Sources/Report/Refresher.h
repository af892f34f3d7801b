#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Report/SnapshotText.h"
#include "UsageIngest/IngestStore.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Calendar.h"
#include "UsageModel/GaugeReading.h"

namespace Report {

/// What is known: of the logs, and of the gauge.
struct Knowledge {
    UsageIngest::EventList events;
    std::vector<UsageModel::Anchor> anchors;
    std::optional<UsageModel::GaugeReading> gauge;
    History history = History::turns;
    /// Why the record could not be brought up to date, so that this is what was known before.
    std::optional<std::string> complaint;
};

/// Brings the record of turns up to date, and makes snapshots of what is known. What one snapshot hands to the next
/// lives here: the last good reading, and the session cap that was learnt.
class Refresher {
public:
    /// Opens the database, and makes its folder, for the owner alone. Throws `std::exception` where that fails.
    Refresher(UsageModel::AppPaths paths, const UsageModel::Calendar& calendar);

    /// Reads what is new. Throws `UsageIngest::SQLiteError` where the record cannot be read.
    [[nodiscard]] Knowledge load(const UsageIngest::IngestStore::Progress& progress);
    /// What follows from it at an instant. Keeps the session cap that it learns for the snapshots to come.
    [[nodiscard]] UsageModel::UsageSnapshot snapshot(const Knowledge& knowledge, UsageModel::Date now);

private:
    UsageModel::AppPaths paths_;
    UsageModel::Calendar calendar_;
    UsageIngest::IngestStore store_;
    std::optional<UsageModel::GaugeReading> lastGoodGauge_;
    std::optional<double> heldSessionCap_;
};

} // namespace Report
