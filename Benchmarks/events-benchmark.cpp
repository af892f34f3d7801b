// How long a million turns take to load, and to have again.

#include <optional>

#include "Support/Ratios.h"
#include "Support/TemporaryTree.h"
#include "UsageIngest/IngestStore.h"

namespace {

constexpr int turns = 1'000'000;
constexpr double secondsPerTurn = 1e-6;

} // namespace

int main(int argc, char** argv) {
    const Bench::TemporaryTree tree({.bytes = 20'000'000});
    UsageIngest::IngestStore(tree.database()).sync(tree.logs());
    Bench::multiplyTurns(tree.database(), turns);

    constexpr int rounds = 10;
    std::optional<UsageIngest::IngestStore> store;
    UsageIngest::EventList events;
    const auto reopen = [&] {
        events.reset();
        store.emplace(tree.database());
    };
    const auto load = [&] { events = store->allEvents(); };
    Bench::add("load", rounds, load, reopen);
    Bench::add("load_again", rounds, load, [&] {
        reopen();
        load();
        load(); // the pages that the first has pushed out of SQLite's cache come back
    });
    return Bench::run(argc, argv,
                      {
                          {.subject = "load", .limit = secondsPerTurn * turns},
                          {.subject = "load_again", .measures = {"load"}, .limit = 0.001},
                      });
}
