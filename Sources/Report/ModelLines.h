#pragma once

#include "Report/View.h"

namespace Report {

/// Each model class's share of the week's burn, the largest first. None where nothing was burnt.
[[nodiscard]] Lines modelLines(const View& view);

/// What has been running lately: session, model, effort, last turn and share of the recent burn. None where nothing
/// has.
[[nodiscard]] Lines liveLines(const View& view);

} // namespace Report
