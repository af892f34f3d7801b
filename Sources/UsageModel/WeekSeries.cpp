#include "UsageModel/WeekSeries.h"

#include <algorithm>

namespace UsageModel {

namespace {

// An estimate this little above the cap is within its own error: it is still quoted as a figure.
constexpr double estimateTolerance = 1.05;
// A rise below this is no rise: dividing by it would throw the crossing anywhere.
constexpr double smallestRise = 1e-12;

} // namespace

SessionCapReadout SessionBar::capReadout() const {
    using Case = SessionCapReadout::Case;
    switch (capBasis) {
    case SessionCapBasis::ownCeiling:
    case SessionCapBasis::liveGauge: return {Case::measured, std::min(fillFraction, 1.0)};
    case SessionCapBasis::learnedScale:
        if (fillFraction > estimateTolerance) return {.kind = Case::atOrOverCap};
        return {Case::estimated, fillFraction};
    case SessionCapBasis::uncalibrated: break;
    }
    return {.kind = Case::unknown};
}

bool WeeklyNorm::supportsUnderUseClaims() const {
    return basis == Basis::median || basis == Basis::mean;
}

bool WeeklyNorm::hasTypicalCurve() const {
    return supportsUnderUseClaims() || basis == Basis::single;
}

std::string_view curveLabel(WeeklyNorm::Basis basis) {
    constexpr std::array<std::string_view, 5> labels{"a typical week for you", "your last two weeks", "last week",
                                                     "your current pace", ""};
    return labels[caseIndex(basis)];
}

double WeekSeries::x(Date date) const {
    const double span = windowEnd - windowStart;
    if (!(span > 0)) return 0.0;
    return std::clamp((date - windowStart) / span, 0.0, 1.0);
}

std::vector<SeriesPoint> WeekSeries::ghost(double factor) const {
    std::vector<SeriesPoint> points = forecastLikely;
    for (SeriesPoint& point : points) point.used = usedNow + factor * (point.used - usedNow);
    return points;
}

double WeekSeries::ghostLanding(double factor) const {
    return usedNow + factor * (coneLikelyEnd.used - usedNow);
}

std::optional<Date> WeekSeries::ghostCrossing(double factor) const {
    if (!limitLevel) return std::nullopt;
    const std::vector<SeriesPoint> points = ghost(factor);
    const auto above = std::ranges::find_if(points, [&](const SeriesPoint& p) { return p.used >= *limitLevel; });
    if (above == points.end()) return std::nullopt;
    if (above == points.begin()) return above->t;

    const SeriesPoint& previous = *(above - 1);
    const double rise = above->used - previous.used;
    if (!(rise > smallestRise)) return above->t;
    return previous.t + ((*limitLevel - previous.used) / rise) * (above->t - previous.t);
}

} // namespace UsageModel
