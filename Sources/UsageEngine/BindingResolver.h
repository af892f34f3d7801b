#pragma once

#include <span>

#include "UsageModel/UsageSnapshot.h"

/// Which of the limits will stop the user first, and what to say of it.
namespace UsageEngine::BindingResolver {

struct Input {
    UsageModel::WindowState state;
    UsageModel::Projection projection;
};

/// Of the windows that breach, the one that empties first; without any, the one that ends closest to its limit. Of
/// equals the first. `weeklyAll` of no inputs. The inputs stand in the order of `WindowKind`.
[[nodiscard]] UsageModel::WindowKind resolve(std::span<const Input> inputs);

/// What the first input of the binding window says in two lines; on track where there is none, and where it breaches
/// at no known instant.
[[nodiscard]] UsageModel::Verdict verdict(UsageModel::WindowKind binding, std::span<const Input> inputs,
                                          UsageModel::Date now);

} // namespace UsageEngine::BindingResolver
