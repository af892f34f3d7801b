#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Numbers and texts as people read them in a terminal. All texts are UTF-8.
namespace Report {

/// "42%" for 0.42: rounded, halves away from zero.
[[nodiscard]] std::string percentText(double fraction);
/// "1.25×".
[[nodiscard]] std::string multipleText(double factor);
/// "1,234,567".
[[nodiscard]] std::string grouped(std::int64_t count);

/// One line that is safe in a terminal: control characters, line ends included, what hides or turns the text around it,
/// and bytes that are no UTF-8 become question marks.
[[nodiscard]] std::string oneLine(std::string_view text);

/// The columns that a safe text takes: none for a combining mark, two for a wide character, one for any other.
[[nodiscard]] std::size_t columnsOf(std::string_view text);

/// The longest beginning of a text that takes no more than so many columns.
[[nodiscard]] std::string_view beginning(std::string_view text, std::size_t columns);
/// The text, or its beginning with an ellipsis where it takes more columns.
[[nodiscard]] std::string shortened(std::string_view text, std::size_t columns);
/// The text with blanks behind it up to so many columns.
[[nodiscard]] std::string padded(std::string_view text, std::size_t columns);
/// The same with the blanks before it.
[[nodiscard]] std::string rightAligned(std::string_view text, std::size_t columns);

/// The text in ASCII, in just as many columns: what has a likeness there takes it, the rest becomes question marks.
[[nodiscard]] std::string asciiOf(std::string_view text);

} // namespace Report
