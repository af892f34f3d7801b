#include "UsageIngest/LogDiscovery.h"

#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"

namespace UsageIngest {

namespace {

void collect(const std::filesystem::path& folder, std::vector<std::filesystem::path>& logs) {
    for (const UsageModel::FolderEntry& entry : UsageModel::folderEntries(folder)) {
        if (entry.name.starts_with('.')) continue;
        if (entry.name.ends_with(".jsonl")) logs.push_back(folder / entry.name);
        if (entry.isFolder) collect(folder / entry.name, logs);
    }
}

} // namespace

LogDiscovery::LogDiscovery(std::optional<std::filesystem::path> folder)
    : root(folder ? *std::move(folder) : UsageModel::AppPaths().sessionLogs()) {}

std::vector<std::filesystem::path> LogDiscovery::discover() const {
    std::vector<std::filesystem::path> logs;
    collect(root, logs);
    return logs;
}

} // namespace UsageIngest
