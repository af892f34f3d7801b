#include "Report/Bar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace Report {

namespace {

constexpr double eighthsPerColumn = 8;
constexpr std::array<std::string_view, 9> fillings{"░", "▏", "▎", "▍", "▌", "▋", "▊", "▉", "█"};
constexpr std::string_view markSign = "┃";

double held(double share) {
    return share > 0 ? std::min(share, 1.0) : 0.0;
}

/// How many eighths of a bar's columns are filled.
std::size_t eighths(const Bar& bar) {
    const double exact = held(bar.filled) * static_cast<double>(bar.columns) * eighthsPerColumn;
    return static_cast<std::size_t>(bar.filled > 0 ? std::max(std::round(exact), 1.0) : 0.0);
}

std::optional<std::size_t> markColumn(const Bar& bar) {
    if (!bar.mark || bar.columns == 0) return std::nullopt;
    const auto column = static_cast<std::size_t>(held(*bar.mark) * static_cast<double>(bar.columns));
    return std::min(column, bar.columns - 1);
}

} // namespace

Line drawn(const Bar& bar) {
    const std::size_t filled = eighths(bar);
    const std::optional<std::size_t> mark = markColumn(bar);
    Line line;
    for (std::size_t column = 0; column < bar.columns; ++column) {
        const std::size_t before = column * static_cast<std::size_t>(eighthsPerColumn);
        const std::size_t own = std::min(filled - std::min(filled, before), fillings.size() - 1);
        const Ink ink = mark && column > *mark ? bar.beyondMark : bar.ink;
        if (column == mark) {
            line.add(markSign, Ink::strong);
        } else {
            line.add(fillings[own], own > 0 ? ink : Ink::faint);
        }
    }
    return line;
}

} // namespace Report
