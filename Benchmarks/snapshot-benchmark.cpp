// What a snapshot of a user's whole history costs, in passes over it, and how that grows.

#include <cmath>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "Support/Figures.h"
#include "Support/Processes.h"
#include "Support/Ratios.h"
#include "UsageEngine/Aggregator.h"

namespace {

using UsageEngine::Aggregator;
using UsageEngine::SnapshotInput;
using UsageModel::Date;
using UsageModel::EffortLevel;
using UsageModel::ModelClass;
using UsageModel::UsageEvent;

constexpr Date now{1772323200};
constexpr double secondsPerTurn = 25.92; // a million turns in 300 days
constexpr std::size_t turnsPerSession = 400;
constexpr double bytesPerTurn = 40.0;

UsageEvent turnAt(Date ts, std::size_t index, std::mt19937_64& random) {
    constexpr std::array<const char*, 4> names{"claude-opus-4-1", "claude-sonnet-4-5", "claude-haiku-4-5", "other"};
    constexpr std::array<ModelClass, 4> classes{ModelClass::opus, ModelClass::sonnet, ModelClass::haiku,
                                                ModelClass::other};
    const std::size_t model = random() % names.size();
    return {
        .ts = ts,
        .sessionId = "session-" + std::to_string(index / turnsPerSession),
        .model = names[model],
        .modelClass = classes[model],
        .input = static_cast<std::int64_t>(random() % 100),
        .output = static_cast<std::int64_t>(random() % 3000),
        .cacheCreation = static_cast<std::int64_t>(random() % 20000),
        .cacheRead = static_cast<std::int64_t>(random() % 200000),
        .effort = random() % 2 == 0 ? std::nullopt : std::optional(EffortLevel::high),
    };
}

/// A history that ends now, by time as the store hands it out.
std::vector<UsageEvent> history(std::size_t count) {
    std::mt19937_64 random(7);
    std::vector<UsageEvent> events;
    events.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        events.push_back(turnAt(now - secondsPerTurn * static_cast<double>(count - i), i, random));
    return events;
}

std::vector<UsageModel::Anchor> ceilings() {
    std::vector<UsageModel::Anchor> anchors;
    for (int i = 1; i <= 200; ++i) {
        anchors.push_back({.ts = now - i * 100000.0,
                           .source = UsageModel::AnchorSource::syntheticLog,
                           .kind = UsageModel::AnchorKind::ceiling});
    }
    return anchors;
}

UsageModel::GaugeReading gauge() {
    return {.capturedAt = now.secondsSince1970 - 600,
            .source = "statusline",
            .windows = {{"five_hour", {.usedPercentage = 42.0, .resetsAt = now.secondsSince1970 + 7200}},
                        {"seven_day", {.usedPercentage = 31.0, .resetsAt = now.secondsSince1970 + 250000}},
                        {"seven_day_opus", {.usedPercentage = 12.0, .resetsAt = now.secondsSince1970 + 250000}}}};
}

/// The measure: what cannot be had for less than one look at every turn.
double plainSum(const std::vector<UsageEvent>& events, const UsageModel::CategoryWeights& weights) {
    double sum = 0.0;
    for (const UsageEvent& event : events) sum += weights.effective(event);
    return sum;
}

bool memoryIsBounded(const std::vector<UsageEvent>& events, const std::function<void()>& snapshot) {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak begins anew
    const double before = Bench::peakMemory();
    snapshot();
    const double perTurn = (Bench::peakMemory() - before) / static_cast<double>(events.size());
    return Bench::isMet({"peak memory of a snapshot", perTurn, "bytes a turn", bytesPerTurn});
}

} // namespace

int main(int argc, char** argv) {
    const Aggregator aggregator{.calendar = *UsageModel::Calendar::inZone("Europe/Berlin")};
    const auto anchors = ceilings();
    const auto snapshot = [&](const std::vector<UsageEvent>& events) {
        benchmark::DoNotOptimize(
            aggregator.snapshot({.events = events, .anchors = anchors, .gauge = gauge(), .now = now}));
    };

    constexpr int rounds = 15;
    std::map<std::size_t, std::vector<UsageEvent>> histories;
    for (const std::size_t count : {10'000U, 100'000U, 1'000'000U}) {
        const auto& events = histories[count] = history(count);
        Bench::add("plain_sum_" + std::to_string(count), rounds,
                   [&] { benchmark::DoNotOptimize(plainSum(events, aggregator.weights)); });
        Bench::add("snapshot_" + std::to_string(count), rounds, [&] { snapshot(events); });
    }
    const auto& largest = histories.rbegin()->second;
    const bool isBounded = memoryIsBounded(largest, [&] { snapshot(largest); });
    const int status = Bench::run(argc, argv,
                                  {
                                      // A tenth of the turns in a tenth of that, give or take a fifth.
                                      {"snapshot_1000000", {"plain_sum_1000000"}, 12.0},
                                      {"snapshot_100000", {"plain_sum_1000000"}, 1.44},
                                      {"snapshot_10000", {"plain_sum_1000000"}, 0.144},
                                  });
    return isBounded ? status : 1;
}
