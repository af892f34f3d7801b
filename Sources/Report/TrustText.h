#pragma once

#include <string>

#include "Report/Terminal.h"
#include "Report/Trust.h"

namespace Report {

/// The answer in words, then the figures of every method; where nothing could be replayed, why not.
[[nodiscard]] std::string trustText(const Trust& trust, const UsageModel::Calendar& calendar, const Terminal& terminal);

} // namespace Report
