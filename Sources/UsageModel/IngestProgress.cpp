#include "UsageModel/IngestProgress.h"

#include <algorithm>

namespace UsageModel {

double IngestProgress::fraction() const {
    if (bytesTotal < 1) return complete ? 1.0 : 0.0;
    return std::min(static_cast<double>(bytesDone) / static_cast<double>(bytesTotal), 1.0);
}

} // namespace UsageModel
