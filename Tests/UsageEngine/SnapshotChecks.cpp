#include "UsageEngine/SnapshotChecks.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "UsageModel/Json.h"
#include "UsageModel/Printing.h"

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::Projection;
using UsageModel::SeriesPoint;
using UsageModel::UsageSnapshot;
using UsageModel::WeekSeries;
using UsageModel::WindowKind;
using UsageModel::WindowState;
using Points = std::vector<SeriesPoint>;

constexpr double tolerance = 1e-9;
/// Seconds; an instant of today is held to a quarter of a microsecond.
constexpr double instantTolerance = 1e-3;

void expectFiniteNumbers(const nlohmann::json& json, const std::string& path) {
    if (json.is_number_float()) {
        EXPECT_TRUE(std::isfinite(json.get<double>())) << path << " is " << json.get<double>();
    }
    if (!json.is_structured()) return;
    for (const auto& [key, member] : json.items()) expectFiniteNumbers(member, path + "/" + key);
}

void expectNoOddNumber(const std::string& text) {
    EXPECT_EQ(text.find("nan"), std::string::npos) << text;
    EXPECT_EQ(text.find("inf"), std::string::npos) << text;
}

void expectShare(double share) {
    EXPECT_GE(share, 0);
    EXPECT_LE(share, 1 + tolerance);
}

template <typename Key>
void expectShares(const UsageModel::EnumMap<Key, double>& shares) {
    if (shares.empty()) return;
    EXPECT_NEAR(sumOfValues(shares), 1, tolerance);
    for (const auto& [key, share] : shares) expectShare(share);
}

void expectSoundMeter(const WindowState& meter, Date now) {
    EXPECT_GE(meter.used, 0);
    EXPECT_LE(meter.used, 1.5);
    expectShare(meter.elapsedFraction);
    EXPECT_GE(meter.baselineFraction, 0);
    EXPECT_LE(meter.baselineFraction, 1.5);
    EXPECT_GE(meter.paceVsBaseline, 0);
    EXPECT_EQ(meter.confidence.anchored, meter.confidence.secondsSinceAnchor.has_value());
    EXPECT_GE(meter.confidence.secondsSinceAnchor.value_or(0), 0);
    EXPECT_GE(meter.confidence.estimatedError, 0.01);
    EXPECT_LE(meter.confidence.estimatedError, meter.confidence.anchored ? 0.25 : 0.5);
    const Date end = meter.resetsAt.value_or(now);
    EXPECT_NEAR(end - meter.windowStart, nominalDuration(meter.kind), instantTolerance);
    if (meter.resetsAt) {
        EXPECT_GT(*meter.resetsAt, now);
    }
}

/// When the limit is reached and where the window ends must tell the same.
void expectAgreement(const Projection& projection, const WindowState& meter) {
    EXPECT_GE(projection.endFraction, meter.used - tolerance);
    if (!meter.resetsAt) {
        EXPECT_FALSE(projection.willBreachBeforeReset);
        return;
    }
    if (projection.endFraction > 1 + tolerance) {
        ASSERT_TRUE(projection.likelyEmpty);
        EXPECT_LE(*projection.likelyEmpty, *meter.resetsAt + instantTolerance);
    }
    if (projection.endFraction < 1 - tolerance) {
        EXPECT_FALSE(projection.willBreachBeforeReset);
        EXPECT_GE(projection.likelyEmpty.value_or(*meter.resetsAt), *meter.resetsAt - instantTolerance);
    }
    if (projection.willBreachBeforeReset) {
        EXPECT_LT(*projection.likelyEmpty, *meter.resetsAt);
    }
}

void expectSoundProjection(const Projection& projection, const WindowState& meter, Date now) {
    EXPECT_EQ(projection.window, meter.kind);
    expectAgreement(projection, meter);
    if (!projection.likelyEmpty) return;
    EXPECT_GE(*projection.likelyEmpty, now);
    ASSERT_TRUE(projection.earliestEmpty) << "the fast pace gets there too";
    EXPECT_GE(*projection.earliestEmpty, now);
    EXPECT_LE(*projection.earliestEmpty, *projection.likelyEmpty + instantTolerance);
}

