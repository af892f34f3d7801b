#include "UsageIngest/LogDiscovery.h"

#include "UsageModel/AppPaths.h"
#include "UsageModel/Files.h"

namespace UsageIngest {

namespace {

std::string below(const std::string& folder, const std::string& name) {
    return folder.ends_with('/') ? folder + name : folder + '/' + name;
}

void collect(const std::string& folder, LogFiles& logs) {
    for (const UsageModel::FolderEntry& entry : UsageModel::folderEntries(folder)) {
        if (entry.name.starts_with('.')) continue;
        if (entry.name.ends_with(".jsonl")) logs.push_back(below(folder, entry.name));
        if (entry.isFolder) collect(below(folder, entry.name), logs);
    }
}

} // namespace

LogDiscovery::LogDiscovery(std::optional<std::filesystem::path> folder)
    : root(folder ? *std::move(folder) : UsageModel::AppPaths().sessionLogs()) {}

LogFiles LogDiscovery::discover() const {
    LogFiles logs;
    collect(root.native(), logs);
    return logs;
}

} // namespace UsageIngest
