#pragma once

#include "UsageModel/Date.h"
#include "UsageModel/GaugeReading.h"

namespace HarrowlaneApp {

/// A made-up reading, to stage pictures with.
[[nodiscard]] UsageModel::GaugeReading demoGauge(UsageModel::Date now);

} // namespace HarrowlaneApp