void expectSoundMeters(const UsageSnapshot& snapshot) {
    ASSERT_EQ(snapshot.meters.size(), snapshot.projections.size());
    for (std::size_t i = 0; i < snapshot.meters.size(); ++i) {
        SCOPED_TRACE(text(snapshot.meters[i].kind));
        expectSoundMeter(snapshot.meters[i], snapshot.generatedAt);
        expectSoundProjection(snapshot.projections[i], snapshot.meters[i], snapshot.generatedAt);
        if (i > 0) {
            EXPECT_LT(snapshot.meters[i - 1].kind, snapshot.meters[i].kind);
        }
    }
    const WindowState* binding = snapshot.bindingMeter();
    EXPECT_EQ(binding == nullptr, snapshot.meters.empty());
    EXPECT_EQ(snapshot.bindingProjection.window, snapshot.binding);
}

/// A curve that steps by an hour at most, and never falls.
void expectRising(const Points& points) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        EXPECT_LT(points[i - 1].t, points[i].t);
        EXPECT_LE(points[i].t - points[i - 1].t, 3600 + instantTolerance);
        EXPECT_LE(points[i - 1].used, points[i].used) << "at " << i;
    }
}

void expectBelow(const Points& lower, const Points& upper) {
    ASSERT_EQ(lower.size(), upper.size());
    for (std::size_t i = 0; i < lower.size(); ++i) {
        EXPECT_EQ(lower[i].t, upper[i].t);
        EXPECT_LE(lower[i].used, upper[i].used) << "at " << i;
    }
}

void expectSoundForecast(const WeekSeries& series) {
    if (series.forecastLikely.empty()) {
        EXPECT_TRUE(series.forecastHigh.empty() && series.forecastLow.empty());
        return;
    }
    for (const Points* curve : {&series.forecastLow, &series.forecastLikely, &series.forecastHigh}) {
        expectRising(*curve);
        EXPECT_EQ(curve->front(), (SeriesPoint{series.now, series.usedNow}));
        EXPECT_EQ(curve->back().t, series.windowEnd);
    }
    expectBelow(series.forecastLow, series.forecastLikely);
    expectBelow(series.forecastLikely, series.forecastHigh);
    EXPECT_EQ(series.coneLikelyEnd, series.forecastLikely.back());
    EXPECT_EQ(series.coneFastEnd, series.forecastHigh.back());
}

/// The height of the likely curve at an instant of it.
double likelyAt(const WeekSeries& series, Date at) {
    const auto next = std::ranges::lower_bound(series.forecastLikely, at, {}, &SeriesPoint::t);
    if (next == series.forecastLikely.begin()) return next->used;
    if (next == series.forecastLikely.end()) return series.forecastLikely.back().used;
    const SeriesPoint& before = *(next - 1);
    return before.used + (at - before.t) / (next->t - before.t) * (next->used - before.used);
}

void expectSoundCrossing(const WeekSeries& series) {
    if (!series.limitLevel || series.forecastLikely.empty()) return;
    const auto ghost = series.ghostCrossing(1.0);
    ASSERT_EQ(ghost.has_value(), series.crossing.has_value());
    if (!ghost) {
        EXPECT_LT(series.coneLikelyEnd.used, 1);
        return;
    }
    EXPECT_NEAR(*ghost - *series.crossing, 0, instantTolerance);
    // A curve may leap within the width of an instant.
    const double slack = 1e-6 + (likelyAt(series, *series.crossing + 1.0) - likelyAt(series, *series.crossing - 1.0));
    EXPECT_NEAR(likelyAt(series, *series.crossing), std::max(1.0, series.usedNow), slack);
}

void expectSoundSeries(const UsageSnapshot& snapshot) {
    const WeekSeries& series = *snapshot.weekSeries;
    const auto weekly = std::ranges::find(snapshot.meters, WindowKind::weeklyAll, &WindowState::kind);
    ASSERT_NE(weekly, snapshot.meters.end());
    const bool anchored = weekly->confidence.anchored;
    EXPECT_EQ(series.scale == UsageModel::SeriesScale::capFraction, anchored);
    EXPECT_EQ(series.limitLevel, anchored ? std::optional(1.0) : std::nullopt);
    EXPECT_EQ(series.usedNow, weekly->used);
    EXPECT_EQ(series.windowStart, weekly->windowStart);
    EXPECT_EQ(series.windowEnd, weekly->resetsAt.value_or(series.now));
    EXPECT_EQ(series.whatIf.has_value(), weekly->resetsAt.has_value());

    expectRising(series.actual);
    EXPECT_EQ(series.actual.front(), (SeriesPoint{series.windowStart, 0}));
    EXPECT_EQ(series.actual.back().t, std::max(series.windowStart, std::min(series.windowEnd, series.now)));
    expectRising(series.baseline);
    expectSoundForecast(series);
    expectSoundCrossing(series);
    EXPECT_LE(series.coneLikelyEnd.used, series.coneFastEnd.used);
    EXPECT_GE(series.intensity, 0);
    expectShare(series.opusShare);
    expectShare(series.outputShare);
}

