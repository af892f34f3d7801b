#pragma once

#include "Report/View.h"

namespace Report {

/// The recommendation: its title, why, what it brings, and the command that does it. None where there is none.
[[nodiscard]] Lines adviceLines(const View& view);

} // namespace Report
