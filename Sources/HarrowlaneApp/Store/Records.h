#pragma once

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

#include "UsageIngest/IngestStore.h"

namespace HarrowlaneApp {

/// What a refresh asks of the database. Called on one thread at a time, which is never the main one; each operation may
/// throw.
class Records {
public:
    virtual ~Records() = default;

    virtual UsageIngest::SyncStats sync(std::span<const std::filesystem::path> files) = 0;
    [[nodiscard]] virtual UsageIngest::EventList allEvents() = 0;
    [[nodiscard]] virtual std::vector<UsageModel::Anchor> anchors() = 0;
};

/// Those of the database file. Throws as `IngestStore` does.
[[nodiscard]] std::shared_ptr<Records> openRecords(const std::filesystem::path& database);

} // namespace HarrowlaneApp
