// How the cost of a refresh grows with the turns of a history and with the number of logs.

#include <array>
#include <list>
#include <string>

#include <benchmark/benchmark.h>

#include "Support/Ratios.h"
#include "Support/TemporaryTree.h"
#include "UsageEngine/Aggregator.h"
#include "UsageIngest/IngestStore.h"

namespace {

constexpr std::array<std::size_t, 4> turnCounts{1'000, 10'000, 100'000, 1'000'000};
constexpr std::array<std::size_t, 5> logCounts{10, 100, 1'000, 10'000, 100'000};
constexpr std::uint64_t bytesOfLogs = 5'000'000;
constexpr std::uint64_t leastBytesOfLog = 600;
constexpr int rounds = 9;
// For ten times as much; give or take a fifth.
constexpr double growth = 12.0;

std::string named(const char* what, std::size_t count) {
    return what + ("_" + std::to_string(count));
}

/// A home, and its history where all logs are imported.
struct Home {
    explicit Home(const Bench::TemporaryTree::Wish& wish) : tree(wish) { open().sync(tree.logs()); }

    [[nodiscard]] UsageIngest::IngestStore open() const { return UsageIngest::IngestStore(tree.database()); }

    Bench::TemporaryTree tree;
};

void addTurns(std::list<Home>& homes, std::size_t count) {
    const Home& home = homes.emplace_back(Bench::TemporaryTree::Wish{.bytes = bytesOfLogs});
    Bench::multiplyTurns(home.tree.database(), count);
    Bench::add(named("load", count), rounds, [&home] { benchmark::DoNotOptimize(home.open().allEvents()); });
    const UsageIngest::EventList events = home.open().allEvents();
    Bench::add(named("snapshot", count), rounds, [events] {
        const UsageEngine::Aggregator aggregator{.calendar = UsageModel::Calendar::local()};
        benchmark::DoNotOptimize(aggregator.snapshot({.events = *events, .now = events->back().ts}));
    });
}

void addLogs(std::list<Home>& homes, std::size_t count) {
    const Home& home = homes.emplace_back(Bench::TemporaryTree::Wish{.bytes = count * leastBytesOfLog, .files = count});
    Bench::add(
        named("first_sync", count), 1, [&home] { home.open().sync(home.tree.logs()); },
        [&home] { home.tree.forgetImport(); });
    Bench::add(named("sync", count), rounds, [&home] { home.open().sync(home.tree.logs()); });
}

} // namespace

int main(int argc, char** argv) {
    std::list<Home> homes;
    for (const std::size_t count : turnCounts) addTurns(homes, count);
    for (const std::size_t count : logCounts) addLogs(homes, count);
    return Bench::run(argc, argv,
                      {
                          {.subject = "load_1000000", .measures = {"load_100000"}, .limit = growth},
                          {.subject = "snapshot_1000000", .measures = {"snapshot_100000"}, .limit = growth},
                          {.subject = "first_sync_100000", .measures = {"first_sync_10000"}, .limit = growth},
                          {.subject = "sync_100000", .measures = {"sync_10000"}, .limit = growth},
                      });
}
