#include "UsageEngine/WindowComputation.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "UsageEngine/Baseline.h"
#include "UsageEngine/ProjectionEngine.h"
#include "UsageEngine/Rollups.h"
#include "UsageEngine/WeeklyNormLearning.h"

namespace UsageEngine {

namespace {

using UsageModel::Anchor;
using UsageModel::Confidence;
using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::WhatIfSpace;
using UsageModel::WindowKind;

constexpr double smallestUse = 1e-9;
// A bad ratio must not run away; a meter that overshoots must show it.
constexpr double mostUsed = 1.5;
constexpr double secondsLearntFrom = 2419200.0; // 28 days
constexpr int weeksOfNorm = 4;
constexpr int weeksOfProfile = 8;
constexpr double lookbackLong = 3600.0;
constexpr double lookbackShort = 900.0;

/// The first reset after `now` on the grid of windows that `reset` lies on.
Date rolledForward(Date reset, double length, Date now) {
    if (reset > now) return reset;
    const Date next = reset + length * (std::floor((now - reset) / length) + 1.0);
    // A reset ahead by less than the numbers can tell comes out as now.
    return next > now ? next : next + length;
}

std::optional<WindowBounds> boundsBy(std::optional<Date> reset, const WindowBoundsQuestion& question) {
    constexpr double furthest = 34560000.0; // 400 days: milliseconds taken for seconds lie beyond
    if (!reset || !(*reset - question.now <= furthest)) return std::nullopt;
    const double length = nominalDuration(question.kind);
    const Date next = rolledForward(*reset, length, question.now);
    const bool isOnGrid = next > question.now && (*reset > question.now || next <= question.now + length);
    if (!isOnGrid) return std::nullopt;
    return WindowBounds{.start = next - length, .resetsAt = next, .estimated = false};
}

std::optional<WindowBounds> boundsByGauge(const WindowBoundsQuestion& question) {
    const UsageModel::GaugeWindow* window = gaugeWindow(question.gauge, question.kind);
    if (window == nullptr || !window->resetsAt) return std::nullopt;
    return boundsBy(Date{*window->resetsAt}, question);
}

std::optional<WindowBounds> boundsByAnchors(const WindowBoundsQuestion& question) {
    std::optional<WindowBounds> bounds;
    Date latest;
    for (const Anchor& anchor : question.anchors) {
        if (anchor.window != question.kind || (bounds && !(anchor.ts > latest))) continue;
        const auto candidate = boundsBy(anchor.resetsAt, question);
        if (!candidate) continue;
        bounds = candidate;
        latest = anchor.ts;
    }
    if (bounds) bounds->estimated = true;
    return bounds;
}

/// An official reading of a window, taken since the window began.
struct GaugePoint {
    double fraction = 0.0;
    Date captured;
};

std::optional<GaugePoint> gaugePoint(WindowKind kind, const WindowBounds& bounds, const Facts& facts) {
    const UsageModel::GaugeWindow* window = gaugeWindow(facts.gauge, kind);
    if (window == nullptr || !window->usedPercentage) return std::nullopt;
    const Date captured{facts.gauge->capturedAt};
    if (!(bounds.start <= captured && captured <= facts.now)) return std::nullopt;
    return GaugePoint{.fraction = *window->usedPercentage / 100.0, .captured = captured};
}

/// One window at one refresh, with what is known of it before anything is forecast.
struct Window {
    WindowKind kind = WindowKind::session5h;
    const Facts& facts;
    WindowBounds bounds;
    std::optional<GaugePoint> gauge;
    TurnFilter filter;

