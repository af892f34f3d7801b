#include "UsageEngine/CompositeForecast.h"

#include <algorithm>

#include "UsageEngine/Rollups.h"
#include "UsageEngine/WeeklyNormLearning.h"

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::ModelBucket;
using Component = CompositeForecast::Component;
using Edge = CompositeForecast::Edge;

constexpr int windowsBack = 4;
constexpr double smallestTotal = 1e-9;
constexpr double smallestRise = 1e-12;

Baseline baselineOf(const CompositeForecast::MakeQuestion& question, const TurnFilter& filter) {
    const double span = question.window.to - question.window.from;
    return Baseline::learn({
        .turns = question.turns,
        .calendar = question.calendar,
        .from = question.window.from - windowsBack * span,
        .to = question.window.from,
        .filter = filter,
    });
}

UsageModel::WeeklyNorm normOf(const CompositeForecast::MakeQuestion& question, const TurnFilter& filter) {
    return learnWeeklyNorm({
        .turns = question.turns,
        .windowStart = question.window.from,
        .span = question.window.to - question.window.from,
        .now = question.now,
        .lookback = windowsBack,
        .filter = filter,
        .earliestEvent = question.earliestEvent,
    });
}

std::optional<Component> componentOf(ModelBucket bucket, const CompositeForecast::MakeQuestion& question) {
    const TurnFilter filter{.opusOnly = false, .bucket = bucket};
    const TimeSpan soFar{.from = question.window.from, .to = question.now};
    const Baseline baseline = baselineOf(question, filter);
    const UsageModel::WeeklyNorm norm = normOf(question, filter);
    const double used = Rollups::weightedUsage(question.turns, soFar, filter) * question.scale;
    const auto shape = ForecastShape::make({
        .baseline = baseline,
        .norm = norm,
        .scale = question.scale,
        .window = question.window,
        .now = question.now,
        .usedNow = used,
        .actualCumulative = Rollups::hourlyCumulative(
            {.turns = question.turns, .span = soFar, .scale = question.scale, .bucket = bucket}),
        .recencyHalfLife = question.recencyHalfLife,
        .shrinkage = question.shrinkage,
    });
    if (!shape) return std::nullopt;
    return Component{.bucket = bucket, .shape = *shape, .usedNow = used, .sNow = shape->share(question.now)};
}

double edgeFactor(const ForecastShape& shape, Edge edge) {
    if (edge == Edge::likely) return 1.0;
    return edge == Edge::high ? shape.coneHigh : shape.coneLow;
}

} // namespace

std::optional<CompositeForecast> CompositeForecast::make(const MakeQuestion& question) {
    if (!(question.window.to > question.window.from)) return std::nullopt;
    CompositeForecast forecast;
    for (const ModelBucket bucket : UsageModel::allCases<ModelBucket>) {
        if (auto component = componentOf(bucket, question)) forecast.components.push_back(*std::move(component));
    }
    if (forecast.components.empty()) return std::nullopt;
    return forecast;
}

double CompositeForecast::usedNow() const {
    double sum = 0.0;
    for (const Component& component : components) sum += component.usedNow;
    return sum;
}

double CompositeForecast::typicalTotal() const {
    double sum = 0.0;
    for (const Component& component : components) sum += component.shape.typicalTotal;
    return sum;
}

double CompositeForecast::expectedSoFar() const {
    double sum = 0.0;
    for (const Component& component : components) sum += component.sNow * component.shape.typicalTotal;
    return sum;
}

double CompositeForecast::intensity() const {
    const double total = typicalTotal();
    if (!(total > smallestTotal)) return 1.0;
    double sum = 0.0;
    for (const Component& component : components) sum += component.shape.intensity * component.shape.typicalTotal;
    return sum / total;
}

bool CompositeForecast::isMeaningful() const {
    const auto largest =
        std::ranges::max_element(components, {}, [](const Component& one) { return one.shape.typicalTotal; });
    return largest != components.end() && largest->shape.isMeaningful;
}

double CompositeForecast::projected(Date at, const Course& course) const {
    double sum = 0.0;
    for (const auto& [bucket, shape, used, sNow] : components) {
        const double factor = course.kFactor * (shape.intensity * edgeFactor(shape, course.edge));
        sum += used + shape.typicalTotal * factor * std::max(shape.share(at) - sNow, 0.0);
    }
    return sum;
}

std::optional<Date> CompositeForecast::crossing(const ForecastShape::Level& question, const Course& course) const {
    const auto& [level, after] = question;
    UsageModel::SeriesPoint previous{.t = after, .used = projected(after, course)};
    if (level <= previous.used) return after;
    if (components.empty()) return std::nullopt;
    // All components lie on the same window, and so on the same hours.
    for (const UsageModel::SeriesPoint& hour : components.front().shape.cumulativeShare) {
        if (!(hour.t > after)) continue;
        const double value = projected(hour.t, course);
        const double rise = value - previous.used;
        if (level <= value)
            return rise > smallestRise ? previous.t + (hour.t - previous.t) * (level - previous.used) / rise : hour.t;
        previous = {.t = hour.t, .used = value};
    }
    return std::nullopt;
}

} // namespace UsageEngine
