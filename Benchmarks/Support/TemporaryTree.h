#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "UsageIngest/LogDiscovery.h"

namespace Bench {

/// A sample home in a folder of its own, which goes away with it.
class TemporaryTree {
public:
    struct Wish {
        std::uint64_t bytes = 0;
        /// 0 for a natural number.
        std::size_t files = 0;
        /// Where the history ends, seconds since 1970.
        double now = 1'790'000'000;
    };

    explicit TemporaryTree(const Wish& wish);
    TemporaryTree(const TemporaryTree&) = delete;
    TemporaryTree& operator=(const TemporaryTree&) = delete;
    ~TemporaryTree();

    [[nodiscard]] std::filesystem::path home() const { return folder_ / "home"; }
    [[nodiscard]] std::filesystem::path projects() const { return home() / ".claude/projects"; }
    [[nodiscard]] std::filesystem::path database() const { return folder_ / "support/usage.db"; }
    [[nodiscard]] UsageIngest::LogFiles logs() const;

    /// Removes the database, so that the next import starts from nothing.
    void forgetImport() const;

private:
    std::filesystem::path folder_;
};

/// Adds copies of the turns of an import, each at other times, until there are `count` in all.
void multiplyTurns(const std::filesystem::path& database, std::size_t count);

/// Runs a shell command with `$TREE` set to a folder; throws `std::runtime_error` where it fails.
void shell(const std::string& command, const std::filesystem::path& tree);

} // namespace Bench
