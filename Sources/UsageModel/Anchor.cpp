#include "UsageModel/Anchor.h"

namespace UsageModel {

double assertedFraction(const Anchor& anchor) {
    if (anchor.kind == AnchorKind::ceiling) return 1.0;
    return anchor.usedFraction.value_or(0.0);
}

} // namespace UsageModel
