#pragma once

#include "UsageModel/UsageSnapshot.h"

namespace Report {

/// 2026-03-01 10:20:30 in UTC, a Sunday.
inline constexpr UsageModel::Date sampleNow{1772360430};

/// A calm session and a week that runs out, with advice; a reading four minutes old. The Opus week is not gauged.
[[nodiscard]] UsageModel::UsageSnapshot sampleSnapshot();
/// The same for a user without any official reading.
[[nodiscard]] UsageModel::UsageSnapshot ungaugedSnapshot();

} // namespace Report
