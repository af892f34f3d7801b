#include "HarrowlaneApp/Samples/ChartScenarios.h"

#include "UsageEngine/Aggregator.h"

namespace HarrowlaneApp::DumpChart {

namespace {

using UsageModel::Anchor;
using UsageModel::Calendar;
using UsageModel::Date;
using UsageModel::ModelClass;
using UsageModel::UsageSnapshot;
using UsageModel::WindowKind;

constexpr double weekSeconds = 604800.0;
constexpr double daySeconds = 86400.0;
constexpr double minutesAgo = 240.0;

/// A week as a scenario has it. A log unit is the whole limit here, so that a sum reads as a share of it.
struct Story {
    double gone = 0.0;
    double used = 0.0;
    /// What the weeks before cost, give or take.
    double usual = 0.0;
    UsageModel::EnumMap<ModelClass, double> mix;
};

TurnPlan planOf(const Story& story, const Calendar& calendar) {
    return {
        .windowStart = now(calendar) - story.gone,
        .now = now(calendar),
        .priorTotals = {story.usual, 1.22 * story.usual, 0.80 * story.usual, 1.06 * story.usual},
        .soFar = story.used,
        .mix = story.mix,
    };
}

/// Late on the last three working days before the week: sessions that ran into their limit, from which it is known what
/// a full one costs.
std::vector<Anchor> ceilings(Date windowStart, const Calendar& calendar) {
    constexpr int sunday = 1;
    constexpr int saturday = 7;
    constexpr double lateInDay = 17.9 * 3600.0;
    std::vector<Anchor> anchors;
    Date day = calendar.startOfDay(windowStart);
    while (anchors.size() < 3) {
        day = calendar.addDays(day, -1);
        const int weekday = calendar.weekday(day);
        if (weekday == sunday || weekday == saturday) continue;
        anchors.push_back({.ts = day + lateInDay,
                           .source = UsageModel::AnchorSource::syntheticLog,
                           .window = WindowKind::session5h,
                           .kind = UsageModel::AnchorKind::ceiling});
    }
    return anchors;
}

/// When the week resets, from a reading of last week; all that is left of the gauge.
Anchor lastReset(Date windowStart) {
    return {.ts = windowStart - daySeconds,
            .window = WindowKind::weeklyAll,
            .kind = UsageModel::AnchorKind::percentage,
            .usedFraction = 0.8,
            .resetsAt = windowStart};
}

UsageSnapshot withGauge(const Story& story, const Calendar& calendar) {
    const TurnPlan plan = planOf(story, calendar);
    return UsageEngine::Aggregator{.calendar = calendar}.snapshot({
        .events = events(plan, calendar),
        .anchors = ceilings(plan.windowStart, calendar),
        .gauge = weeklyGauge({.pct = 100.0 * story.used,
                              .resetsAt = plan.windowStart + weekSeconds,
                              .capturedAt = plan.now - minutesAgo}),
        .now = plan.now,
        .ingest = UsageModel::IngestProgress::idle(),
    });
}

UsageSnapshot withoutGauge(const Story& story, const Calendar& calendar) {
    const TurnPlan plan = planOf(story, calendar);
    const std::array anchors{lastReset(plan.windowStart)};
    return UsageEngine::Aggregator{.calendar = calendar}.snapshot({
        .events = events(plan, calendar),
        .anchors = anchors,
        .now = plan.now,
        .ingest = UsageModel::IngestProgress::idle(),
    });
}

constexpr double sixtyPercent = 362880.0;
constexpr double fortyFivePercent = 272160.0;

Story manyModels(double gone, double used, double usual) {
    return {.gone = gone,
            .used = used,
            .usual = usual,
            .mix = {{ModelClass::opus, 0.45},
                    {ModelClass::fable, 0.33},
                    {ModelClass::sonnet, 0.18},
                    {ModelClass::haiku, 0.04}}};
}

UsageSnapshot over(const Calendar& calendar) {
    return withGauge(manyModels(sixtyPercent, 0.88, 0.98), calendar);
}

UsageSnapshot track(const Calendar& calendar) {
    return withGauge(manyModels(fortyFivePercent, 0.47, 0.90), calendar);
}

UsageSnapshot under(const Calendar& calendar) {
    return withGauge({.gone = fortyFivePercent,
                      .used = 0.18,
                      .usual = 0.36,
                      .mix = {{ModelClass::sonnet, 0.8}, {ModelClass::haiku, 0.2}}},
                     calendar);
}

UsageSnapshot nogauge(const Calendar& calendar) {
    return withoutGauge(manyModels(fortyFivePercent, 0.68, 0.82), calendar);
}

} // namespace

const std::array<Scenario, scenarioCount>& scenarios() {
    static constexpr std::array<Scenario, scenarioCount> all{
        {{"over", over}, {"track", track}, {"under", under}, {"nogauge", nogauge}}};
    return all;
}

Date now(const Calendar& calendar) {
    // At that hour none of the windows begins within a session.
    return calendar.instant(absl::CivilSecond(2026, 3, 5, 17, 0));
}

std::vector<UsageModel::UsageEvent> events(const TurnPlan& plan, const Calendar& calendar) {
    return turnsOf(plan, calendar);
}

UsageModel::GaugeReading weeklyGauge(const WeeklyReading& reading) {
    return {
        .capturedAt = reading.capturedAt.secondsSince1970,
        .source = "statusline",
        .windows = {{std::string(statusLineKey(WindowKind::weeklyAll)),
                     {.usedPercentage = reading.pct, .resetsAt = reading.resetsAt.secondsSince1970}}},
    };
}

} // namespace HarrowlaneApp::DumpChart
