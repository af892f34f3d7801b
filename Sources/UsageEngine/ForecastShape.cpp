#include "UsageEngine/ForecastShape.h"

#include <algorithm>
#include <cmath>

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::SeriesPoint;
using Curve = std::vector<SeriesPoint>;

constexpr double curveStepSeconds = 3600.0;
constexpr double smallestTotal = 1e-9;
constexpr double smallestRise = 1e-12;
// The share of a window from which on its own pace is believed.
constexpr double believedShare = 0.05;

/// Spending over expectation, stretch by stretch, the older ones counting less. Absent where nothing was expected.
std::optional<double> recentIntensity(const ForecastShape::MakeQuestion& question, const Curve& curve, double typical) {
    if (!question.recencyHalfLife || !(*question.recencyHalfLife > 0.0) || !question.actualCumulative)
        return std::nullopt;
    const Curve& actual = *question.actualCumulative;
    double numerator = 0.0;
    double denominator = 0.0;
    for (std::size_t i = 1; i < actual.size(); ++i) {
        const SeriesPoint& a = actual[i - 1];
        const SeriesPoint& b = actual[i];
        const double expected = (valueOn(curve, b.t) - valueOn(curve, a.t)) * typical;
        const double weight = std::exp(-std::max(question.now - b.t, 0.0) / *question.recencyHalfLife);
        numerator += (b.used - a.used) * weight;
        denominator += expected * weight;
    }
    if (!(denominator > smallestTotal)) return std::nullopt;
    return numerator / denominator;
}

double gateAt(double share, double shrinkage) {
    const double base = std::clamp(share, 0.0, 1.0);
    const double gate = std::clamp(base / believedShare, 0.0, 1.0);
    return shrinkage > 0.0 ? std::min(std::pow(base, shrinkage), gate) : gate;
}

double pulled(double raw, double gate, double shrinkage) {
    if (shrinkage < 0.0) return (shrinkage + 1.0) * raw;
    return raw * gate + (1.0 - gate);
}

Date instantOf(double target, const SeriesPoint& a, const SeriesPoint& b) {
    const double rise = b.used - a.used;
    return rise > smallestRise ? a.t + (b.t - a.t) * (target - a.used) / rise : b.t;
}

} // namespace

double valueOn(std::span<const SeriesPoint> curve, Date at) {
    if (curve.empty()) return 0.0;
    if (at <= curve.front().t) return curve.front().used;
    if (at >= curve.back().t) return curve.back().used;
    const auto b = std::ranges::lower_bound(curve.subspan(1), at, {}, &SeriesPoint::t);
    const auto a = b - 1;
    const double length = b->t - a->t;
    if (!(length > 0.0)) return b->used;
    return a->used + (at - a->t) / length * (b->used - a->used);
}

std::optional<ForecastShape> ForecastShape::make(const MakeQuestion& question) {
    const double typical = question.norm.rawTypicalTotal * question.scale;
    if (!(typical > smallestTotal)) return std::nullopt;
    Curve curve = question.baseline.cumulativeShareCurve(question.window, curveStepSeconds);
    if (curve.size() < 2) return std::nullopt;
    const double shareNow = valueOn(curve, question.now);
    if (!(typical * shareNow > smallestTotal)) return std::nullopt;

    const double plain = question.usedNow / (typical * shareNow);
    const double raw = recentIntensity(question, curve, typical).value_or(plain);
    const double gate = gateAt(shareNow, question.shrinkage);
    return ForecastShape{
        .cumulativeShare = std::move(curve),
        .typicalTotal = typical,
        .intensity = pulled(raw, gate, question.shrinkage),
        .rawIntensity = raw,
        .coneHigh = question.norm.coneHigh,
        .coneLow = question.norm.coneLow,
        .isMeaningful = gate >= 1.0,
    };
}

double ForecastShape::projected(const Standing& standing, Date at) const {
    const double factor = standing.k.value_or(intensity);
    return standing.usedNow + factor * typicalTotal * std::max(share(at) - standing.sNow, 0.0);
}

std::optional<Date> ForecastShape::crossing(const Standing& standing, const Level& question) const {
    const auto& [level, after] = question;
    const double factor = standing.k.value_or(intensity);
    const bool grows = factor > 0.0 && typicalTotal > 0.0;
    if (!grows || !(level > standing.usedNow)) return standing.usedNow >= level ? std::optional(after) : std::nullopt;
    if (cumulativeShare.empty()) return std::nullopt;

    const double target = standing.sNow + (level - standing.usedNow) / (factor * typicalTotal);
    if (cumulativeShare.back().used < target) return std::nullopt;
    for (std::size_t i = 1; i < cumulativeShare.size(); ++i) {
        const SeriesPoint& b = cumulativeShare[i];
        if (b.used >= target && b.t > after) return std::max(instantOf(target, cumulativeShare[i - 1], b), after);
    }
    return std::nullopt;
}

} // namespace UsageEngine
