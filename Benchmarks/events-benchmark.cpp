// How long a million turns take to load, and to have again.

#include <filesystem>
#include <optional>
#include <string>

#include "Support/Ratios.h"
#include "Support/TemporaryTree.h"
#include "UsageIngest/IngestStore.h"

namespace {

constexpr int turns = 1'000'000;
constexpr double secondsPerTurn = 1e-6;

/// Multiplies the turns of an import until there are a million, each copy at other times.
void fill(const std::filesystem::path& database) {
    UsageIngest::SQLiteDB db(database.native());
    db.exec("CREATE TEMP TABLE sample AS SELECT * FROM usage_event;");
    const std::string wanted = std::to_string(turns);
    db.exec(
        "BEGIN; WITH RECURSIVE copy(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM copy WHERE n<1000) INSERT INTO usage_event"
        " SELECT ts-n*4000000.0,session_id||n,file_path,model,model_class,input,output,cache_creation,cache_read,effort"
        " FROM copy, sample LIMIT " +
        wanted + " - (SELECT COUNT(*) FROM usage_event); COMMIT;");
}

} // namespace

int main(int argc, char** argv) {
    const Bench::TemporaryTree tree({.bytes = 20'000'000});
    UsageIngest::IngestStore(tree.database()).sync(tree.logs());
    fill(tree.database());

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
