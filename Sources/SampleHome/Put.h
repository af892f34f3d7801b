#pragma once

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

namespace SampleHome {

inline void putOne(std::string& out, std::string_view text) {
    out.append(text);
}

inline void putOne(std::string& out, std::unsigned_integral auto number) {
    char digits[20];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    out.append(digits, end);
}

/// Appends texts and numbers as they stand. Nothing is escaped: every text of this module is ready for JSON.
/// At most one argument may draw from a Random: compilers evaluate arguments in orders of their own.
template <typename... Parts>
void put(std::string& out, const Parts&... parts) {
    (putOne(out, parts), ...);
}

} // namespace SampleHome
