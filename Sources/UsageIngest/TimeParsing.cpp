#include "UsageIngest/TimeParsing.h"

#include <algorithm>

namespace UsageIngest::TimeParsing {

namespace {

constexpr std::string_view form = "dddd-dd-ddTdd:dd:dd"; // d: a digit, T: a T or a space, else itself
constexpr std::size_t fractionDot = form.size();
constexpr std::int64_t daysPerEra = 146097;
constexpr std::int64_t daysFromEraStartTo1970 = 719468;
constexpr std::int64_t secondsPerDay = 86400;

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool fits(char expected, char c) {
    if (expected == 'd') return isDigit(c);
    if (expected == 'T') return c == 'T' || c == ' ';
    return c == expected;
}

std::int64_t number(std::string_view digits) {
    std::int64_t value = 0;
    for (const char digit : digits) value = value * 10 + (digit - '0');
    return value;
}

std::int64_t milliseconds(std::string_view text) {
    if (text.size() <= fractionDot || text[fractionDot] != '.') return 0;
    std::int64_t value = 0;
    std::int64_t unit = 100;
    for (std::size_t i = fractionDot + 1; i < text.size() && unit > 0 && isDigit(text[i]); ++i, unit /= 10) {
        value += unit * (text[i] - '0');
    }
    return value;
}

} // namespace

std::optional<UsageModel::Date> iso8601UTC(std::string_view text) {
    if (text.size() < form.size()) return std::nullopt;
    if (!std::equal(form.begin(), form.end(), text.begin(), fits)) return std::nullopt;

    const auto field = [&](std::size_t from, std::size_t length) { return number(text.substr(from, length)); };
    const CivilDay day{.year = field(0, 4), .month = field(5, 2), .day = field(8, 2)};
    const std::int64_t seconds =
        civilToEpochDays(day) * secondsPerDay + field(11, 2) * 3600 + field(14, 2) * 60 + field(17, 2);
    return UsageModel::Date{static_cast<double>(milliseconds(text)) / 1000.0 + static_cast<double>(seconds)};
}

std::int64_t civilToEpochDays(const CivilDay& civil) {
    const std::int64_t year = civil.month <= 2 ? civil.year - 1 : civil.year;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t monthFromMarch = civil.month > 2 ? civil.month - 3 : civil.month + 9;
    const std::int64_t dayOfYear = (153 * monthFromMarch + 2) / 5 + civil.day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * daysPerEra + dayOfEra - daysFromEraStartTo1970;
}

} // namespace UsageIngest::TimeParsing
