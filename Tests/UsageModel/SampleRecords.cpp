#include "UsageModel/SampleRecords.h"

namespace TestSupport {

using namespace UsageModel;

UsageEvent Sample<UsageEvent>::full() {
    return {.ts = Date{1790000000.125},
            .sessionId = "0b6c-é",
            .model = "claude-fable-1",
            .modelClass = ModelClass::fable,
            .input = 1,
            .output = 9007199254740993,
            .cacheCreation = -3,
            .cacheRead = 9223372036854775807,
            .effort = EffortLevel::xhigh};
}

Anchor Sample<Anchor>::full() {
    return {.ts = Date{1790000000.5},
            .source = AnchorSource::syntheticLog,
            .window = WindowKind::weeklyOpus,
            .kind = AnchorKind::ceiling,
            .usedFraction = 1.0,
            .resetsAt = Date{1790400000}};
}

GaugeReading Sample<GaugeReading>::full() {
    return {.capturedAt = 1790000000.5,
            .source = "oauth",
            .windows = {{"five_hour", Sample<GaugeWindow>::full()}, {"seven_day", {}}}};
}

StatusLineInput::RateLimits Sample<StatusLineInput::RateLimits>::full() {
    return {.five_hour = Sample<StatusLineInput::RL>::full(),
            .seven_day = StatusLineInput::RL{.used_percentage = 4.0},
            .seven_day_opus = StatusLineInput::RL{}};
}

StatusLineInput Sample<StatusLineInput>::full() {
    return {.rate_limits = Sample<StatusLineInput::RateLimits>::full()};
}

WindowState Sample<WindowState>::full() {
    return {.kind = WindowKind::weeklyOpus,
            .used = 0.4,
            .windowStart = Date{1789400000},
            .resetsAt = Date{1790004800},
            .elapsedFraction = 0.5,
            .baselineFraction = 0.3,
            .paceVsBaseline = 1.25,
            .confidence = Sample<Confidence>::full()};
}

Projection Sample<Projection>::full() {
    return {.window = WindowKind::session5h,
            .earliestEmpty = Date{1790001000},
            .likelyEmpty = Date{1790002000.5},
            .endFraction = 1.2,
            .willBreachBeforeReset = true};
}

Verdict Sample<Verdict>::full() {
    return {.headline = "Slow down \"now\"\n…",
            .consequence = Consequence::downgradeToSonnet,
            .severity = Severity::red,
            .subtext = "😀 \\ /"};
}

Recommendation Sample<Recommendation>::full() {
    return {
        .kind = Recommendation::Kind::spendMore, .title = "t", .detail = "d", .impact = "i", .command = "/effort low"};
}

SessionBlock Sample<SessionBlock>::full() {
    return {.start = Date{1790000000},
            .end = Date{1790018000},
            .usedFraction = 0.3,
            .byModelClass = {{ModelClass::opus, 0.1}, {ModelClass::other, 0.0}},
            .isCurrent = true};
}

SessionBar Sample<SessionBar>::full() {
    return {.start = Date{1790000000},
            .end = Date{1790018000},
            .fillFraction = 1.01,
            .weeklyCost = 0.07,
            .byModelClass = {{ModelClass::haiku, 0.1}},
            .isCurrent = true,
            .capBasis = SessionCapBasis::learnedScale};
}

WeeklyNorm Sample<WeeklyNorm>::full() {
    return {.rawTypicalTotal = 5.5,
            .samples = {5.0, 6.0},
            .basis = WeeklyNorm::Basis::mean,
            .coneHigh = 1.3,
            .coneLow = 0.6};
}

WeekSeries Sample<WeekSeries>::full() {
    const SeriesPoint point = Sample<SeriesPoint>::full();
    return {.windowStart = Date{1789400000},
            .windowEnd = Date{1790004800},
            .now = Date{1789700000},
            .usedNow = 0.5,
            .actual = {point, {Date{1}, 2}},
            .baseline = {point},
            .coneLikelyEnd = {Date{3}, 4},
            .coneFastEnd = {Date{5}, 6},
            .breaches = true,
            .scale = SeriesScale::typicalWeeks,
            .boundaryEstimated = true,
            .limitLevel = 1.5,
            .forecastLikely = {point},
            .forecastHigh = {{Date{7}, 8}},
            .forecastLow = {{Date{9}, 10}},
            .crossing = Date{1790000001},
            .norm = Sample<WeeklyNorm>::full(),
            .intensity = 1.75,
            .intensityIsMeaningful = true,
            .sessions = {Sample<SessionBar>::full()},
            .opusShare = 0.8,
            .outputShare = 0.2,
            .whatIf = Sample<WhatIfSpace>::full()};
}

WhatIfSpace Sample<WhatIfSpace>::full() {
    return {.byFamily = {{ModelClass::opus, 0.25}, {ModelClass::sonnet, 0.75}},
            .familyMultiplier = CategoryWeights::pricePriors(),
            .outputShare = 0.3,
            .effortMix = {{EffortLevel::low, 1.0}},
            .currentEffort = EffortLevel::low,
            .effortMultiplier = effortOutputPriors()};
}

LiveModel::Session Sample<LiveModel::Session>::full() {
    return {.id = "s",
            .modelClass = ModelClass::sonnet,
            .effort = EffortLevel::max,
            .lastTurn = Date{1790000000},
            .weight = 0.001};
}

LiveModel Sample<LiveModel>::full() {
    return {.sessions = {Sample<LiveModel::Session>::full(), {}},
            .byClass = {{ModelClass::sonnet, 1.0}},
            .byEffort = {{EffortLevel::max, 1.0}},
            .outputShare = 0.25,
            .weight = 0.002,
            .turns = 12,
            .lastTurn = Date{1790000000},
            .lookback = 1800};
}

UsageSnapshot Sample<UsageSnapshot>::full() {
    return {.generatedAt = Date{1790000000.25},
            .meters = {Sample<WindowState>::full(), {}},
            .binding = WindowKind::session5h,
            .verdict = Sample<Verdict>::full(),
            .bindingProjection = Sample<Projection>::full(),
            .projections = {Sample<Projection>::full(), {}},
            .weekSessions = {Sample<SessionBlock>::full()},
            .weekSeries = Sample<WeekSeries>::full(),
            .sessionCapInLogUnits = 0.125,
            .models = Sample<ModelBreakdown>::full(),
            .calendar = {Sample<DayCell>::full()},
            .recommendation = Sample<Recommendation>::full(),
            .live = Sample<LiveModel>::full(),
            .ingest = Sample<IngestProgress>::full()};
}

} // namespace TestSupport
