#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Numbers and texts as people read them in a terminal.
namespace Report {

/// "1,234,567".
[[nodiscard]] std::string grouped(std::int64_t count);
/// Every digit below 10,000; beyond that one decimal and a letter: "12.3k", "4.0M", then B, T and Q for 10^15.
[[nodiscard]] std::string compact(std::int64_t count);
/// Four decimals below a thousand, whole units beyond.
[[nodiscard]] std::string unitsText(double units);
/// "42%": rounded, halves away from zero.
[[nodiscard]] std::string percentText(double percentage);
/// "less than a minute", "12 min", "2 h 13 min", "3 d 4 h". A span below zero counts as zero.
[[nodiscard]] std::string durationText(double seconds);

/// One line that is safe in a terminal: control characters, line ends included, become question marks.
[[nodiscard]] std::string oneLine(std::string_view text);

/// The columns that a text takes, where each of its characters takes one.
[[nodiscard]] std::size_t columnsOf(std::string_view text);

} // namespace Report
