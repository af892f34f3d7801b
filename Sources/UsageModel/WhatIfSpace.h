#pragma once

#include <optional>

#include "UsageModel/EffortLevel.h"
#include "UsageModel/EnumMap.h"
#include "UsageModel/Fields.h"
#include "UsageModel/ModelClass.h"

namespace UsageModel {

/// A model and an effort to change to; absent stands for no change.
struct ModelAndEffort {
    std::optional<ModelClass> model;
    std::optional<EffortLevel> effort;

    friend bool operator==(const ModelAndEffort&, const ModelAndEffort&) = default;
};

template <FieldsOf<ModelAndEffort> Self>
void visitFields(Self& self, auto&& visit) {
    visit("model", self.model);
    visit("effort", self.effort);
}

/// The inputs of the question what would happen if the rest of the window were spent differently.
struct WhatIfSpace {
    /// The burn's share by class, summing to 1 where there is any.
    EnumMap<ModelClass, double> byFamily;
    /// The relative price of each class.
    EnumMap<ModelClass, double> familyMultiplier;
    /// The share of the burn that is output tokens.
    double outputShare = 0.0;
    /// The burn's share by effort.
    EnumMap<EffortLevel, double> effortMix;
    /// The level the user seems to use.
    std::optional<EffortLevel> currentEffort;
    /// The relative cost of output by level.
    EnumMap<EffortLevel, double> effortMultiplier;

    /// The level that other levels are compared with: the current one, or `high`.
    [[nodiscard]] EffortLevel anchorEffort() const { return currentEffort.value_or(EffortLevel::high); }

    /// The share of the burn that counts toward the Opus limit.
    [[nodiscard]] double opusShare() const;
    /// The factor on the burn if all of it moved to `model`, at least 0. 1 for no model, or one without a price.
    /// The share of a class without a price is taken as it stands.
    [[nodiscard]] double modelFactor(std::optional<ModelClass> model) const;
    /// The factor on the burn if the effort changed, at least 0: only the output share moves with it. 1 for no effort,
    /// and where the multiplier of it or of the anchor is missing or the anchor's is not above 0.
    [[nodiscard]] double effortFactor(std::optional<EffortLevel> effort) const;
    [[nodiscard]] double factor(const ModelAndEffort& change) const;
    /// Whether the change would change anything worth telling.
    [[nodiscard]] bool applies(const ModelAndEffort& change) const;
    /// A figure for another level than the anchor rests on priors, not on the logs.
    [[nodiscard]] bool isEstimate(std::optional<EffortLevel> effort) const;
    /// The class of the smallest price (of equals, the alphabetically first) with its lowest effort.
    /// Without any price: no model, and `low`.
    [[nodiscard]] ModelAndEffort cheapestCombination() const;

    friend bool operator==(const WhatIfSpace&, const WhatIfSpace&) = default;
};

template <FieldsOf<WhatIfSpace> Self>
void visitFields(Self& self, auto&& visit) {
    visit("byFamily", self.byFamily);
    visit("familyMultiplier", self.familyMultiplier);
    visit("outputShare", self.outputShare);
    visit("effortMix", self.effortMix);
    visit("currentEffort", self.currentEffort);
    visit("effortMultiplier", self.effortMultiplier);
}

} // namespace UsageModel
