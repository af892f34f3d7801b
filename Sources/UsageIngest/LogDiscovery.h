#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace UsageIngest {

/// Lists the session log files.
struct LogDiscovery {
    /// The folder to search; an absent one stands for Claude Code's log folder in the current user's home.
    explicit LogDiscovery(std::optional<std::filesystem::path> folder = std::nullopt);

    /// Every entry below `root` whose name ends in ".jsonl", whatever its kind, in the order of the walk. Hidden
    /// entries are skipped with all below them, links to folders are not followed, and what cannot be reached is
    /// passed over. Empty where `root` cannot be walked. Never throws but for want of memory.
    [[nodiscard]] std::vector<std::filesystem::path> discover() const;

    std::filesystem::path root;
};

} // namespace UsageIngest
