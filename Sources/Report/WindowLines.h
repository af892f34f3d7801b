#pragma once

#include "Report/View.h"

namespace Report {

/// Each window: its bar of tokens with the time that is gone marked on it, percent, pace, reset, and how far to trust
/// it all.
[[nodiscard]] Lines windowLines(const View& view);

} // namespace Report
