#pragma once

#include <array>
#include <string_view>

#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"
#include "UsageModel/Fields.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/UsageEvent.h"

namespace UsageModel {

/// The four billed categories of tokens.
enum class TokenCategory { input, output, cacheCreation, cacheRead };

template <>
struct EnumNames<TokenCategory> {
    static constexpr std::array<std::string_view, 4> names{"input", "output", "cacheCreation", "cacheRead"};
};

/// How tokens become one number, the log unit: a weight for one token of each category, and a factor by class.
struct CategoryWeights {
    double input = 0.0;
    double output = 0.0;
    double cacheCreation = 0.0;
    double cacheRead = 0.0;
    EnumMap<ModelClass, double> classMultiplier;

    /// How dear a class is relative to Opus. An unknown model is priced like Sonnet, not like the cheapest.
    [[nodiscard]] static const EnumMap<ModelClass, double>& pricePriors();
    /// The standard weights, where one input token weighs `scale` on Opus.
    [[nodiscard]] static CategoryWeights priors(double scale);

    [[nodiscard]] double weight(TokenCategory category) const;
    /// The factor of a class; 1 for a class that `classMultiplier` does not hold.
    [[nodiscard]] double multiplier(ModelClass modelClass) const;
    /// The weight of a turn in log units. Not clamped: negative counts give a negative weight.
    [[nodiscard]] double effective(const UsageEvent& event) const;
    /// The part of it that is output.
    [[nodiscard]] double outputWeight(const UsageEvent& event) const;

    friend bool operator==(const CategoryWeights&, const CategoryWeights&) = default;
};

/// The scale of the weights that the program runs with: one million Opus input tokens weigh 0.1.
inline constexpr double liveWeightScale = 1e-7;

template <FieldsOf<CategoryWeights> Self>
void visitFields(Self& self, auto&& visit) {
    visit("input", self.input);
    visit("output", self.output);
    visit("cacheCreation", self.cacheCreation);
    visit("cacheRead", self.cacheRead);
    visit("classMultiplier", self.classMultiplier);
}

} // namespace UsageModel
