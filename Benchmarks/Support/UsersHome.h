#pragma once

#include <string>

#include "Support/TemporaryTree.h"
#include "UsageModel/AppPaths.h"

namespace Bench {

/// What the program may hold for each turn, in memory.
constexpr double bytesATurn = 80.0;

/// The home of somebody who has worked a lot until a moment ago: 5,000 logs, 200,000 turns that are imported already,
/// and official percentages.
class UsersHome {
public:
    static constexpr std::size_t logs = 5000;
    static constexpr std::size_t turns = 200'000;

    /// `self` is the path of the running benchmark.
    explicit UsersHome(const std::string& self);

    [[nodiscard]] UsageModel::AppPaths paths() const { return UsageModel::AppPaths(tree_.home()); }

private:
    TemporaryTree tree_;
};

} // namespace Bench
