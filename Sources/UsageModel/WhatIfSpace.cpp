#include "UsageModel/WhatIfSpace.h"

#include <algorithm>
#include <cmath>

namespace UsageModel {

namespace {

// A change of the burn smaller than this is rounding, not a saving.
constexpr double smallestChange = 1e-6;
// Below this share of output a change of effort moves nothing that a user could see.
constexpr double smallestOutputShare = 0.001;

std::optional<double> positivePrice(const EnumMap<ModelClass, double>& prices, ModelClass modelClass) {
    const std::optional<double>& price = prices.find(modelClass);
    if (!price || !(*price > 0)) return std::nullopt;
    return price;
}

std::optional<EffortLevel> lowestEffort(std::optional<ModelClass> model) {
    if (!model) return EffortLevel::low;
    const auto levels = availableEfforts(*model);
    return levels.empty() ? std::nullopt : std::optional(levels.front());
}

} // namespace

double WhatIfSpace::modelFactor(std::optional<ModelClass> model) const {
    if (!model) return 1.0;
    const std::optional<double> target = positivePrice(familyMultiplier, *model);
    if (!target) return 1.0;

    double factor = 0.0;
    for (const auto& [modelClass, share] : byFamily) {
        const std::optional<double> price = positivePrice(familyMultiplier, modelClass);
        factor += price ? share * (*target / *price) : share;
    }
    return std::max(factor, 0.0);
}

double WhatIfSpace::effortFactor(std::optional<EffortLevel> effort) const {
    if (!effort) return 1.0;
    const std::optional<double>& target = effortMultiplier.find(*effort);
    const std::optional<double>& anchor = effortMultiplier.find(anchorEffort());
    if (!target || !anchor || !(*anchor > 0)) return 1.0;
    return std::max(1 - (1 - *target / *anchor) * outputShare, 0.0);
}

double WhatIfSpace::opusShare() const {
    double share = 0.0;
    for (const auto& [modelClass, part] : byFamily) {
        if (isOpusClass(modelClass)) share += part;
    }
    return share;
}

double WhatIfSpace::factor(const ModelAndEffort& change) const {
    return modelFactor(change.model) * effortFactor(change.effort);
}

bool WhatIfSpace::applies(const ModelAndEffort& change) const {
    if (change.model && std::abs(modelFactor(change.model) - 1) > smallestChange) return true;
    return isEstimate(change.effort) && outputShare > smallestOutputShare;
}

bool WhatIfSpace::isEstimate(std::optional<EffortLevel> effort) const {
    return effort && *effort != anchorEffort();
}

ModelAndEffort WhatIfSpace::cheapestCombination() const {
    std::optional<std::pair<ModelClass, double>> cheapest;
    for (const auto& entry : familyMultiplier) {
        const auto& [modelClass, price] = entry;
        if (!(price > 0)) continue;
        const bool cheaper = !cheapest || price < cheapest->second ||
                             (price == cheapest->second && text(modelClass) < text(cheapest->first));
        if (cheaper) cheapest = entry;
    }
    const auto model = cheapest ? std::optional(cheapest->first) : std::nullopt;
    return {.model = model, .effort = lowestEffort(model)};
}

} // namespace UsageModel
