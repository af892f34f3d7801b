#include "UsageEngine/WholePercent.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace UsageEngine {

std::string wholePercent(double fraction) {
    // As long as the longest finite number has digits. Adding 0 turns a negative zero into a plain one.
    std::array<char, 320> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), "%.0f", std::round(fraction * 100.0) + 0.0);
    return {digits.data(), static_cast<std::size_t>(length)};
}

} // namespace UsageEngine
