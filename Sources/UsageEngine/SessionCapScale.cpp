#include "UsageEngine/SessionCapScale.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "UsageEngine/Rollups.h"

namespace UsageEngine {

namespace {

using UsageModel::Anchor;
using UsageModel::AnchorKind;
using UsageModel::Date;
using UsageModel::SessionBlock;
using UsageModel::WindowKind;
using Evidence = SessionCapScale::Evidence;

constexpr double smallestUse = 1e-9;

bool isOfSession(const Anchor& anchor) {
    return anchor.window == WindowKind::session5h;
}

std::optional<SessionCapScale::CeilingObservation> observationIn(const SessionBlock& block,
                                                                 const SessionAnchors& ceilings, WeighedTurns turns) {
    const Anchor* ceiling = ceilings.latestIn(block);
    if (ceiling == nullptr) return std::nullopt;
    const double used = Rollups::weightedUsage(turns, {.from = block.start, .to = ceiling->ts});
    if (!(used > smallestUse)) return std::nullopt;
    return SessionCapScale::CeilingObservation{.blockStart = block.start, .at = ceiling->ts, .capInLogUnits = used};
}

std::optional<double> officialPercent(const UsageModel::GaugeReading& gauge) {
    const auto window = gauge.windows.find(std::string(statusLineKey(WindowKind::session5h)));
    return window == gauge.windows.end() ? std::nullopt : window->second.usedPercentage;
}

/// The cap by the gauge: what was logged in this session, over the share that it is officially.
std::optional<double> liveEstimate(const SessionCapScale::LearnQuestion& question) {
    // Below, the whole percents of the gauge are too coarse.
    constexpr double leastPercent = 15.0;
    if (question.gauge == nullptr || !question.sessionWindowStart) return std::nullopt;
    const std::optional<double> percent = officialPercent(*question.gauge);
    if (!percent || !(*percent >= leastPercent)) return std::nullopt;
    const Date captured{question.gauge->capturedAt};
    if (!(captured > *question.sessionWindowStart && captured <= question.now)) return std::nullopt;

    const double sum = Rollups::weightedUsage(question.turns, {.from = *question.sessionWindowStart, .to = captured});
    if (!(sum > smallestUse)) return std::nullopt;
    return sum / (*percent / 100.0);
}

} // namespace

std::optional<double> soundFactor(double factor) {
    constexpr double largest = 1e100;
    return factor > 0.0 && factor <= largest ? std::optional(factor) : std::nullopt;
}

SessionAnchors::SessionAnchors(std::span<const Anchor> anchors) {
    std::ranges::copy_if(anchors, std::back_inserter(byTime_), isOfSession);
    std::ranges::stable_sort(byTime_, {}, &Anchor::ts);
}

SessionAnchors SessionAnchors::ceilings() const {
    SessionAnchors ceilings = *this;
    std::erase_if(ceilings.byTime_, [](const Anchor& anchor) { return anchor.kind != AnchorKind::ceiling; });
    return ceilings;
}

const Anchor* SessionAnchors::latestIn(const SessionBlock& block) const {
    const auto later = std::ranges::upper_bound(byTime_, block.end, {}, &Anchor::ts);
    if (later == byTime_.begin()) return nullptr;
    const Date latest = std::prev(later)->ts;
    if (!(latest > block.start)) return nullptr;
    return &*std::ranges::lower_bound(byTime_, latest, {}, &Anchor::ts);
}

std::optional<double> SessionCapScale::scale() const {
    if (!capInLogUnits || !(*capInLogUnits > 0.0)) return std::nullopt;
    return soundFactor(1.0 / *capInLogUnits);
}

SessionCapScale SessionCapScale::learn(const LearnQuestion& question) {
    std::vector<double> values;
    for (const CeilingObservation& observation : ceilingObservations(question))
        values.push_back(observation.capInLogUnits);
    const auto ceilings = static_cast<std::int64_t>(values.size());
    const std::optional<double> live = liveEstimate(question);

    if (ceilings > 0) {
        if (live) values.push_back(*live);
        return {.capInLogUnits = median(std::move(values)),
                .evidence = {.kind = Evidence::Case::ceilings, .count = ceilings}};
    }
    if (live) return {.capInLogUnits = live, .evidence = {.kind = Evidence::Case::liveGauge}};
    const bool heldIsSound = question.held && *question.held > 0.0 && std::isfinite(*question.held);
    if (heldIsSound) return {.capInLogUnits = question.held, .evidence = {.kind = Evidence::Case::held}};
    return {};
}

std::vector<SessionCapScale::CeilingObservation> SessionCapScale::ceilingObservations(const LearnQuestion& question) {
    constexpr double longestAgo = 5184000.0; // 60 days: limits change with the plan
    std::vector<CeilingObservation> observations;
    const SessionAnchors ceilings = SessionAnchors(question.anchors).ceilings();
    if (ceilings.empty()) return observations;
    for (const SessionBlock& block : question.blocks) {
        if (question.now - block.end > longestAgo) continue;
        if (const auto observation = observationIn(block, ceilings, question.turns))
            observations.push_back(*observation);
    }
    return observations;
}

double SessionCapScale::median(std::vector<double> values) {
    if (values.empty()) return 0.0;
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) * 0.5;
}

} // namespace UsageEngine
