#pragma once

#include <cstdint>
#include <optional>

#include "UsageModel/Date.h"
#include "UsageModel/EffortLevel.h"
#include "UsageModel/Fields.h"
#include "UsageModel/ModelClass.h"
#include "UsageModel/SharedText.h"

namespace UsageModel {

/// One billed turn. The counts are tokens as logged; they may be negative in a damaged log.
struct UsageEvent {
    Date ts;
    SharedText sessionId;
    SharedText model;
    ModelClass modelClass = ModelClass::other;
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheCreation = 0;
    std::int64_t cacheRead = 0;
    std::optional<EffortLevel> effort;

    friend bool operator==(const UsageEvent&, const UsageEvent&) = default;
};

static_assert(sizeof(UsageEvent) <= 80, "a million turns are held in memory: keep a turn small");

template <FieldsOf<UsageEvent> Self>
void visitFields(Self& self, auto&& visit) {
    visit("ts", self.ts);
    visit("sessionId", self.sessionId);
    visit("model", self.model);
    visit("modelClass", self.modelClass);
    visit("input", self.input);
    visit("output", self.output);
    visit("cacheCreation", self.cacheCreation);
    visit("cacheRead", self.cacheRead);
    visit("effort", self.effort);
}

/// The plain sum of the four counts; a sum outside 64 bits is held at the nearest that fits.
[[nodiscard]] std::int64_t rawTokens(const UsageEvent& event);

} // namespace UsageModel
