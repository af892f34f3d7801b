#pragma once

#include <optional>
#include <span>

#include "UsageEngine/WindowComputation.h"

/// The one piece of advice, in words.
namespace UsageEngine::Advice {

struct Question {
    std::span<const WindowCompute> computed;
    /// One of `computed`.
    const WindowCompute& binding;
    const UsageModel::LiveModel& live;
    UsageModel::Date now;
};

/// How to save where the binding window is about to run out; else how to use the room that is there. Absent where
/// neither can be told.
[[nodiscard]] std::optional<UsageModel::Recommendation> recommend(const Question& question);

/// A richer model or effort that every window can afford. Only what runs now and has settled can be moved up.
[[nodiscard]] std::optional<UsageModel::Recommendation> spendMore(const Question& question);

/// The least that brings a window back inside its limit, or a pause, or the word that nothing does. Absent where it
/// does not run out, or its reset is not known.
[[nodiscard]] std::optional<UsageModel::Recommendation> easeOff(const WindowCompute& binding, UsageModel::Date now);

} // namespace UsageEngine::Advice