void expectSoundSessions(const UsageSnapshot& snapshot) {
    const auto& sessions = snapshot.weekSessions;
    for (std::size_t i = 0; i < sessions.size(); ++i) {
        EXPECT_NEAR(sessions[i].end - sessions[i].start, 18000, instantTolerance);
        EXPECT_NEAR(sumOfValues(sessions[i].byModelClass), sessions[i].usedFraction,
                    tolerance * sessions[i].usedFraction);
        EXPECT_TRUE(i == 0 || sessions[i - 1].end <= sessions[i].start);
    }
    if (!snapshot.weekSeries) return;
    const auto& bars = snapshot.weekSeries->sessions;
    ASSERT_EQ(bars.size(), sessions.size());
    for (std::size_t i = 0; i < bars.size(); ++i) {
        EXPECT_EQ(bars[i].start, sessions[i].start);
        EXPECT_EQ(bars[i].isCurrent, sessions[i].isCurrent);
        EXPECT_TRUE(bars[i].capBasis == UsageModel::SessionCapBasis::liveGauge ||
                    bars[i].fillFraction == sessions[i].usedFraction)
            << "a bar and its session tell the same fill";
        if (bars[i].weeklyCost > 0) expectShares(bars[i].byModelClass);
    }
}

void expectSoundCalendar(const UsageSnapshot& snapshot) {
    double busiest = 0;
    for (const auto& cell : snapshot.calendar) busiest = std::max(busiest, cell.weighted);
    for (std::size_t i = 0; i < snapshot.calendar.size(); ++i) {
        const auto& cell = snapshot.calendar[i];
        EXPECT_TRUE(i == 0 || snapshot.calendar[i - 1].day < cell.day);
        EXPECT_EQ(cell.level == 0, !(cell.weighted > 0));
        EXPECT_TRUE(cell.weighted < busiest || busiest == 0 || cell.level == 4);
        EXPECT_TRUE(cell.level >= 0 && cell.level <= 4);
    }
}

void expectSoundWords(const UsageSnapshot& snapshot) {
    const bool breaches = snapshot.bindingProjection.willBreachBeforeReset;
    EXPECT_EQ(snapshot.verdict.headline == "On track", !breaches);
    EXPECT_EQ(snapshot.verdict.consequence == UsageModel::Consequence::fine, !breaches);
    EXPECT_FALSE(snapshot.verdict.subtext.empty());
    if (!snapshot.recommendation) return;
    EXPECT_EQ(snapshot.recommendation->kind == UsageModel::Recommendation::Kind::easeOff, breaches);
    EXPECT_FALSE(snapshot.recommendation->title.empty() || snapshot.recommendation->detail.empty());
}

} // namespace

void expectFinite(const UsageSnapshot& snapshot) {
    expectFiniteNumbers(UsageModel::Json::encode(snapshot), "");
    expectNoOddNumber(snapshot.verdict.headline + snapshot.verdict.subtext);
    if (snapshot.recommendation) expectNoOddNumber(snapshot.recommendation->title + snapshot.recommendation->detail);
}

void expectSound(const UsageSnapshot& snapshot) {
    expectFinite(snapshot);
    expectSoundMeters(snapshot);
    if (snapshot.weekSeries) expectSoundSeries(snapshot);
    expectSoundSessions(snapshot);
    expectSoundCalendar(snapshot);
    expectSoundWords(snapshot);
    expectShares(snapshot.live.byClass);
    expectShares(snapshot.live.byEffort);
    expectShare(snapshot.live.outputShare);
}

} // namespace UsageEngine
