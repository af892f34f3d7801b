#include "UsageModel/UsageSnapshot.h"

#include <algorithm>

namespace UsageModel {

double ModelBreakdown::total() const {
    return sumOfValues(byClass);
}

double ModelBreakdown::fraction(ModelClass modelClass) const {
    const double whole = total();
    if (!(whole > 0)) return 0.0;
    return byClass.valueOr(modelClass, 0.0) / whole;
}

std::optional<ModelClass> SessionBlock::dominantClass() const {
    std::optional<std::pair<ModelClass, double>> largest;
    for (const auto& entry : byModelClass) {
        if (!largest || entry.second > largest->second) largest = entry;
    }
    if (!largest) return std::nullopt;
    return largest->first;
}

UsageSnapshot UsageSnapshot::warmingUp(Date now) {
    UsageSnapshot snapshot;
    snapshot.generatedAt = now;
    snapshot.verdict = {
        .headline = "Warming up…",
        .consequence = Consequence::fine,
        .severity = Severity::green,
        .subtext = "Reading your usage history",
    };
    return snapshot;
}

const WindowState* UsageSnapshot::bindingMeter() const {
    const auto meter = std::ranges::find(meters, binding, &WindowState::kind);
    return meter == meters.end() ? nullptr : &*meter;
}

} // namespace UsageModel
