#pragma once

#include <string>

namespace UsageEngine {

/// A fraction in whole percent, halves away from zero, without a sign for percent: 0.705 gives "71". Not grouped.
[[nodiscard]] std::string wholePercent(double fraction);

} // namespace UsageEngine
