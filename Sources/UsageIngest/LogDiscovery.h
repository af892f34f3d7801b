#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace UsageIngest {

/// Paths as the system takes them: to take one apart into its names costs more than all else that is done for a log in
/// which nothing is new.
using LogFiles = std::vector<std::string>;

/// Lists the session log files.
struct LogDiscovery {
    /// The folder to search; an absent one stands for Claude Code's log folder in the current user's home.
    explicit LogDiscovery(std::optional<std::filesystem::path> folder = std::nullopt);

    /// Every entry below `root` whose name ends in ".jsonl", whatever its kind, in the order of the walk. Hidden
    /// entries are skipped with all below them, links to folders are not followed, and what cannot be reached is
    /// passed over. Empty where `root` cannot be walked. Never throws but for want of memory.
    [[nodiscard]] LogFiles discover() const;

    std::filesystem::path root;
};

} // namespace UsageIngest
