#pragma once

#include <string>
#include <vector>

namespace Bench {

/// Something measured, and what it may come to.
struct Figure {
    std::string what;
    double value = 0.0;
    std::string unit;
    double limit = 0.0;
};

/// Prints a line, from which `Benchmarks/run-all` makes one of its table: "ok" or "OVER", what, the value and its
/// limit.
[[nodiscard]] bool isMet(const Figure& figure);

/// Of values that are not none.
[[nodiscard]] double median(std::vector<double> values);

} // namespace Bench
