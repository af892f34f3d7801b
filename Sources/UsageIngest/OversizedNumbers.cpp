#include "UsageIngest/OversizedNumbers.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace UsageIngest {

namespace {

using Cursor = std::span<char>::iterator;

// A double that no count can be; every number it stands in for has at least as many characters.
constexpr std::string_view standIn = "1e99";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isNumberCharacter(char c) {
    return isDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

Cursor skipDigits(Cursor at, Cursor end) {
    return std::find_if_not(at, end, isDigit);
}

/// The end of the number that JSON's grammar reads at `at`, or `at` where there is none.
Cursor endOfNumber(const Cursor start, Cursor end) {
    Cursor at = start;
    if (at != end && *at == '-') ++at;
    const Cursor integerEnd = skipDigits(at, end);
    if (integerEnd == at || (*at == '0' && integerEnd - at > 1)) return start;
    at = integerEnd;
    if (at != end && *at == '.') {
        const Cursor fractionEnd = skipDigits(at + 1, end);
        if (fractionEnd == at + 1) return start;
        at = fractionEnd;
    }
    if (at != end && (*at == 'e' || *at == 'E')) {
        Cursor exponent = at + 1;
        if (exponent != end && (*exponent == '+' || *exponent == '-')) ++exponent;
        const Cursor exponentEnd = skipDigits(exponent, end);
        if (exponentEnd == exponent) return start;
        at = exponentEnd;
    }
    return at;
}

bool isOversized(std::string_view number) {
    const char* first = number.data();
    const char* last = first + number.size();
    if (number.find_first_of(".eE") != std::string_view::npos) {
        double value = 0.0;
        return std::from_chars(first, last, value).ec == std::errc::result_out_of_range;
    }
    std::int64_t value = 0;
    return std::from_chars(first, last, value).ec == std::errc::result_out_of_range;
}

Cursor skipString(Cursor openingQuote, Cursor end) {
    Cursor at = openingQuote + 1;
    while (at != end && *at != '"') at += *at == '\\' && at + 1 != end ? 2 : 1;
    return at == end ? end : at + 1;
}

} // namespace

bool maskOversizedNumbers(std::span<char> json) {
    bool any = false;
    for (Cursor at = json.begin(); at != json.end();) {
        if (*at == '"') {
            at = skipString(at, json.end());
            continue;
        }
        if (!isNumberCharacter(*at)) {
            ++at;
            continue;
        }
        const Cursor tokenEnd = std::find_if_not(at, json.end(), isNumberCharacter);
        const bool isNumber = endOfNumber(at, json.end()) == tokenEnd;
        if (isNumber && isOversized({at, tokenEnd})) {
            std::fill(std::copy(standIn.begin(), standIn.end(), at), tokenEnd, ' ');
            any = true;
        }
        at = tokenEnd;
    }
    return any;
}

} // namespace UsageIngest
