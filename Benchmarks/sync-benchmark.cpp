// How long a sync takes that finds nothing new, beside listing the same tree.

#include "Support/Ratios.h"
#include "Support/TemporaryTree.h"
#include "UsageIngest/IngestStore.h"

int main(int argc, char** argv) {
    const Bench::TemporaryTree tree({.bytes = 100'000'000, .files = 5000});
    UsageIngest::IngestStore store(tree.database());
    store.sync(tree.logs());

    constexpr int rounds = 30;
    Bench::add("sync", rounds, [&] { store.sync(tree.logs()); });
    Bench::add("find", rounds,
               [&] { Bench::shell("exec find \"$TREE\" -printf '%s %i\\n' >/dev/null", tree.projects()); });
    return Bench::run(argc, argv, {{.subject = "sync", .measures = {"find"}, .limit = 3.0}});
}
