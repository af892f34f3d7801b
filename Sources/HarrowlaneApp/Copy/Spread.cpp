#include "HarrowlaneApp/Copy/Spread.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace HarrowlaneApp {

namespace {

/// Neighbours that have met: they move as one.
struct Cluster {
    double sum = 0.0;
    double count = 0.0;

    [[nodiscard]] double mean() const { return sum / count; }
};

/// The nearest values that do not fall: each run that falls takes its mean.
std::vector<double> unfalling(const std::vector<double>& values) {
    std::vector<Cluster> clusters;
    for (const double value : values) {
        clusters.push_back({.sum = value, .count = 1});
        while (clusters.size() > 1 && clusters.back().mean() < clusters[clusters.size() - 2].mean()) {
            const Cluster last = clusters.back();
            clusters.pop_back();
            clusters.back().sum += last.sum;
            clusters.back().count += last.count;
        }
    }
    std::vector<double> means;
    for (const Cluster& cluster : clusters)
        means.insert(means.end(), static_cast<std::size_t>(cluster.count), cluster.mean());
    return means;
}

} // namespace

std::vector<double> spread(const std::vector<double>& wanted, const SpreadRoom& room) {
    std::vector<std::size_t> order(wanted.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return wanted[i]; });

    // Less the distance that each must keep to those before it, the places only must not fall.
    std::vector<double> slack;
    for (std::size_t i = 0; i < order.size(); ++i)
        slack.push_back(wanted[order[i]] - static_cast<double>(i) * room.distance);
    slack = unfalling(slack);

    const double most = std::max(room.least, room.most - (static_cast<double>(order.size()) - 1) * room.distance);
    std::vector<double> places(wanted.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        places[order[i]] = std::clamp(slack[i], room.least, most) + static_cast<double>(i) * room.distance;
    }
    return places;
}

} // namespace HarrowlaneApp
