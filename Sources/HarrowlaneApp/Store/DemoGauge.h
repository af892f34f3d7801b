#pragma once

#include "UsageModel/Date.h"
#include "UsageModel/GaugeReading.h"

namespace HarrowlaneApp {

/// The environment variable that asks for the made-up gauge, by the value "1" alone.
inline constexpr const char* demoGaugeVariable = "HWL_DEMO_GAUGE";

/// A gauge for staging pictures, as if read now: all three windows well in use.
[[nodiscard]] UsageModel::GaugeReading demoGauge(UsageModel::Date now);

} // namespace HarrowlaneApp
