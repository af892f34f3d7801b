#include "UsageEngine/WeeklyNormLearning.h"

#include <algorithm>

#include "UsageEngine/Rollups.h"
#include "UsageEngine/SessionCapScale.h"

namespace UsageEngine {

namespace {

using UsageModel::WeeklyNorm;

// The cone of a user whose spread is not known.
constexpr double defaultHigh = 1.1;
constexpr double defaultLow = 0.74;

/// The totals of past windows, nearest first.
std::vector<double> pastTotals(const WeeklyNormQuestion& question) {
    std::vector<double> totals;
    for (int k = 1; k <= question.lookback; ++k) {
        const TimeSpan window{.from = question.windowStart - k * question.span,
                              .to = question.windowStart - (k - 1) * question.span};
        if (question.earliestEvent && window.from < *question.earliestEvent) break;
        if (window.to > question.now) continue;
        const double total = Rollups::weightedUsage(question.turns, window, question.filter);
        if (total > 0.0) totals.push_back(total);
    }
    return totals;
}

struct Cone {
    double high = defaultHigh;
    double low = defaultLow;
};

Cone coneOf(const std::vector<double>& samples, double typical) {
    if (samples.size() < 2 || !(typical > 0.0)) return {};
    const double w = std::min(static_cast<double>(samples.size() - 1) * 0.5, 1.0);
    const auto [least, most] = std::ranges::minmax(samples);
    return {
        .high = std::min(std::max((1.0 - w) * defaultHigh + w * (most / typical), 1.05), 2.5),
        .low = std::min(std::max((1.0 - w) * defaultLow + w * (least / typical), 0.3), 0.95),
    };
}

WeeklyNorm::Basis basisOf(std::size_t samples) {
    if (samples == 1) return WeeklyNorm::Basis::single;
    return samples == 2 ? WeeklyNorm::Basis::mean : WeeklyNorm::Basis::median;
}

WeeklyNorm fromCurrentWindow(const WeeklyNormQuestion& question) {
    const TimeSpan soFar{.from = question.windowStart, .to = question.now};
    const double total = Rollups::weightedUsage(question.turns, soFar, question.filter);
    WeeklyNorm norm = WeeklyNorm::empty();
    if (!(total > 0.0)) return norm;
    norm.rawTypicalTotal = total;
    norm.basis = WeeklyNorm::Basis::currentPace;
    return norm;
}

} // namespace

WeeklyNorm learnWeeklyNorm(const WeeklyNormQuestion& question) {
    if (!(question.span > 0.0) || question.lookback < 1) return WeeklyNorm::empty();
    std::vector<double> samples = pastTotals(question);
    if (samples.empty()) return fromCurrentWindow(question);

    const double typical = SessionCapScale::median(samples);
    const Cone cone = coneOf(samples, typical);
    const WeeklyNorm::Basis basis = basisOf(samples.size());
    return {
        .rawTypicalTotal = typical,
        .samples = std::move(samples),
        .basis = basis,
        .coneHigh = cone.high,
        .coneLow = cone.low,
    };
}

} // namespace UsageEngine
