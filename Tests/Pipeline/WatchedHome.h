#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "Support/TemporaryFolder.h"
#include "UsageIngest/IngestStore.h"
#include "UsageModel/AppPaths.h"
#include "UsageModel/Date.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/WindowKind.h"

namespace Pipeline {

/// A home whose logs grow as a clock goes on: what a person did in a made-up home is told line by line, and an official
/// side keeps its own books on them, against limits of its own.
class WatchedHome {
public:
    /// The history ends at an instant and began sixty days before.
    WatchedHome(const UsageModel::AppPaths& paths, UsageModel::Date end);

    /// Writes all that happened up to an instant, complete lines only.
    void liveUntil(UsageModel::Date instant);
    /// Writes what the status line would be told at an instant.
    void readGauge(UsageModel::Date instant);

    [[nodiscard]] UsageIngest::EventList events() { return books_.allEvents(); }
    /// What the whole history holds.
    [[nodiscard]] std::uint64_t turnsInAll() const { return turnsInAll_; }
    [[nodiscard]] std::uint64_t limitMessagesInAll() const { return limitMessagesInAll_; }

private:
    struct Line {
        UsageModel::Date written;
        std::string text;
    };
    struct Log {
        std::filesystem::path path;
        std::vector<Line> lines;
        std::size_t told = 0;
    };

    void load(const std::filesystem::path& made);
    [[nodiscard]] UsageModel::GaugeWindow official(UsageModel::WindowKind kind, UsageModel::Date instant);

    UsageModel::AppPaths paths_;
    TestSupport::TemporaryFolder folder_;
    std::uint64_t turnsInAll_ = 0;
    std::uint64_t limitMessagesInAll_ = 0;
    std::vector<Log> logs_;
    UsageIngest::IngestStore books_;
};

} // namespace Pipeline
