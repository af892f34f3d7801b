#include "UsageEngine/WeekSeriesBuilding.h"

#include <algorithm>

#include "UsageEngine/BlockScale.h"
#include "UsageEngine/Rollups.h"

namespace UsageEngine {

namespace {

using UsageModel::Date;
using UsageModel::SeriesPoint;
using UsageModel::SessionBar;
using UsageModel::SessionBlock;
using UsageModel::SessionCapBasis;
using UsageModel::WeekSeries;
using Points = std::vector<SeriesPoint>;

/// The week's forecast, whatever it was made by, in the window's own unit.
struct Outlook {
    Points baseline;
    double likelyEnd = 0.0;
    double fastEnd = 0.0;
    Points likely;
    Points high;
    Points low;
    double intensity = 1.0;
    bool isMeaningful = false;
};

/// The week that is drawn. `end` is the reset, or now where there is none.
struct Week {
    const WindowCompute& compute;
    const Facts& facts;
    TimeSpan span;
};

Outlook fromBottomUp(const Week& week, const BottomUpForecast& forecast, const WeekdayProfile& profile) {
    constexpr double smallestTotal = 1e-9;
    const Date end = week.span.to;
    const bool hasTypicalWeek = forecast.typicalWeekTotal > smallestTotal;
    return {
        .baseline = profile.cumulative(
            {.span = week.span, .quantile = WeekdayProfile::Quantile::typical, .calendar = week.facts.calendar}),
        .likelyEnd = BottomUpForecast::value(forecast.curve, end, forecast.usedNow),
        .fastEnd = BottomUpForecast::value(forecast.high, end, forecast.usedNow),
        .likely = forecast.curve,
        .high = forecast.high,
        .low = forecast.low,
        .intensity = hasTypicalWeek ? forecast.landing() / forecast.typicalWeekTotal : forecast.intensity,
        .isMeaningful = forecast.isMeaningful,
    };
}

/// The points from now on, at the heights that `height` gives.
Points courseFrom(Date now, const Points& points, auto&& height) {
    Points course;
    for (const SeriesPoint& point : points) {
        if (point.t >= now) course.push_back({.t = point.t, .used = height(point.t)});
    }
    return course;
}

/// All components lie on the same window, and so on the same hours.
Points typicalWeek(const CompositeForecast& forecast) {
    Points sum = forecast.components.front().shape.cumulativeShare;
    for (std::size_t i = 0; i < sum.size(); ++i) {
        sum[i].used = 0.0;
        for (const auto& component : forecast.components)
            sum[i].used += component.shape.typicalTotal * component.shape.cumulativeShare[i].used;
    }
    return sum;
}

Outlook fromComposite(const Week& week, const CompositeForecast& forecast) {
    using Edge = CompositeForecast::Edge;
    const Date now = week.facts.now;
    const Points& hours = forecast.components.front().shape.cumulativeShare;
    const auto at = [&](Edge edge) {
        return [&forecast, edge](Date t) { return forecast.projected(t, {.edge = edge, .kFactor = 1.0}); };
    };
    return {
        .baseline = typicalWeek(forecast),
        .likelyEnd = at(Edge::likely)(week.span.to),
        .fastEnd = at(Edge::high)(week.span.to),
        .likely = courseFrom(now, hours, at(Edge::likely)),
        .high = courseFrom(now, hours, at(Edge::high)),
        .low = courseFrom(now, hours, at(Edge::low)),
        .intensity = forecast.intensity(),
        .isMeaningful = forecast.isMeaningful(),
    };
}

Outlook fromShape(const Week& week, const ForecastShape& shape) {
    const Date now = week.facts.now;
    const auto at = [&](double factor) {
        const ForecastShape::Standing standing{
            .usedNow = week.compute.state.used, .sNow = week.compute.shareNow, .k = factor * shape.intensity};
        return [&shape, standing](Date t) { return shape.projected(standing, t); };
    };
    Points baseline = shape.cumulativeShare;
    for (SeriesPoint& point : baseline) point.used *= shape.typicalTotal;
    return {
        .baseline = std::move(baseline),
        .likelyEnd = at(1.0)(week.span.to),
        .fastEnd = at(shape.coneHigh)(week.span.to),
        .likely = courseFrom(now, shape.cumulativeShare, at(1.0)),
        .high = courseFrom(now, shape.cumulativeShare, at(shape.coneHigh)),
        .low = courseFrom(now, shape.cumulativeShare, at(shape.coneLow)),
        .intensity = shape.intensity,
        .isMeaningful = shape.isMeaningful,
    };
}

/// Without a forecast the week goes on as the last hour, or quarter of an hour, went. No curve is drawn from that.
Outlook fromRates(const Week& week) {
    constexpr double lookbackLong = 3600.0;
    constexpr double lookbackShort = 900.0;
    const Date now = week.facts.now;
    const auto rate = [&](double lookback) {
        const TimeSpan span{.from = std::max(week.span.from, now - lookback), .to = now};
        return sumOf(withinClosed(week.facts.turns, span)) / std::max(now - span.from, 1.0) * week.compute.scale;
    };
    const double hour = rate(lookbackLong);
    const double left = std::max(week.span.to - now, 0.0);
    const double used = week.compute.state.used;
    Outlook outlook;
    outlook.likelyEnd = used + hour * left;
    outlook.fastEnd = used + std::max(hour, rate(lookbackShort)) * left;
    return outlook;
}

Outlook outlookOf(const Week& week) {
    const WindowCompute& compute = week.compute;
    if (compute.bottomUp && compute.profile) return fromBottomUp(week, *compute.bottomUp, *compute.profile);
    if (compute.composite) return fromComposite(week, *compute.composite);
    if (compute.shape) return fromShape(week, *compute.shape);
    return fromRates(week);
}

/// The unit of a series: a value of the window's own is divided by `divisor`.
struct Unit {
    double divisor = 1.0;

