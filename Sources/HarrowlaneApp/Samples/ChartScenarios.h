#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "HarrowlaneApp/Samples/SampleTurns.h"
#include "UsageModel/GaugeReading.h"
#include "UsageModel/UsageSnapshot.h"

/// Four weeks to draw, each of made-up turns that went through the engine like anybody's.
namespace HarrowlaneApp::DumpChart {

struct Scenario {
    std::string_view name;
    UsageModel::UsageSnapshot (*make)(const UsageModel::Calendar& calendar);
};

/// A week over its pace, one on track, one that leaves much unspent, and one of which only the logs are known.
inline constexpr std::size_t scenarioCount = 4;
[[nodiscard]] const std::array<Scenario, scenarioCount>& scenarios();

/// The present of all of them: a Thursday afternoon, wherever the calendar is.
[[nodiscard]] UsageModel::Date now(const UsageModel::Calendar& calendar);
/// The turns of a week and of those before it.
[[nodiscard]] std::vector<UsageModel::UsageEvent> events(const TurnPlan& plan, const UsageModel::Calendar& calendar);

/// What the gauge says of the week.
struct WeeklyReading {
    double pct = 0.0;
    UsageModel::Date resetsAt;
    UsageModel::Date capturedAt;
};

[[nodiscard]] UsageModel::GaugeReading weeklyGauge(const WeeklyReading& reading);

} // namespace HarrowlaneApp::DumpChart
