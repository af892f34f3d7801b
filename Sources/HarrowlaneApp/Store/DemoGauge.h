#pragma once

#include "UsageModel/Date.h"
#include "UsageModel/GaugeReading.h"

namespace HarrowlaneApp {

/// Whether a demonstration is asked for: by the text "1" alone; null where nothing was said.
[[nodiscard]] bool wantsDemoGauge(const char* text);

/// A made-up reading, to stage pictures with.
[[nodiscard]] UsageModel::GaugeReading demoGauge(UsageModel::Date now);

} // namespace HarrowlaneApp