    [[nodiscard]] Date start() const { return bounds.start; }
    [[nodiscard]] Date now() const { return facts.now; }
    [[nodiscard]] TimeSpan soFar() const { return {.from = start(), .to = now()}; }
    [[nodiscard]] bool isWeekly() const { return kind != WindowKind::session5h; }
    [[nodiscard]] double length() const { return nominalDuration(kind); }
    [[nodiscard]] double elapsedFraction() const { return std::clamp((now() - start()) / length(), 0.0, 1.0); }
};

Window windowOf(WindowKind kind, const Facts& facts) {
    const WindowBounds bounds =
        windowBounds({.kind = kind, .gauge = facts.gauge, .now = facts.now, .anchors = facts.anchors});
    return {
        .kind = kind,
        .facts = facts,
        .bounds = bounds,
        .gauge = gaugePoint(kind, bounds, facts),
        .filter = {.opusOnly = kind == WindowKind::weeklyOpus, .bucket = {}},
    };
}

/// Log units in the window: all so far, and those before the gauge was read.
struct LoggedUse {
    double total = 0.0;
    double atGauge = 0.0;
};

LoggedUse loggedUse(const Window& window) {
    const WeighedTurns turns = window.facts.turns;
    LoggedUse logged{.total = Rollups::weightedUsage(turns, window.soFar(), window.filter)};
    if (window.gauge) {
        const TimeSpan before{.from = window.start(), .to = window.gauge->captured};
        logged.atGauge = Rollups::weightedUsage(turns, before, window.filter);
    }
    return logged;
}

double scaleOf(const Window& window, const LoggedUse& logged, const SessionCapScale& capScale) {
    if (!window.isWeekly()) {
        if (const auto byCap = capScale.scale()) return *byCap;
    }
    if (!window.gauge || !(window.gauge->fraction > 0.0) || !(logged.atGauge > smallestUse)) return 1.0;
    return soundFactor(window.gauge->fraction / logged.atGauge).value_or(1.0);
}

double usedFraction(const Window& window, const LoggedUse& logged, double scale) {
    const double used = window.gauge ? window.gauge->fraction + std::max(0.0, logged.total - logged.atGauge) * scale
                                     : logged.total * scale;
    return used > 0.0 ? std::min(used, mostUsed) : 0.0;
}

/// What is burnt a second, over a look back that ends at the window's start.
double burnRate(const Window& window, double lookback, double scale) {
    const TimeSpan span{.from = std::max(window.start(), window.now() - lookback), .to = window.now()};
    const double burnt = sumOf(withinClosed(window.facts.turns, span), window.filter);
    return burnt / std::max(span.to - span.from, 1.0) * scale;
}

/// The user's habits, from before the window began: it must not be measured against itself.
struct Habits {
    Baseline baseline;
    UsageModel::WeeklyNorm norm;
};

Habits habitsOf(const Window& window) {
    const Facts& facts = window.facts;
    if (!window.isWeekly()) return {.baseline = Baseline({}, facts.calendar), .norm = {}};
    return {
        .baseline = Baseline::learn({
            .turns = facts.turns,
            .calendar = facts.calendar,
            .from = window.start() - secondsLearntFrom,
            .to = window.start(),
            .filter = window.filter,
        }),
        .norm = learnWeeklyNorm({
            .turns = facts.turns,
            .windowStart = window.start(),
            .span = window.length(),
            .now = window.now(),
            .lookback = weeksOfNorm,
            .filter = window.filter,
            .earliestEvent = facts.earliestEvent(),
        }),
    };
}

/// Where the window stands, for the forecasts.
struct Standing {
    double scale = 1.0;
    double used = 0.0;
};

/// All models' rhythm counts, for the Opus week too: its own turns are too few to tell one.
void addBottomUp(WindowCompute& compute, const Window& window, const Standing& standing) {
    const Facts& facts = window.facts;
    const WeekdayProfile profile = WeekdayProfile::learn({
        .turns = facts.turns,
        .calendar = facts.calendar,
        .through = facts.now,
        .lookbackWeeks = weeksOfProfile,
        .scale = standing.scale,
    });
    compute.bottomUp = BottomUpForecast::make({
        .profile = profile,
        .usedNow = standing.used,
        .window = {.from = window.start(), .to = *window.bounds.resetsAt},
        .now = facts.now,
        .calendar = facts.calendar,
        .sessionCapCost = {},
    });
    if (compute.bottomUp) compute.profile = profile;
}

void addShape(WindowCompute& compute, const Window& window, const Standing& standing, const Habits& habits) {
    const auto bucket = window.filter.opusOnly ? std::optional(UsageModel::ModelBucket::opusClass) : std::nullopt;
    compute.shape = ForecastShape::make({
        .baseline = habits.baseline,
        .norm = habits.norm,
        .scale = standing.scale,
        .window = {.from = window.start(), .to = *window.bounds.resetsAt},
        .now = window.now(),
        .usedNow = standing.used,
        .actualCumulative = Rollups::hourlyCumulative(
            {.turns = window.facts.turns, .span = window.soFar(), .scale = standing.scale, .bucket = bucket}),
    });
    if (compute.shape) compute.shareNow = compute.shape->share(window.now());
}

void addComposite(WindowCompute& compute, const Window& window, const Standing& standing) {
    compute.composite = CompositeForecast::make({
        .turns = window.facts.turns,
        .calendar = window.facts.calendar,
        .window = {.from = window.start(), .to = *window.bounds.resetsAt},
        .now = window.now(),
        .scale = standing.scale,
        .earliestEvent = window.facts.earliestEvent(),
    });
}

/// A session, and a window whose end is not known, are told by their rates alone.
void addForecasts(WindowCompute& compute, const Window& window, const Standing& standing, const Habits& habits) {
    if (!window.isWeekly() || !window.bounds.resetsAt) return;
    addBottomUp(compute, window, standing);
    if (compute.bottomUp) return;
    addShape(compute, window, standing, habits);
    if (window.kind == WindowKind::weeklyAll) addComposite(compute, window, standing);
}

/// Where a typical user would stand by now, and how this one compares.
struct Pace {
    double baselineFraction = 0.0;
    double ratio = 0.0;
};

Pace paceOf(const WindowCompute& compute, const Window& window, double used, const Baseline& baseline) {
    constexpr double smallestIntensity = 1e-9;
    constexpr double smallestShare = 1e-6;
    if (compute.bottomUp) {
        const double intensity = compute.bottomUp->intensity;
        return {.baselineFraction = std::min(used / std::max(intensity, smallestIntensity), mostUsed),
                .ratio = intensity};
    }
    if (compute.composite)
        return {.baselineFraction = std::min(compute.composite->expectedSoFar(), mostUsed),
                .ratio = compute.composite->intensity()};
    if (compute.shape)
        return {.baselineFraction = std::min(compute.shape->typicalTotal * compute.shareNow, mostUsed),
                .ratio = compute.shape->intensity};
    const double share = baseline.expectedElapsedShare(window.soFar(), window.kind);
    return {.baselineFraction = share, .ratio = used / std::max(share, smallestShare)};
}

/// One percentage point at capture, ten more with every two days, never more than 25.
Confidence confidenceOf(const Window& window) {
    constexpr double twoDays = 172800.0;
    if (!window.gauge) return Confidence::unknown();
    const double since = std::max(0.0, window.now() - window.gauge->captured);
    return {
        .anchored = true,
        .secondsSinceAnchor = since,
        .estimatedError = std::min(0.01 + since / twoDays * 0.1, 0.25),
    };
}

UsageModel::WindowState stateOf(const Window& window, double used, const Pace& pace) {
    return {
        .kind = window.kind,
        .used = used,
        .windowStart = window.start(),
        .resetsAt = window.bounds.resetsAt,
        .elapsedFraction = window.elapsedFraction(),
        .baselineFraction = pace.baselineFraction,
        .paceVsBaseline = pace.ratio,
        .confidence = confidenceOf(window),
    };
}

/// A session's own pace so far; of a week the usual pace of this hour.
double baselineRate(const Window& window, double used, const Baseline& baseline) {
    if (window.isWeekly()) return baseline.rate(window.now(), window.kind);
    const double elapsed = window.now() - window.start();
    return elapsed > 0.0 ? used / elapsed : 0.0;
}

template <typename Record>
const Record* orNull(const std::optional<Record>& record) {
    return record ? &*record : nullptr;
}

UsageModel::Projection projectionOf(const WindowCompute& compute, const Window& window, const Standing& standing,
                                    const Baseline& baseline) {
    if (!window.bounds.resetsAt)
        return {.window = window.kind, .earliestEmpty = {}, .likelyEmpty = {}, .endFraction = standing.used};
    return ProjectionEngine::project({
        .window = window.kind,
        .used = standing.used,
        .now = window.now(),
        .resetsAt = window.bounds.resetsAt,
        .recentRate = burnRate(window, lookbackLong, standing.scale),
        .baselineRate = baselineRate(window, standing.used, baseline),
        .fastRate = burnRate(window, lookbackShort, standing.scale),
        .bottomUp = orNull(compute.bottomUp),
        .composite = orNull(compute.composite),
        .shape = orNull(compute.shape),
        .shareNow = compute.shareNow,
        .elapsedFraction = window.elapsedFraction(),
    });
}

/// What the window was spent on.
struct BurnShares {
    UsageModel::EnumMap<ModelClass, double> byFamily;
    double output = 0.0;
};

BurnShares burnShares(const Window& window) {
    BurnShares sums;
    double total = 0.0;
    for (const WeighedTurn& turn : within(window.facts.turns, window.soFar())) {
        if (!window.filter.admits(turn)) continue;
        sums.byFamily[turn.modelClass] += turn.weight;
        total += turn.weight;
        sums.output += window.facts.weights.outputWeight(window.facts.events[turn.event]);
    }
    if (!(total > 0.0)) return {};
    BurnShares shares{.byFamily = {}, .output = sums.output / total};
    for (const auto& [modelClass, sum] : sums.byFamily) shares.byFamily.set(modelClass, sum / total);
    return shares;
}

WhatIfSpace whatIfOf(const Window& window) {
    const BurnShares shares = burnShares(window);
    const EffortMix efforts = Rollups::byEffort(window.facts.turns, window.soFar());
    WhatIfSpace space{
        .byFamily = shares.byFamily,
        .familyMultiplier = {},
        .outputShare = shares.output,
        .effortMix = efforts.mix,
        .currentEffort = efforts.dominant,
        .effortMultiplier = UsageModel::effortOutputPriors(),
    };
    for (const ModelClass modelClass : UsageModel::allCases<ModelClass>)
        space.familyMultiplier.set(modelClass, window.facts.weights.multiplier(modelClass));
    return space;
}

} // namespace

std::optional<Date> Facts::earliestEvent() const {
    return turns.empty() ? std::nullopt : std::optional(turns.front().ts);
}

const UsageModel::GaugeWindow* gaugeWindow(const UsageModel::GaugeReading* gauge, WindowKind kind) {
    if (gauge == nullptr) return nullptr;
    const auto window = gauge->windows.find(std::string(statusLineKey(kind)));
    return window == gauge->windows.end() ? nullptr : &window->second;
}

WindowBounds windowBounds(const WindowBoundsQuestion& question) {
    if (const auto bounds = boundsByGauge(question)) return *bounds;
    if (const auto bounds = boundsByAnchors(question)) return *bounds;
    return {.start = question.now - nominalDuration(question.kind), .resetsAt = {}, .estimated = true};
}

WindowCompute computeWindow(WindowKind kind, const Facts& facts, const SessionCapScale& capScale) {
    const Window window = windowOf(kind, facts);
    const LoggedUse logged = loggedUse(window);
    const double scale = scaleOf(window, logged, capScale);
    const Standing standing{.scale = scale, .used = usedFraction(window, logged, scale)};
    const Habits habits = habitsOf(window);

    WindowCompute compute{.scale = scale, .norm = habits.norm, .bounds = window.bounds, .whatIf = whatIfOf(window)};
    addForecasts(compute, window, standing, habits);
    compute.state = stateOf(window, standing.used, paceOf(compute, window, standing.used, habits.baseline));
    compute.projection = projectionOf(compute, window, standing, habits.baseline);
    return compute;
}

} // namespace UsageEngine
