#pragma once

#include <set>
#include <string>

#include "UsageModel/Anchor.h"
#include "UsageModel/CategoryWeights.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/StatusLineInput.h"
#include "UsageModel/UsageEvent.h"
#include "UsageModel/UsageSnapshot.h"

/// One record of each kind with every field filled, and the names that its JSON form must have.
namespace TestSupport {

using Names = std::set<std::string>;

/// Specialised by each record: `full()`, the names of the members it must have, and of those it may lack.
template <typename Record>
struct Sample;

template <>
struct Sample<UsageModel::UsageEvent> {
    static UsageModel::UsageEvent full();
    static Names required() {
        return {"ts", "sessionId", "model", "modelClass", "input", "output", "cacheCreation", "cacheRead"};
    }
    static Names optional() { return {"effort"}; }
};

template <>
struct Sample<UsageModel::CategoryWeights> {
    static UsageModel::CategoryWeights full() { return UsageModel::CategoryWeights::priors(0.5); }
    static Names required() { return {"input", "output", "cacheCreation", "cacheRead", "classMultiplier"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::Anchor> {
    static UsageModel::Anchor full();
    static Names required() { return {"ts", "source", "window", "kind"}; }
    static Names optional() { return {"usedFraction", "resetsAt"}; }
};

template <>
struct Sample<UsageModel::GaugeWindow> {
    static UsageModel::GaugeWindow full() { return {.usedPercentage = 42.5, .resetsAt = 1790010000.0}; }
    static Names required() { return {}; }
    static Names optional() { return {"usedPercentage", "resetsAt"}; }
};

template <>
struct Sample<UsageModel::GaugeReading> {
    static UsageModel::GaugeReading full();
    static Names required() { return {"capturedAt", "source", "windows"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::StatusLineInput> {
    static UsageModel::StatusLineInput full();
    static Names required() { return {}; }
    static Names optional() { return {"rate_limits"}; }
};

template <>
struct Sample<UsageModel::StatusLineInput::RateLimits> {
    static UsageModel::StatusLineInput::RateLimits full();
    static Names required() { return {}; }
    static Names optional() { return {"five_hour", "seven_day", "seven_day_opus"}; }
};

template <>
struct Sample<UsageModel::StatusLineInput::RL> {
    static UsageModel::StatusLineInput::RL full() { return {.used_percentage = 3.5, .resets_at = 1790010000.0}; }
    static Names required() { return {}; }
    static Names optional() { return {"used_percentage", "resets_at"}; }
};

template <>
struct Sample<UsageModel::IngestProgress> {
    static UsageModel::IngestProgress full() { return {.bytesDone = 1, .bytesTotal = 2, .complete = true}; }
    static Names required() { return {"bytesDone", "bytesTotal", "complete"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::Confidence> {
    static UsageModel::Confidence full() {
        return {.anchored = true, .secondsSinceAnchor = 30.5, .estimatedError = 0.02};
    }
    static Names required() { return {"anchored", "estimatedError"}; }
    static Names optional() { return {"secondsSinceAnchor"}; }
};

template <>
struct Sample<UsageModel::WindowState> {
    static UsageModel::WindowState full();
    static Names required() {
        return {"kind", "used", "windowStart", "elapsedFraction", "baselineFraction", "paceVsBaseline", "confidence"};
    }
    static Names optional() { return {"resetsAt"}; }
};

template <>
struct Sample<UsageModel::Projection> {
    static UsageModel::Projection full();
    static Names required() { return {"window", "endFraction", "willBreachBeforeReset"}; }
    static Names optional() { return {"earliestEmpty", "likelyEmpty"}; }
};

template <>
struct Sample<UsageModel::Verdict> {
    static UsageModel::Verdict full();
    static Names required() { return {"headline", "consequence", "severity", "subtext"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::Recommendation> {
    static UsageModel::Recommendation full();
    static Names required() { return {"kind", "title", "detail", "impact"}; }
    static Names optional() { return {"command"}; }
};

template <>
struct Sample<UsageModel::ModelBreakdown> {
    static UsageModel::ModelBreakdown full() { return {{{UsageModel::ModelClass::fable, 0.5}}}; }
    static Names required() { return {"byClass"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::DayCell> {
    static UsageModel::DayCell full() { return {.day = {1789948800}, .weighted = 0.25, .level = 4}; }
    static Names required() { return {"day", "weighted", "level"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::SessionBlock> {
    static UsageModel::SessionBlock full();
    static Names required() { return {"start", "end", "usedFraction", "byModelClass", "isCurrent"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::SessionBar> {
    static UsageModel::SessionBar full();
    static Names required() {
        return {"start", "end", "fillFraction", "weeklyCost", "byModelClass", "isCurrent", "capBasis"};
    }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::SeriesPoint> {
    static UsageModel::SeriesPoint full() { return {.t = {1790000000.5}, .used = 0.75}; }
    static Names required() { return {"t", "used"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::WeeklyNorm> {
    static UsageModel::WeeklyNorm full();
    static Names required() { return {"rawTypicalTotal", "samples", "basis", "coneHigh", "coneLow"}; }
    static Names optional() { return {}; }
};

template <>
struct Sample<UsageModel::WeekSeries> {
    static UsageModel::WeekSeries full();
    static Names required() {
        return {"windowStart",
                "windowEnd",
                "now",
                "usedNow",
                "actual",
                "baseline",
                "coneLikelyEnd",
                "coneFastEnd",
                "breaches",
                "scale",
                "boundaryEstimated",
                "forecastLikely",
                "forecastHigh",
                "forecastLow",
                "norm",
                "intensity",
                "intensityIsMeaningful",
                "sessions",
                "opusShare",
                "outputShare"};
    }
    static Names optional() { return {"limitLevel", "crossing", "whatIf"}; }
};

template <>
struct Sample<UsageModel::WhatIfSpace> {
    static UsageModel::WhatIfSpace full();
    static Names required() { return {"byFamily", "familyMultiplier", "outputShare", "effortMix", "effortMultiplier"}; }
    static Names optional() { return {"currentEffort"}; }
};

template <>
struct Sample<UsageModel::ModelAndEffort> {
    static UsageModel::ModelAndEffort full() {
        return {.model = UsageModel::ModelClass::sonnet, .effort = UsageModel::EffortLevel::low};
    }
    static Names required() { return {}; }
    static Names optional() { return {"model", "effort"}; }
};

template <>
struct Sample<UsageModel::LiveModel> {
    static UsageModel::LiveModel full();
    static Names required() {
        return {"sessions", "byClass", "byEffort", "outputShare", "weight", "turns", "lookback"};
    }
    static Names optional() { return {"lastTurn"}; }
};

template <>
struct Sample<UsageModel::LiveModel::Session> {
    static UsageModel::LiveModel::Session full();
    static Names required() { return {"id", "modelClass", "lastTurn", "weight"}; }
    static Names optional() { return {"effort"}; }
};

template <>
struct Sample<UsageModel::UsageSnapshot> {
    static UsageModel::UsageSnapshot full();
    static Names required() {
        return {"generatedAt", "meters",   "binding", "verdict", "bindingProjection", "projections", "weekSessions",
                "models",      "calendar", "live",    "ingest"};
    }
    static Names optional() { return {"weekSeries", "sessionCapInLogUnits", "recommendation"}; }
};

} // namespace TestSupport
