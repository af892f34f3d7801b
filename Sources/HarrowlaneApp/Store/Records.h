#pragma once

#include <memory>
#include <vector>

#include "UsageIngest/IngestStore.h"
#include "UsageIngest/LogDiscovery.h"
#include "UsageModel/Anchor.h"
#include "UsageModel/AppPaths.h"

namespace HarrowlaneApp {

/// The logs and the database that they are kept in. For one thread at a time; operations may block, and throw
/// `std::exception`.
class Records {
public:
    Records() = default;
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;
    virtual ~Records() = default;

    /// The log files there are.
    [[nodiscard]] virtual UsageIngest::LogFiles discover() = 0;
    /// Reads what is new in them.
    virtual UsageIngest::SyncStats sync(const UsageIngest::LogFiles& files) = 0;
    [[nodiscard]] virtual UsageIngest::EventList allEvents() = 0;
    [[nodiscard]] virtual std::vector<UsageModel::Anchor> anchors() = 0;
};

/// The user's own. Throws `std::exception` where the database cannot be opened.
[[nodiscard]] std::unique_ptr<Records> openRecords(const UsageModel::AppPaths& paths);

} // namespace HarrowlaneApp
