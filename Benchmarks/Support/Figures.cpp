#include "Support/Figures.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace Bench {

bool isMet(const Figure& figure) {
    const bool met = figure.value <= figure.limit;
    std::printf("%-4s %s: %.3g %s, at most %.3g\n", met ? "ok" : "OVER", figure.what.c_str(), figure.value,
                figure.unit.c_str(), figure.limit);
    std::fflush(stdout);
    return met;
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

} // namespace Bench
