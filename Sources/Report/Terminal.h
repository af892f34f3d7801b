#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "Report/Line.h"

namespace Report {

/// What an output can show.
struct Terminal {
    std::size_t columns = 80;
    /// Absent where there is no end to them.
    std::optional<std::size_t> rows;
    Palette palette;
    /// Whether it obeys the codes that move the cursor.
    bool movesCursor = false;

    friend bool operator==(const Terminal&, const Terminal&) = default;
};

/// What the system tells of an output.
struct TerminalFacts {
    bool isTerminal = false;
    /// The size in characters; absent, or 0, where the system does not know it.
    std::optional<std::size_t> columns;
    std::optional<std::size_t> rows;
    /// The character set of the user's locale.
    std::string charset;
    /// Environment variables; absent where not set.
    std::optional<std::string> columnsSetting;
    std::optional<std::string> noColor;
    std::optional<std::string> term;
};

[[nodiscard]] Terminal terminalOf(const TerminalFacts& facts);

/// Asks the system and the environment about a descriptor.
[[nodiscard]] TerminalFacts terminalFacts(int fd);

} // namespace Report
