#include "Report/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

namespace Report {

namespace {

struct Character {
    /// Not a character where the bytes are no UTF-8.
    char32_t code = 0xfffd;
    std::size_t bytes = 1;
    bool isValid = false;
};

struct Range {
    char32_t first;
    char32_t last;
};

template <std::size_t Count>
bool isIn(const std::array<Range, Count>& ranges, char32_t code) {
    return std::ranges::any_of(ranges, [=](Range range) { return range.first <= code && code <= range.last; });
}

std::size_t lengthAfter(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xc2 && lead < 0xe0) return 2;
    if (lead >= 0xe0 && lead < 0xf0) return 3;
    return lead >= 0xf0 && lead < 0xf5 ? 4 : 0;
}

bool isPlausible(char32_t code, std::size_t bytes) {
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    constexpr Range surrogates{0xd800, 0xdfff};
    return code >= smallest[bytes] && code <= 0x10ffff && !(code >= surrogates.first && code <= surrogates.last);
}

Character firstOf(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t bytes = lengthAfter(lead);
    if (bytes == 0 || bytes > text.size()) return {};
    char32_t code = bytes == 1 ? lead : lead & (0xffU >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xc0U) != 0x80U) return {};
        code = (code << 6U) | (next & 0x3fU);
    }
    return isPlausible(code, bytes) ? Character{.code = code, .bytes = bytes, .isValid = true} : Character{};
}

/// Calls `use` with each character and the bytes it was read from.
template <typename Use>
void forEach(std::string_view text, Use use) {
    while (!text.empty()) {
        const Character character = firstOf(text);
        use(character, text.substr(0, character.bytes));
        text.remove_prefix(character.bytes);
    }
}

bool isSafe(const Character& character) {
    // Controls of seven and of eight bits; soft hyphen; marks of direction, invisible ones, line and paragraph ends,
    // interlinear notes, tags.
    constexpr std::array<Range, 13> unsafe{{{0x00, 0x1f},
                                            {0x7f, 0x9f},
                                            {0xad, 0xad},
                                            {0x34f, 0x34f},
                                            {0x61c, 0x61c},
                                            {0x180b, 0x180f},
                                            {0x200b, 0x200f},
                                            {0x2028, 0x202e},
                                            {0x2060, 0x206f},
                                            {0xfe00, 0xfe0f},
                                            {0xfeff, 0xfeff},
                                            {0xfff0, 0xfffb},
                                            {0xe0000, 0xe0fff}}};
    return character.isValid && !isIn(unsafe, character.code);
}

std::size_t widthOf(char32_t code) {
    constexpr std::array<Range, 9> none{{{0x300, 0x36f},
                                         {0x483, 0x489},
                                         {0x591, 0x5bd},
                                         {0x610, 0x61a},
                                         {0x64b, 0x65f},
                                         {0x93c, 0x93c},
                                         {0x1ab0, 0x1aff},
                                         {0x20d0, 0x20ff},
                                         {0xfe20, 0xfe2f}}};
    constexpr std::array<Range, 10> two{{{0x1100, 0x115f},
                                         {0x231a, 0x231b},
                                         {0x2e80, 0xa4cf},
                                         {0xac00, 0xd7a3},
                                         {0xf900, 0xfaff},
                                         {0xfe30, 0xfe6f},
                                         {0xff00, 0xff60},
                                         {0xffe0, 0xffe6},
                                         {0x1f300, 0x1faff},
                                         {0x20000, 0x3fffd}}};
    if (isIn(none, code)) return 0;
    return isIn(two, code) ? 2 : 1;
}

using Likeness = std::pair<char32_t, char>;

char asciiLike(char32_t code) {
    constexpr std::array<Likeness, 28> likenesses{
        {{U'–', '-'}, {U'—', '-'}, {U'·', '-'}, {U'…', '.'}, {U'×', 'x'},  {U'≈', '~'},  {U'÷', '/'},
         {U'→', '>'}, {U'↑', '^'}, {U'“', '"'}, {U'”', '"'}, {U'‘', '\''}, {U'’', '\''}, {U'█', '#'},
         {U'▉', '#'}, {U'▊', '#'}, {U'▋', '#'}, {U'▌', '#'}, {U'▍', '.'},  {U'▎', '.'},  {U'▏', '.'},
         {U'░', '.'}, {U'│', '|'}, {U'┃', '|'}, {U'─', '-'}, {U'┄', '-'},  {U'┴', '+'},  {U'▲', '^'}}};
    constexpr char32_t firstBeyond = 0x80;
    if (code < firstBeyond) return static_cast<char>(code);
    const auto* like = std::ranges::find(likenesses, code, &Likeness::first);
    return like == likenesses.end() ? '?' : like->second;
}

} // namespace

std::string percentText(double fraction) {
    constexpr double plainBelow = 1e6;
    const double percentage = 100 * fraction;
    std::array<char, 64> text{};
    const char* format = std::abs(percentage) < plainBelow ? "%.0f%%" : "%.3g%%";
    // Adding 0 makes a rounded -0.4 a plain zero.
    std::snprintf(text.data(), text.size(), format, std::round(percentage) + 0.0);
    return text.data();
}

std::string multipleText(double factor) {
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), "%.2f×", factor);
    return text.data();
}

std::string grouped(std::int64_t count) {
    std::string digits = std::to_string(count);
    const std::size_t first = count < 0 ? 1 : 0;
    for (std::size_t end = digits.size(); end > first + 3; end -= 3) digits.insert(end - 3, 1, ',');
    return digits;
}

std::string oneLine(std::string_view text) {
    std::string line;
    forEach(text, [&](const Character& character, std::string_view bytes) {
        line.append(isSafe(character) ? bytes : std::string_view("?"));
    });
    return line;
}

std::size_t columnsOf(std::string_view text) {
    std::size_t columns = 0;
    forEach(text, [&](const Character& character, std::string_view) { columns += widthOf(character.code); });
    return columns;
}

std::string_view beginning(std::string_view text, std::size_t columns) {
    std::size_t bytes = 0;
    std::size_t taken = 0;
    bool fits = true;
    forEach(text, [&](const Character& character, std::string_view own) {
        taken += widthOf(character.code);
        fits = fits && taken <= columns;
        if (fits) bytes += own.size();
    });
    return text.substr(0, bytes);
}

std::string shortened(std::string_view text, std::size_t columns) {
    if (columnsOf(text) <= columns || columns == 0) return std::string(beginning(text, columns));
    return std::string(beginning(text, columns - 1)) + "…";
}

std::string padded(std::string_view text, std::size_t columns) {
    return std::string(text) + std::string(columns - std::min(columns, columnsOf(text)), ' ');
}

std::string rightAligned(std::string_view text, std::size_t columns) {
    return std::string(columns - std::min(columns, columnsOf(text)), ' ') + std::string(text);
}

std::string asciiOf(std::string_view text) {
    std::string ascii;
    forEach(text, [&](const Character& character, std::string_view) {
        ascii.append(widthOf(character.code), asciiLike(character.code));
    });
    return ascii;
}

} // namespace Report
