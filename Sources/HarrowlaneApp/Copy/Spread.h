#pragma once

#include <vector>

namespace HarrowlaneApp {

/// The room for places on a line.
struct SpreadRoom {
    double least = 0.0;
    double most = 0.0;
    double distance = 0.0;
};

/// The places nearest to the wanted ones (by the sum of the squares) that lie no nearer than `distance` to one another
/// and within the room. In the order in which they came; of equal ones the first lies lower. Where the room is too
/// small for all, they begin at its least end.
[[nodiscard]] std::vector<double> spread(const std::vector<double>& wanted, const SpreadRoom& room);

} // namespace HarrowlaneApp
