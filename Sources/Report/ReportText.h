#pragma once

#include <filesystem>
#include <string>

#include "Report/Report.h"

namespace Report {

/// Whether headings are bold and full limits coloured, by the terminal's escape codes.
enum class Style { plain, coloured };

/// The report for people: lines of at most 80 columns for any counts that fit their column, each ended by a newline.
/// `logFolder` is named where there are no logs in it. Nothing that a log contains is printed but numbers.
[[nodiscard]] std::string reportText(const UsageReport& report, const std::filesystem::path& logFolder, Style style);

} // namespace Report
