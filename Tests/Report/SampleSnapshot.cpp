#include "Report/SampleSnapshot.h"

namespace Report {

namespace {

using namespace UsageModel;

constexpr double hour = 3600;
constexpr double day = 24 * hour;
// 2026-02-25 00:00 in UTC, a Wednesday: the week is a good 63 % over.
constexpr Date weekStart{1771977600};
constexpr Date weekEnd = weekStart + 7 * day;

WindowState session() {
    return {
        .kind = WindowKind::session5h,
        .used = 0.34,
        .windowStart = sampleNow - 2.5 * hour,
        .resetsAt = sampleNow + 2.5 * hour,
        .elapsedFraction = 0.5,
        .confidence = {.anchored = true, .secondsSinceAnchor = 240, .estimatedError = 0.01},
    };
}

WindowState week() {
    return {
        .kind = WindowKind::weeklyAll,
        .used = 0.82,
        .windowStart = weekStart,
        .resetsAt = weekEnd,
        .elapsedFraction = (sampleNow - weekStart) / (7 * day),
        .confidence = {.anchored = true, .secondsSinceAnchor = 240, .estimatedError = 0.01},
    };
}

WindowState opusWeek() {
    WindowState opus = week();
    opus.kind = WindowKind::weeklyOpus;
    opus.confidence = Confidence::unknown();
    return opus;
}

std::vector<SeriesPoint> line(SeriesPoint from, SeriesPoint to) {
    std::vector<SeriesPoint> points;
    constexpr int steps = 24;
    for (int i = 0; i <= steps; ++i) {
        const double share = static_cast<double>(i) / steps;
        points.push_back({.t = from.t + share * (to.t - from.t), .used = from.used + share * (to.used - from.used)});
    }
    return points;
}

SessionBar bar(double hoursAgo, double fill) {
    return {.start = sampleNow - hoursAgo * hour,
            .end = sampleNow - (hoursAgo - 5) * hour,
            .fillFraction = fill,
            .capBasis = SessionCapBasis::learnedScale};
}

WeekSeries series() {
    return {
        .windowStart = weekStart,
        .windowEnd = weekEnd,
        .now = sampleNow,
        .usedNow = 0.82,
        .actual = line({weekStart, 0}, {sampleNow, 0.82}),
        .baseline = line({weekStart, 0}, {weekEnd, 0.9}),
        .coneLikelyEnd = {weekEnd, 1.12},
        .breaches = true,
        .limitLevel = 1.0,
        .forecastLikely = line({sampleNow, 0.82}, {weekEnd, 1.12}),
        .crossing = sampleNow + 37 * hour,
        .norm = {.basis = WeeklyNorm::Basis::median},
        .intensity = 1.24,
        .intensityIsMeaningful = true,
        .sessions = {bar(80, 1.0), bar(50, 0.4), bar(2.5, 0.34)},
    };
}

LiveModel live() {
    return {
        .sessions = {{.id = "8e461893-1fc3-4416-a39f-2ee09d78b1dd",
                      .modelClass = ModelClass::opus,
                      .effort = EffortLevel::xhigh,
                      .lastTurn = sampleNow - 90,
                      .weight = 3},
                     {.id = "1b9d6bcd-bbfd-4b2d-9b5d-ab8dfbbd4bed",
                      .modelClass = ModelClass::sonnet,
                      .effort = std::nullopt,
                      .lastTurn = sampleNow - 40 * 60,
                      .weight = 1}},
        .weight = 4,
        .turns = 12,
        .lastTurn = sampleNow - 90,
    };
}

} // namespace

UsageSnapshot sampleSnapshot() {
    UsageSnapshot snapshot{
        .generatedAt = sampleNow,
        .meters = {session(), week(), opusWeek()},
        .binding = WindowKind::weeklyAll,
        .verdict = {.headline = "Locked out in ~1d 13h",
                    .consequence = Consequence::lockout,
                    .severity = Severity::red,
                    .subtext = "Full lockout until reset in 2d 13h. Ease off to make it."},
        .projections = {{.window = WindowKind::session5h, .endFraction = 0.61},
                        {.window = WindowKind::weeklyAll,
                         .earliestEmpty = sampleNow + 20 * hour,
                         .likelyEmpty = sampleNow + 37 * hour,
                         .endFraction = 1.12,
                         .willBreachBeforeReset = true},
                        {.window = WindowKind::weeklyOpus, .endFraction = 0.9}},
        .weekSeries = series(),
        .models = {.byClass = {{ModelClass::opus, 2.5}, {ModelClass::sonnet, 7.5}}},
        .recommendation = Recommendation{.kind = Recommendation::Kind::easeOff,
                                         .title = "Route the rest to Sonnet",
                                         .detail = "This week is projected to hit 112% by reset; this lands it around "
                                                   "91%. Lowering effort alone doesn't get you there.",
                                         .impact = "back inside the cap",
                                         .command = "/model sonnet"},
        .live = live(),
        .ingest = IngestProgress::idle(),
    };
    snapshot.bindingProjection = snapshot.projections[1];
    return snapshot;
}

UsageSnapshot ungaugedSnapshot() {
    UsageSnapshot snapshot = sampleSnapshot();
    for (WindowState& meter : snapshot.meters) {
        meter.confidence = Confidence::unknown();
        meter.resetsAt.reset();
    }
    snapshot.weekSeries->limitLevel.reset();
    snapshot.weekSeries->scale = SeriesScale::typicalWeeks;
    snapshot.weekSeries->intensityIsMeaningful = false;
    snapshot.recommendation.reset();
    snapshot.live = {};
    return snapshot;
}

} // namespace Report
