#include "UsageModel/ModelClass.h"

#include <algorithm>

namespace UsageModel {

namespace {

constexpr char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool containsAnyCase(std::string_view text, std::string_view lowerCaseWord) {
    const auto equal = [](char a, char b) { return asciiLower(a) == b; };
    return std::search(text.begin(), text.end(), lowerCaseWord.begin(), lowerCaseWord.end(), equal) != text.end();
}

} // namespace

ModelClass modelClass(std::string_view rawModel) {
    // "claude-opus-4-fable" is a Fable model: the order of the tests is what decides.
    for (const ModelClass candidate : {ModelClass::fable, ModelClass::opus, ModelClass::sonnet, ModelClass::haiku}) {
        if (containsAnyCase(rawModel, text(candidate))) return candidate;
    }
    return ModelClass::other;
}

std::string_view displayName(ModelClass modelClass) {
    constexpr std::array<std::string_view, 5> names{"Opus", "Fable", "Sonnet", "Haiku", "Other"};
    return names[caseIndex(modelClass)];
}

ModelBucket bucket(ModelClass modelClass) {
    if (isOpusClass(modelClass)) return ModelBucket::opusClass;
    return modelClass == ModelClass::sonnet ? ModelBucket::sonnet : ModelBucket::other;
}

std::string_view label(ModelBucket bucket) {
    constexpr std::array<std::string_view, 3> labels{"Opus-class", "Sonnet", "Haiku & other"};
    return labels[caseIndex(bucket)];
}

std::array<std::pair<ModelBucket, double>, 3> bucketed(const EnumMap<ModelClass, double>& byClass) {
    std::array<std::pair<ModelBucket, double>, 3> sums{{
        {ModelBucket::opusClass, 0.0},
        {ModelBucket::sonnet, 0.0},
        {ModelBucket::other, 0.0},
    }};
    for (const auto& [modelClass, value] : byClass) sums[caseIndex(bucket(modelClass))].second += value;
    return sums;
}

} // namespace UsageModel
