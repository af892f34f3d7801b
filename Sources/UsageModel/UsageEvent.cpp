#include "UsageModel/UsageEvent.h"

#include "UsageModel/Saturating.h"

namespace UsageModel {

std::int64_t rawTokens(const UsageEvent& event) {
    return saturatingSum({event.input, event.output, event.cacheCreation, event.cacheRead});
}

} // namespace UsageModel
