#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace UsageModel {

/// The cases of an enumeration with their text forms, in the enumeration's order. An enumeration with a text form
/// specialises this with `static constexpr std::array names`, one name a case, where the n-th case has the value n.
template <typename Enum>
struct EnumNames;

template <typename Enum>
concept NamedEnum = requires {
    EnumNames<Enum>::names.size();
};

template <NamedEnum Enum>
inline constexpr std::size_t caseCount = EnumNames<Enum>::names.size();

template <NamedEnum Enum>
constexpr std::size_t caseIndex(Enum value) {
    return static_cast<std::size_t>(value);
}

/// Every case, in the enumeration's order.
template <NamedEnum Enum>
inline constexpr std::array<Enum, caseCount<Enum>> allCases = [] {
    std::array<Enum, caseCount<Enum>> cases{};
    for (std::size_t i = 0; i < cases.size(); ++i) cases[i] = static_cast<Enum>(i);
    return cases;
}();

/// The text form: what stands in JSON and in the database.
template <NamedEnum Enum>
constexpr std::string_view text(Enum value) {
    return EnumNames<Enum>::names[caseIndex(value)];
}

/// The case with exactly this text form (case-sensitive); absent when there is none.
template <NamedEnum Enum>
constexpr std::optional<Enum> fromText(std::string_view text) {
    const auto& names = EnumNames<Enum>::names;
    const auto found = std::find(names.begin(), names.end(), text);
    if (found == names.end()) return std::nullopt;
    return static_cast<Enum>(found - names.begin());
}

} // namespace UsageModel
