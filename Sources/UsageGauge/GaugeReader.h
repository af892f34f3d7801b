#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "UsageModel/Anchor.h"
#include "UsageModel/GaugeReading.h"

namespace UsageGauge {

/// Reads the gauge file. A value without memory; safe on any thread.
struct GaugeReader {
    /// The file to read.
    std::filesystem::path url;

    /// The reading that the file holds now, however old. Absent where the file cannot be read or is no gauge, which a
    /// half-written file is not either; never throws but for want of memory.
    [[nodiscard]] std::optional<UsageModel::GaugeReading> read() const;
    /// What the reading asserts; empty where there is none.
    [[nodiscard]] std::vector<UsageModel::Anchor> anchors() const;
};

} // namespace UsageGauge
