#pragma once

#include <filesystem>

#include "UsageModel/GaugeReading.h"

namespace Shim {

/// Replaces the gauge file as a whole and makes its folder, for the owner alone, where it is missing. Any number of
/// processes may do so at once. Throws `std::system_error`; the file is then as it was.
void storeGauge(const UsageModel::GaugeReading& reading, const std::filesystem::path& gaugeFile);

} // namespace Shim
