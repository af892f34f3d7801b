#pragma once

#include <cstdint>

#include "UsageModel/UsageSnapshot.h"

namespace ViewTests {

/// Snapshots as no engine would make them: empty lists, one point, windows without length or turned round, weeks of
/// short days, absurd sizes, long and strange texts, numbers that are none. The same seed makes the same one.
[[nodiscard]] UsageModel::UsageSnapshot generatedSnapshot(std::uint64_t seed);

} // namespace ViewTests
