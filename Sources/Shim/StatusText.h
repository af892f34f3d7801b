#pragma once

#include <string>

#include "UsageModel/GaugeReading.h"

namespace Shim {

/// What a status line says of a reading, such as "5h 42% · 7d 18%": the windows that state a percentage, rounded to
/// the nearest whole one. Empty where none does.
[[nodiscard]] std::string statusText(const UsageModel::GaugeReading& reading);

} // namespace Shim
