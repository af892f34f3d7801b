#pragma once

#include "Report/View.h"

namespace Report {

/// The week so far, its forecast and a typical week over the days, with the sessions below and a legend. None where
/// there is nothing to draw.
[[nodiscard]] Lines weekChartLines(const View& view);

} // namespace Report
