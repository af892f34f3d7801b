#pragma once

#include "UsageModel/UsageSnapshot.h"

namespace UsageEngine {

/// Fails where any number in a snapshot is not finite, or a text tells one that is not.
void expectFinite(const UsageModel::UsageSnapshot& snapshot);

/// Fails where parts of a snapshot contradict each other. For turns none of which weighs less than nothing.
void expectSound(const UsageModel::UsageSnapshot& snapshot);

} // namespace UsageEngine
