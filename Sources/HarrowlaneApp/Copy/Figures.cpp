#include "HarrowlaneApp/Copy/Figures.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace HarrowlaneApp::Figures {

double wholePercent(double fraction) {
    // Adding zero turns the negative zero, which would be written "-0", into zero.
    return std::round(100 * fraction) + 0.0;
}

std::string percentNumber(double fraction) {
    return fixed(wholePercent(fraction), 0);
}

std::string percent(double fraction) {
    return percentNumber(fraction) + "%";
}

std::string finePercent(double fraction) {
    return fixed(100 * fraction, 1) + "%";
}

std::string multiple(double value) {
    return fixed(value, 2) + "×";
}

std::string fixed(double value, int decimals) {
    if (!std::isfinite(value)) return "—";
    // Not printf, which takes the decimal point from the locale that the windowing library sets.
    std::array<char, std::numeric_limits<double>::max_exponent10 + 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return {text.data(), end.ptr};
}

} // namespace HarrowlaneApp::Figures
