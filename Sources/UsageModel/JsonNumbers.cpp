#include "UsageModel/JsonNumbers.h"

#include <algorithm>

namespace UsageModel {

namespace {

using Cursor = std::string_view::const_iterator;

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

Cursor skipString(Cursor openingQuote, Cursor end) {
    Cursor at = openingQuote + 1;
    while (at != end && *at != '"') at += *at == '\\' && at + 1 != end ? 2 : 1;
    return at == end ? end : at + 1;
}

} // namespace

void forEachNumber(std::string_view json, const std::function<void(std::string_view number)>& onNumber) {
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
        if (endOfNumber(at, json.end()) == tokenEnd) onNumber({at, tokenEnd});
        at = tokenEnd;
    }
}

} // namespace UsageModel
