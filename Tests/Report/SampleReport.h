#pragma once

#include <vector>

#include "Report/Report.h"

namespace Report {

/// 2026-03-01 10:20:30 in UTC, a Sunday.
inline constexpr UsageModel::Date sampleNow{1772360430};

struct Tokens {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;
};

[[nodiscard]] UsageModel::UsageEvent turn(double secondsBeforeNow, UsageModel::ModelClass modelClass, Tokens tokens);

/// Turns of Opus an hour and a day ago and of Haiku ten days ago.
[[nodiscard]] std::vector<UsageModel::UsageEvent> sampleTurns();
/// Taken four minutes ago: the session window at 42 percent until in 2 h 13 min, the weekly one at 91.5 without a
/// reset.
[[nodiscard]] UsageModel::GaugeReading sampleGauge();
[[nodiscard]] UsageReport sampleReport();

} // namespace Report
