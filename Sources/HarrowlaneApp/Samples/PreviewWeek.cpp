#include "HarrowlaneApp/Samples/PreviewWeek.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "HarrowlaneApp/Samples/SineNoise.h"
#include "UsageModel/CategoryWeights.h"

namespace HarrowlaneApp::PreviewData {

namespace {

using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::SeriesPoint;
using UsageModel::SessionBar;
using UsageModel::WeekSeries;
using Points = std::vector<SeriesPoint>;

constexpr double stepSeconds = 1800.0;
constexpr double daySeconds = 86400.0;
constexpr double coneHigh = 1.24;
constexpr double coneLow = 0.76;

/// A way over some steps: from 0 to 1, as its steps are weighed.
std::vector<double> climb(int steps, auto&& weightOf) {
    std::vector<double> heights{0.0};
    for (int step = 0; step < steps; ++step) heights.push_back(heights.back() + weightOf(step));
    for (double& height : heights) height /= heights.back();
    return heights;
}

/// How busy a step is: a session gathers pace, and fades out.
double sessionPace(const Session& session, int step, int steps) {
    const double share = (step + 0.5) / steps;
    return std::sin(std::numbers::pi * share) * (0.7 + 0.6 * sineNoise(session.secondsBack + step));
}

/// Flat between the sessions, and rising in each by what it cost.
Points burned(Date now) {
    const Date start = now - weekGoneSeconds;
    Points points{{.t = start, .used = 0.0}};
    for (const Session& session : sessions()) {
        const Date from = std::max(now - session.secondsBack, start);
        const Date to = std::min(now - session.secondsBack + sessionSeconds, now);
        const int steps = std::max(static_cast<int>((to - from) / stepSeconds), 1);
        const auto heights = climb(steps, [&](int step) { return sessionPace(session, step, steps); });
        const double before = points.back().used;
        for (int step = 0; step <= steps; ++step) {
            const double height = heights[static_cast<std::size_t>(step)];
            points.push_back({.t = from + (to - from) * step / steps, .used = before + session.cost * height});
        }
    }
    return points;
}

/// How busy an hour is in a typical week, in which the sample's present is a Thursday at a quarter past two: quiet
/// until the middle of the morning, and slower from Friday on.
double typicalPace(double secondsFromNow) {
    constexpr double presentInDay = 14.25 * 3600.0;
    constexpr double morning = 9.5 * 3600.0;
    constexpr double asleep = 0.06;
    constexpr std::array<double, 8> daysFromMonday{0.5, 1.7, 1.6, 1.6, 1.3, 0.8, 0.8, 0.9};
    constexpr double thursday = 3.0;
    const double fromMonday = secondsFromNow + presentInDay + thursday * daySeconds;
    const double dayIndex = std::clamp(std::floor(fromMonday / daySeconds), 0.0, 7.0);
    const bool isAwake = fromMonday - dayIndex * daySeconds >= morning;
    const double noise = sineNoise(std::floor(secondsFromNow / stepSeconds));
    return daysFromMonday[static_cast<std::size_t>(dayIndex)] * (isAwake ? 0.5 + noise : asleep);
}

/// A way through the days.
struct Course {
    /// Seconds from the present.
    double from = 0.0;
    double to = 0.0;
    double startUsed = 0.0;
    double endUsed = 0.0;
};

Points typicalCourse(Date now, const Course& course) {
    constexpr int steps = 120;
    const double span = course.to - course.from;
    const auto at = [&](double step) { return course.from + span * step / steps; };
    const auto heights = climb(steps, [&](int step) { return typicalPace(at(step + 0.5)); });
    Points points;
    for (int step = 0; step <= steps; ++step) {
        const double height = heights[static_cast<std::size_t>(step)];
        points.push_back(
            {.t = now + at(step), .used = course.startUsed + (course.endUsed - course.startUsed) * height});
    }
    return points;
}

Points forecast(Date now, double factor) {
    return typicalCourse(now, {.from = 0.0,
                               .to = weekSeconds - weekGoneSeconds,
                               .startUsed = weekUsed,
                               .endUsed = weekUsed + factor * (weekLanding - weekUsed)});
}

/// Where a rising curve reaches the limit.
std::optional<Date> crossingOf(const Points& curve) {
    const auto above = std::ranges::find_if(curve, [](const SeriesPoint& point) { return point.used >= 1.0; });
    if (above == curve.end() || above == curve.begin()) return std::nullopt;
    const SeriesPoint& below = *(above - 1);
    return below.t + (above->t - below.t) * (1.0 - below.used) / (above->used - below.used);
}

SessionBar barOf(const Session& session, Date now) {
    const Date start = now - session.secondsBack;
    return {
        .start = start,
        .end = start + sessionSeconds,
        .fillFraction = session.fill,
        .weeklyCost = session.cost,
        .byModelClass = mixOf(session),
        .isCurrent = start + sessionSeconds > now,
        .capBasis = session.basis,
    };
}

UsageModel::WhatIfSpace whatIf() {
    using UsageModel::EffortLevel;
    return {
        .byFamily = {{ModelClass::opus, 0.45},
                     {ModelClass::fable, 0.43},
                     {ModelClass::sonnet, 0.11},
                     {ModelClass::haiku, 0.01}},
        .familyMultiplier = UsageModel::CategoryWeights::pricePriors(),
        .outputShare = 0.4,
        .effortMix = {{EffortLevel::medium, 0.22}, {EffortLevel::high, 0.71}, {EffortLevel::xhigh, 0.07}},
        .currentEffort = EffortLevel::high,
        .effortMultiplier = UsageModel::effortOutputPriors(),
    };
}

UsageModel::WeeklyNorm norm() {
    const double typical = typicalTotal * weekCapInLogUnits;
    return {
        .rawTypicalTotal = typical,
        .samples = {0.97 * typical, typical, 1.06 * typical, 0.91 * typical},
        .basis = UsageModel::WeeklyNorm::Basis::median,
        .coneHigh = coneHigh,
        .coneLow = coneLow,
    };
}

} // namespace

const std::array<Session, 6>& sessions() {
    using enum UsageModel::SessionCapBasis;
    static constexpr std::array<Session, 6> all{{
        {.secondsBack = 252000, .cost = 0.099, .fill = 0.82, .basis = learnedScale, .mix = {0.52, 0.28, 0.20, 0.0}},
        {.secondsBack = 194400, .cost = 0.120, .fill = 1.00, .basis = ownCeiling, .mix = {0.46, 0.48, 0.06, 0.0}},
        {.secondsBack = 144000, .cost = 0.065, .fill = 0.55, .basis = learnedScale, .mix = {0.34, 0.33, 0.23, 0.10}},
        {.secondsBack = 100800, .cost = 0.133, .fill = 1.09, .basis = learnedScale, .mix = {0.36, 0.60, 0.04, 0.0}},
        {.secondsBack = 57600, .cost = 0.073, .fill = 0.61, .basis = learnedScale, .mix = {0.50, 0.37, 0.13, 0.0}},
        {.secondsBack = 10800, .cost = 0.087, .fill = 0.74, .basis = liveGauge, .mix = {0.52, 0.42, 0.06, 0.0}},
    }};
    return all;
}

UsageModel::EnumMap<ModelClass, double> mixOf(const Session& session) {
    constexpr std::array classes{ModelClass::opus, ModelClass::fable, ModelClass::sonnet, ModelClass::haiku};
    UsageModel::EnumMap<ModelClass, double> mix;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        if (session.mix[i] > 0.0) mix.set(classes[i], session.mix[i]);
    }
    return mix;
}

WeekSeries week(Date now) {
    WeekSeries series;
    series.windowStart = now - weekGoneSeconds;
    series.windowEnd = series.windowStart + weekSeconds;
    series.now = now;
    series.usedNow = weekUsed;
    series.actual = burned(now);
    series.baseline = typicalCourse(
        now,
        {.from = -weekGoneSeconds, .to = weekSeconds - weekGoneSeconds, .startUsed = 0.0, .endUsed = typicalTotal});
    series.forecastLikely = forecast(now, 1.0);
    series.forecastHigh = forecast(now, coneHigh);
    series.forecastLow = forecast(now, coneLow);
    series.coneLikelyEnd = series.forecastLikely.back();
    series.coneFastEnd = series.forecastHigh.back();
    series.breaches = true;
    series.limitLevel = 1.0;
    series.crossing = crossingOf(series.forecastLikely);
    series.norm = norm();
    series.intensity = weekLanding / typicalTotal;
    series.intensityIsMeaningful = true;
    for (const Session& session : sessions()) series.sessions.push_back(barOf(session, now));
    series.opusShare = 0.88;
    series.outputShare = 0.4;
    series.whatIf = whatIf();
    return series;
}

} // namespace HarrowlaneApp::PreviewData
