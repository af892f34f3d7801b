#include "UsageEngine/BottomUpForecast.h"

#include <algorithm>

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::SeriesPoint;
using Curve = std::vector<SeriesPoint>;

constexpr double smallestTotal = 1e-9;
constexpr double smallestRise = 1e-12;

/// What was used over what is usual from the window's start to now.
double intensityOf(const BottomUpForecast::MakeQuestion& question) {
    const double expected = question.profile.expectedBurn({
        .span = {.from = question.window.from, .to = question.now},
        .quantile = WeekdayProfile::Quantile::typical,
        .calendar = question.calendar,
    });
    return expected > smallestTotal ? question.usedNow / expected : 1.0;
}

/// The more of the window has passed, the more its own pace counts.
double growthFactor(const BottomUpForecast::MakeQuestion& question, double intensity) {
    const double elapsed = question.now - question.window.from;
    const double span = question.window.to - question.window.from;
    const double fraction = std::clamp(span >= 1.0 ? elapsed / span : elapsed, 0.0, 1.0);
    return std::max(1.0 + (intensity - 1.0) * (question.recencyWeight * fraction), 0.0);
}

double capped(double growth, const BottomUpForecast::MakeQuestion& question, Date at) {
    if (!question.sessionCapCost || !(*question.sessionCapCost > 0.0)) return growth;
    return std::min(growth, (at - question.now) / 3600.0 / 5.0 * *question.sessionCapCost);
}

Curve curveOf(const BottomUpForecast::MakeQuestion& question, double k, WeekdayProfile::Quantile quantile) {
    Curve curve = question.profile.cumulative({
        .span = {.from = question.now, .to = question.window.to},
        .quantile = quantile,
        .calendar = question.calendar,
    });
    double best = 0.0;
    for (SeriesPoint& point : curve) {
        best = std::max(best, capped(k * point.used, question, point.t));
        point.used = question.usedNow + best;
    }
    return curve;
}

} // namespace

std::optional<BottomUpForecast> BottomUpForecast::make(const MakeQuestion& question) {
    // At the very beginning there is nothing to go by; a window that is yet to come is not refused.
    if (!(question.window.to > question.now) || !(question.window.from < question.window.to)) return std::nullopt;
    if (question.now == question.window.from) return std::nullopt;
    const double intensity = intensityOf(question);
    const double k = growthFactor(question, intensity);
    return BottomUpForecast{
        .usedNow = question.usedNow,
        .now = question.now,
        .curve = curveOf(question, k, WeekdayProfile::Quantile::typical),
        .high = curveOf(question, k, WeekdayProfile::Quantile::high),
        .low = curveOf(question, k, WeekdayProfile::Quantile::low),
        .intensity = intensity,
        .isMeaningful = question.profile.isUsable(),
        .typicalWeekTotal = question.profile.typicalWeekTotal(),
    };
}

double BottomUpForecast::projected(Date at, double kFactor) const {
    return usedNow + kFactor * (value(curve, at, usedNow) - usedNow);
}

std::optional<Date> BottomUpForecast::crossing(const Level& question) const {
    const auto scaled = [&](const SeriesPoint& point) { return usedNow + question.kFactor * (point.used - usedNow); };
    const SeriesPoint* previous = nullptr;
    for (const SeriesPoint& point : curve) {
        if (point.t < question.after) continue;
        const double total = scaled(point);
        if (question.level <= total) {
            if (previous == nullptr) return point.t;
            const double before = scaled(*previous);
            if (!(total - before > smallestRise)) return point.t;
            return previous->t + (point.t - previous->t) * (question.level - before) / (total - before);
        }
        previous = &point;
    }
    return std::nullopt;
}

double BottomUpForecast::value(std::span<const SeriesPoint> in, Date at, double fallback) {
    if (in.empty()) return fallback;
    const SeriesPoint& first = in.front();
    if (at <= first.t) return first.used;
    if (at >= in.back().t) return in.back().used;
    const auto b = std::ranges::lower_bound(in, at, {}, &SeriesPoint::t);
    const double length = b->t - first.t;
    if (!(length > 0.0)) return b->used;
    return first.used + (at - first.t) / length * (b->used - first.used);
}

} // namespace UsageEngine
