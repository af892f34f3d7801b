// How long a first import takes, beside what it cannot do without; and how much memory.
//
// ingest-benchmark [OPTIONS OF Google Benchmark]   BENCHMARK_BYTES sets the size of the tree, 1 GB otherwise.

#include <cstdlib>
#include <filesystem>

#include "Support/Bare.h"
#include "Support/Figures.h"
#include "Support/Processes.h"
#include "Support/Ratios.h"
#include "Support/TemporaryTree.h"
#include "UsageIngest/IngestStore.h"

namespace {

constexpr double memoryLimit = 48e6;

void import(const Bench::TemporaryTree& tree) {
    UsageIngest::IngestStore store(tree.database());
    store.sync(tree.logs());
}

std::uint64_t wishedBytes() {
    const char* text = std::getenv("BENCHMARK_BYTES");
    return text != nullptr ? std::strtoull(text, nullptr, 10) : 1'000'000'000;
}

} // namespace

int main(int argc, char** argv) {
    const Bench::TemporaryTree tree({.bytes = wishedBytes()});
    const auto forget = [&] { tree.forgetImport(); };
    import(tree); // warms the page cache, and comes first: nothing else has used memory yet
    const double peak = Bench::peakMemory();

    const std::vector<Bench::Bare::Row> rows = Bench::Bare::rowsOf(tree.database());
    const std::filesystem::path model = tree.projects().parent_path() / "model.db";
    std::filesystem::rename(tree.database(), model);

    constexpr int rounds = 5;
    Bench::add(
        "import", rounds, [&] { import(tree); }, forget);
    Bench::add("bare_parse", rounds, [&] { Bench::Bare::parseAll(tree.logs()); });
    Bench::add(
        "bare_insert", rounds, [&] { Bench::Bare::insertAll(rows, tree.database(), model); }, forget);
    Bench::add("wc", rounds, [&] {
        Bench::shell("find \"$TREE\" -name '*.jsonl' -print0 | xargs -0 wc -l >/dev/null", tree.projects());
    });
    Bench::add("jq", 1, [&] {
        Bench::shell(
            "find \"$TREE\" -name '*.jsonl' -print0 | xargs -0 cat | jq -cR 'fromjson? | select(.type? == \"assistant\")"
            " | [.timestamp, .sessionId, .effort, .message.model, .message.usage.input_tokens,"
            " .message.usage.output_tokens, .message.usage.cache_creation_input_tokens,"
            " .message.usage.cache_read_input_tokens]' >/dev/null",
            tree.projects());
    });
    const int status = Bench::run(argc, argv,
                                  {
                                      {.subject = "import", .measures = {"bare_parse", "bare_insert"}, .limit = 1.3},
                                      {.subject = "import", .measures = {"wc"}, .limit = 6.0},
                                      {.subject = "import", .measures = {"jq"}, .limit = 0.1},
                                  });
    return Bench::isMet({"peak memory of an import", peak / 1e6, "MB", memoryLimit / 1e6}) ? status : 1;
}
