#pragma once

#include <cstddef>
#include <optional>

#include "Report/Line.h"

namespace Report {

/// A bar of one line; all shares count from the left, and are held to the bar.
struct Bar {
    std::size_t columns = 0;
    /// How much of it is filled; a share above 0 shows, however small.
    double filled = 0.0;
    Ink ink = Ink::good;
    /// Where a mark stands.
    std::optional<double> mark;
    /// The ink of what is filled beyond the mark.
    Ink beyondMark = Ink::good;
};

/// The bar, as fine as eighths of a column. One without columns is empty.
[[nodiscard]] Line drawn(const Bar& bar);

} // namespace Report
