#pragma once

#include <string>

#include "Support/TemporaryTree.h"
#include "UsageModel/AppPaths.h"

namespace Bench {

/// The home of somebody who has worked a lot until a moment ago: 5,000 logs, 200,000 turns that are imported already,
/// and official percentages.
class UsersHome {
public:
    static constexpr std::size_t logs = 5000;
    static constexpr std::size_t turns = 200'000;
    /// What the program may hold of its turns in memory: 80 bytes for each.
    static constexpr double bytesOfTurns = 80.0 * turns;

    /// `self` is the path of the running benchmark.
    explicit UsersHome(const std::string& self);

    [[nodiscard]] UsageModel::AppPaths paths() const { return UsageModel::AppPaths(tree_.home()); }

private:
    TemporaryTree tree_;
};

} // namespace Bench
