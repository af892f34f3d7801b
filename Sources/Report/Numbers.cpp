#include "Report/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace Report {

namespace {

template <typename... Values>
std::string formatted(const char* format, Values... values) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

} // namespace

std::string grouped(std::int64_t count) {
    std::string digits = std::to_string(count);
    const std::size_t first = count < 0 ? 1 : 0;
    for (std::size_t end = digits.size(); end > first + 3; end -= 3) digits.insert(end - 3, 1, ',');
    return digits;
}

std::string compact(std::int64_t count) {
    constexpr double allDigitsBelow = 10'000;
    constexpr std::string_view letters = "kMBTQ";
    const auto value = static_cast<double>(count);
    if (std::abs(value) < allDigitsBelow) return grouped(count);
    std::size_t letter = 0;
    double scaled = value / 1000;
    // What would round up to 1000.0 takes the next letter already.
    while (std::abs(scaled) >= 999.95 && letter + 1 < letters.size()) {
        scaled /= 1000;
        ++letter;
    }
    return formatted("%.1f%c", scaled, letters[letter]);
}

std::string unitsText(double units) {
    constexpr double decimalsBelow = 1000;
    constexpr double groupedBelow = 1e12;
    if (std::abs(units) < decimalsBelow) return formatted("%.4f", units);
    if (std::abs(units) < groupedBelow) return grouped(std::llround(units));
    return formatted("%.3g", units);
}

std::string percentText(double percentage) {
    constexpr double plainBelow = 1e6;
    if (std::abs(percentage) >= plainBelow) return formatted("%.3g%%", percentage);
    return formatted("%.0f%%", std::round(percentage));
}

std::string durationText(double seconds) {
    // A damaged reading may name an instant that no clock will see; ten thousand years say enough.
    constexpr double longest = 3.2e11;
    const auto minutes = static_cast<long long>(std::clamp(seconds, 0.0, longest) / 60);
    const long long hours = minutes / 60;
    const long long days = hours / 24;
    if (minutes < 1) return "less than a minute";
    if (hours < 1) return formatted("%lld min", minutes);
    if (days < 1) return formatted("%lld h %lld min", hours, minutes % 60);
    return formatted("%lld d %lld h", days, hours % 24);
}

std::string oneLine(std::string_view text) {
    constexpr unsigned char firstPrintable = 0x20;
    constexpr unsigned char del = 0x7f;
    std::string line(text);
    std::ranges::replace_if(
        line, [](unsigned char c) { return c < firstPrintable || c == del; }, '?');
    return line;
}

std::size_t columnsOf(std::string_view text) {
    // The bytes of UTF-8 that continue a character take no column of their own.
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80U; }));
}

} // namespace Report