    [[nodiscard]] double operator()(double value) const { return value / divisor; }
    [[nodiscard]] Points operator()(Points points) const {
        for (SeriesPoint& point : points) point.used = (*this)(point.used);
        return points;
    }
};

Unit unitOf(const WindowCompute& weekly) {
    // A fraction of the limit needs the gauge.
    if (weekly.state.confidence.anchored) return {};
    double typical = 0.0;
    if (weekly.shape) typical = weekly.shape->typicalTotal;
    if (weekly.composite) typical = weekly.composite->typicalTotal();
    return typical > 0.0 ? Unit{.divisor = typical} : Unit{};
}

struct Fill {
    double fraction = 0.0;
    SessionCapBasis basis = SessionCapBasis::uncalibrated;
};

/// In order of trust: the session's own anchor, the gauge for the one that runs, the learnt cap, the logs alone.
Fill fillOf(const SessionBlock& block, const WeekSeriesQuestion& question) {
    const auto [scale, basis] = blockScale(block, question.sessionAnchors, question.facts.turns, question.capScale);
    const bool gaugeIsLive = question.session5h != nullptr && question.session5h->state.confidence.anchored;
    if (basis != SessionCapBasis::ownCeiling && gaugeIsLive && block.isCurrent)
        return {.fraction = question.session5h->state.used, .basis = SessionCapBasis::liveGauge};
    return {.fraction = scale * block.usedFraction, .basis = basis};
}

SessionBar barOf(const SessionBlock& block, const WeekSeriesQuestion& question, const Unit& unit) {
    const double raw = block.usedFraction;
    const Fill fill = fillOf(block, question);
    SessionBar bar{
        .start = block.start,
        .end = block.end,
        .fillFraction = fill.fraction,
        .weeklyCost = unit(raw * question.weekly->scale),
        .byModelClass = {},
        .isCurrent = block.isCurrent,
        .capBasis = fill.basis,
    };
    for (const auto& [modelClass, units] : block.byModelClass)
        bar.byModelClass.set(modelClass, raw > 0.0 ? units / raw : 0.0);
    return bar;
}

std::vector<SessionBar> barsOf(const WeekSeriesQuestion& question, const Unit& unit) {
    std::vector<SessionBar> bars;
    bars.reserve(question.blocks.size());
    for (const SessionBlock& block : question.blocks) bars.push_back(barOf(block, question, unit));
    return bars;
}

Points actualOf(const Week& week) {
    const Date soFar = std::min(week.span.to, week.facts.now);
    return Rollups::hourlyCumulative({.turns = week.facts.turns,
                                      .span = {.from = week.span.from, .to = soFar},
                                      .scale = week.compute.scale,
                                      .bucket = {}});
}

} // namespace

std::optional<WeekSeries> buildWeekSeries(const WeekSeriesQuestion& question) {
    if (question.weekly == nullptr) return std::nullopt;
    const WindowCompute& weekly = *question.weekly;
    const Facts& facts = question.facts;
    const Week week{
        .compute = weekly,
        .facts = facts,
        .span = {.from = weekly.bounds.start, .to = weekly.bounds.resetsAt.value_or(facts.now)},
    };
    const bool anchored = weekly.state.confidence.anchored;
    const Unit unit = unitOf(weekly);
    Outlook outlook = outlookOf(week);
    return WeekSeries{
        .windowStart = week.span.from,
        .windowEnd = week.span.to,
        .now = facts.now,
        .usedNow = unit(weekly.state.used),
        .actual = unit(actualOf(week)),
        .baseline = unit(std::move(outlook.baseline)),
        .coneLikelyEnd = {.t = week.span.to, .used = unit(outlook.likelyEnd)},
        .coneFastEnd = {.t = week.span.to, .used = unit(outlook.fastEnd)},
        .breaches = weekly.projection.willBreachBeforeReset,
        .scale = anchored ? UsageModel::SeriesScale::capFraction : UsageModel::SeriesScale::typicalWeeks,
        .boundaryEstimated = weekly.bounds.estimated,
        .limitLevel = anchored ? std::optional(1.0) : std::nullopt,
        .forecastLikely = unit(std::move(outlook.likely)),
        .forecastHigh = unit(std::move(outlook.high)),
        .forecastLow = unit(std::move(outlook.low)),
        .crossing = weekly.projection.likelyEmpty,
        .norm = weekly.norm,
        .intensity = outlook.intensity,
        .intensityIsMeaningful = outlook.isMeaningful,
        .sessions = barsOf(question, unit),
        .opusShare = weekly.whatIf.opusShare(),
        .outputShare = weekly.whatIf.outputShare,
        .whatIf = weekly.bounds.resetsAt ? std::optional(weekly.whatIf) : std::nullopt,
    };
}

} // namespace UsageEngine
