#pragma once

#include <cctype>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace TestSupport {

/// What every row of a parameterised test begins with: the words that tell it from the others.
struct Named {
    std::string_view name;

    friend std::ostream& operator<<(std::ostream& out, const Named& row) { return out << row.name; }
};

/// The words with every character that a test's name may not hold as an underscore.
inline std::string asTestName(std::string_view words) {
    std::string name(words);
    for (char& c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    }
    return name;
}

/// Names a parameterised test after its row's `name`.
inline constexpr auto rowName = [](const auto& info) { return asTestName(info.param.name); };

} // namespace TestSupport
