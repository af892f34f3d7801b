#include "UsageEngine/ProjectionEngine.h"

#include <algorithm>

namespace UsageEngine::ProjectionEngine {

namespace {

using UsageModel::Date;
using UsageModel::Projection;

constexpr double limit = 1.0;

/// What a forecast says of the limit.
struct Outlook {
    std::optional<Date> earliestEmpty;
    std::optional<Date> likelyEmpty;
    double endFraction = 0.0;
};

bool emptiesBeforeReset(const Question& question, const Outlook& outlook) {
    return question.resetsAt && outlook.likelyEmpty && *outlook.likelyEmpty < *question.resetsAt;
}

Outlook fromBottomUp(const Question& question, const BottomUpForecast& forecast) {
    const BottomUpForecast::Level reached{.level = limit, .after = question.now, .kFactor = 1.0};
    const BottomUpForecast dear{.usedNow = forecast.usedNow, .now = forecast.now, .curve = forecast.high};
    Outlook outlook{.earliestEmpty = dear.crossing(reached),
                    .likelyEmpty = forecast.crossing(reached),
                    .endFraction = forecast.usedNow};
    if (!outlook.earliestEmpty) outlook.earliestEmpty = outlook.likelyEmpty;
    if (question.resetsAt) outlook.endFraction = forecast.projected(*question.resetsAt);
    return outlook;
}

Outlook fromComposite(const Question& question, const CompositeForecast& forecast) {
    using Edge = CompositeForecast::Edge;
    const ForecastShape::Level reached{.level = limit, .after = question.now};
    const auto end = [&] { return forecast.projected(*question.resetsAt, {.edge = Edge::likely, .kFactor = 1.0}); };
    return {
        .earliestEmpty = forecast.crossing(reached, {.edge = Edge::high, .kFactor = 1.0}),
        .likelyEmpty = forecast.crossing(reached, {.edge = Edge::likely, .kFactor = 1.0}),
        .endFraction = question.resetsAt ? end() : forecast.usedNow(),
    };
}

Outlook fromShape(const Question& question, const ForecastShape& shape) {
    const ForecastShape::Level reached{.level = limit, .after = question.now};
    const ForecastShape::Standing likely{.usedNow = question.used, .sNow = question.shareNow, .k = shape.intensity};
    const ForecastShape::Standing fast{
        .usedNow = question.used, .sNow = question.shareNow, .k = shape.coneHigh * shape.intensity};
    return {
        .earliestEmpty = shape.crossing(fast, reached),
        .likelyEmpty = shape.crossing(likely, reached),
        .endFraction = question.resetsAt ? shape.projected(likely, *question.resetsAt) : question.used,
    };
}

std::optional<Date> emptyAt(const Question& question, double rate) {
    constexpr double furthest = 34560000.0; // 400 days
    const double seconds = std::max(limit - question.used, 0.0) / rate;
    return seconds < furthest ? std::optional(question.now + seconds) : std::nullopt;
}

Outlook fromRates(const Question& question) {
    constexpr double smallestRate = 1e-12;
    const double likely = std::max(question.baselineRate * 0.5 + question.recentRate * 0.5, smallestRate);
    const double pessimistic = std::max(question.fastRate, likely);
    return {
        .earliestEmpty = emptyAt(question, pessimistic),
        .likelyEmpty = emptyAt(question, likely),
        .endFraction = question.resetsAt ? question.used + likely * (*question.resetsAt - question.now) : question.used,
    };
}

/// Early in a window, or with little used, a rate says nothing yet.
bool ratesMayAlarm(const Question& question) {
    return question.elapsedFraction >= 0.05 && question.used >= 0.1;
}

Projection projection(const Question& question, const Outlook& outlook) {
    return {
        .window = question.window,
        .earliestEmpty = outlook.earliestEmpty,
        .likelyEmpty = outlook.likelyEmpty,
        .endFraction = outlook.endFraction,
        .willBreachBeforeReset = emptiesBeforeReset(question, outlook),
    };
}

} // namespace

Projection project(const Question& question) {
    if (question.bottomUp != nullptr) return projection(question, fromBottomUp(question, *question.bottomUp));
    if (question.composite != nullptr) return projection(question, fromComposite(question, *question.composite));
    if (question.shape != nullptr) return projection(question, fromShape(question, *question.shape));
    Projection byRates = projection(question, fromRates(question));
    byRates.willBreachBeforeReset = byRates.willBreachBeforeReset && ratesMayAlarm(question);
    return byRates;
}

} // namespace UsageEngine::ProjectionEngine
