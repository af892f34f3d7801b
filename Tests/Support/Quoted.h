#pragma once

#include <string>

namespace TestSupport {

/// The word as a shell takes it.
inline std::string quoted(const std::string& word) {
    std::string quoted = "'";
    for (const char c : word) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

} // namespace TestSupport
