#pragma once

#include "Report/View.h"

namespace Report {

/// Where each window lands at its reset, and when it runs out: likely, and at the earliest.
[[nodiscard]] Lines forecastLines(const View& view);

} // namespace Report
