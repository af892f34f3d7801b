#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "SampleHome/SampleHome.h"
#include "Support/TemporaryFolder.h"
#include "UsageEngine/Aggregator.h"
#include "UsageGauge/GaugeReader.h"
#include "UsageIngest/IngestStore.h"

namespace Pipeline {

/// A home whose logs grow as a clock goes on, and the program that looks at it: what a person did in a made-up home is
/// told line by line, and an official side counts it against limits of its own.
class WatchedHome {
public:
    struct Plan {
        /// The history ends here and began sixty days before.
        UsageModel::Date end;
        UsageModel::Calendar calendar;
        /// A person at a machine each; all of them share the limits.
        std::vector<std::uint64_t> people{5};
    };

    explicit WatchedHome(const Plan& plan);

    /// Writes all that happened up to an instant, complete lines only.
    void liveUntil(UsageModel::Date instant);
    /// Writes what the status line would be told at an instant.
    void readGauge(UsageModel::Date instant);
    /// The program is in another zone from now on.
    void travel(const UsageModel::Calendar& calendar) { aggregator_.calendar = calendar; }
    /// Does what a refresh does: reads the logs and the gauge, and computes.
    [[nodiscard]] UsageModel::UsageSnapshot refresh(UsageModel::Date now);

    [[nodiscard]] UsageIngest::EventList events() { return store_.allEvents(); }
    [[nodiscard]] double weightOf(const UsageModel::UsageEvent& event) const {
        return aggregator_.weights.effective(event);
    }
    /// What the whole history holds.
    [[nodiscard]] std::uint64_t turnsInAll() const { return turnsInAll_; }
    [[nodiscard]] std::uint64_t limitMessagesInAll() const { return limitMessagesInAll_; }
    /// What the last reading told of a window, 0 to 1; absent where it is over by then.
    [[nodiscard]] std::optional<double> lastRead(UsageModel::WindowKind kind, UsageModel::Date now) const;
    [[nodiscard]] std::size_t limitMessages() { return store_.anchors().size(); }

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

    TestSupport::TemporaryFolder folder_;
    std::uint64_t turnsInAll_ = 0;
    std::uint64_t limitMessagesInAll_ = 0;
    std::vector<Log> logs_;
    UsageIngest::IngestStore store_;
    UsageGauge::GaugeReader gauge_;
    UsageEngine::Aggregator aggregator_;
    std::optional<double> heldSessionCap_;
};

} // namespace Pipeline
