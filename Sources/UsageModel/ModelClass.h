#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "UsageModel/EnumMap.h"
#include "UsageModel/EnumText.h"

namespace UsageModel {

/// The families of models. Every list of classes is walked in this order.
enum class ModelClass : std::uint8_t { opus, fable, sonnet, haiku, other };

template <>
struct EnumNames<ModelClass> {
    static constexpr std::array<std::string_view, 5> names{"opus", "fable", "sonnet", "haiku", "other"};
};

/// The groups of classes that the limits of the service distinguish.
enum class ModelBucket { opusClass, sonnet, other };

template <>
struct EnumNames<ModelBucket> {
    static constexpr std::array<std::string_view, 3> names{"opusClass", "sonnet", "other"};
};

/// The class of a model name as logged, by the first of "fable", "opus", "sonnet", "haiku" that it contains in any
/// case of its ASCII letters; `other` when it contains none. A name that holds two takes the one named first here.
[[nodiscard]] ModelClass modelClass(std::string_view rawModel);

[[nodiscard]] std::string_view displayName(ModelClass modelClass);
[[nodiscard]] ModelBucket bucket(ModelClass modelClass);
/// Whether the class counts against the weekly Opus limit.
[[nodiscard]] constexpr bool isOpusClass(ModelClass modelClass) {
    return modelClass == ModelClass::opus || modelClass == ModelClass::fable;
}

[[nodiscard]] std::string_view label(ModelBucket bucket);

/// The sums of `byClass` by bucket: always the three buckets, in their order; 0 where no class of a bucket is there.
[[nodiscard]] std::array<std::pair<ModelBucket, double>, 3> bucketed(const EnumMap<ModelClass, double>& byClass);

} // namespace UsageModel
