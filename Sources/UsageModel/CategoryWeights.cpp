#include "UsageModel/CategoryWeights.h"

namespace UsageModel {

const EnumMap<ModelClass, double>& CategoryWeights::pricePriors() {
    static const EnumMap<ModelClass, double> priors{
        {ModelClass::opus, 1.0},  {ModelClass::fable, 2.0}, {ModelClass::sonnet, 0.6},
        {ModelClass::haiku, 0.2}, {ModelClass::other, 0.6},
    };
    return priors;
}

CategoryWeights CategoryWeights::priors(double scale) {
    return {
        .input = scale,
        .output = 5 * scale,
        .cacheCreation = 1.25 * scale,
        .cacheRead = 0.1 * scale,
        .classMultiplier = pricePriors(),
    };
}

double CategoryWeights::weight(TokenCategory category) const {
    const std::array<double, caseCount<TokenCategory>> weights{input, output, cacheCreation, cacheRead};
    return weights[caseIndex(category)];
}

double CategoryWeights::multiplier(ModelClass modelClass) const {
    return classMultiplier.valueOr(modelClass, 1.0);
}

double CategoryWeights::effective(const UsageEvent& event) const {
    // In this order, and left to right: the last bits of every sum in the engine depend on it.
    return (input * static_cast<double>(event.input) + output * static_cast<double>(event.output) +
            cacheCreation * static_cast<double>(event.cacheCreation) +
            cacheRead * static_cast<double>(event.cacheRead)) *
           multiplier(event.modelClass);
}

double CategoryWeights::outputWeight(const UsageEvent& event) const {
    return output * static_cast<double>(event.output) * multiplier(event.modelClass);
}

} // namespace UsageModel
