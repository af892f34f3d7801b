#pragma once

#include <cmath>

#include "UsageModel/CategoryWeights.h"
#include "UsageModel/Date.h"
#include "UsageModel/UsageEvent.h"

/// How the service counts against its limits.
namespace Pipeline {

/// What a turn costs, in log units.
inline double weightOf(const UsageModel::UsageEvent& turn) {
    static const auto weights = UsageModel::CategoryWeights::priors(UsageModel::liveWeightScale);
    return weights.effective(turn);
}

/// The beginning of the span that an instant lies in, where spans of that many seconds follow each other since 1970.
inline UsageModel::Date startOfSpan(UsageModel::Date instant, double seconds) {
    return UsageModel::Date{std::floor(instant.secondsSince1970 / seconds) * seconds};
}

} // namespace Pipeline
