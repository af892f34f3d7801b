#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/TurnLog.h"

namespace TurnLog {

/// Logs of a folder that a sync meets at any moment of their growth. The turns are numbered from 1.
class GrowingLogs {
public:
    explicit GrowingLogs(std::filesystem::path folder) : folder_(std::move(folder)) {}

    void add(long turns) {
        for (long i = 0; i < turns; ++i) {
            ++last_;
            const std::string text = line(last_);
            const std::filesystem::path file = folder_ / (std::to_string(last_ % filesInAll) + ".jsonl");
            // In two pieces: a sync in between meets half a line.
            TestSupport::appendFile(file, text.substr(0, text.size() / 2));
            TestSupport::appendFile(file, text.substr(text.size() / 2));
        }
    }
    [[nodiscard]] long last() const { return last_; }

private:
    static constexpr long filesInAll = 12;

    std::filesystem::path folder_;
    long last_ = 0;
};

} // namespace TurnLog
