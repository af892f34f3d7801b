// How long the report takes, from its start to its end, on a home where nothing is new.

#include <filesystem>
#include <string>

#include "Support/Processes.h"
#include "Support/Ratios.h"
#include "Support/TemporaryTree.h"

namespace {

constexpr std::uint64_t bytesOfLogs = 580'000'000; // a hundred thousand turns
constexpr double secondsAtMost = 0.15;

} // namespace

int main(int argc, char** argv) {
    const std::string program = Bench::programBeside(argv[0], "brindlewick-report");
    const Bench::TemporaryTree tree({.bytes = bytesOfLogs});
    const std::filesystem::path home = tree.home();
    const auto report = [&] { Bench::shell("HOME=\"$TREE\" exec '" + program + "' --json >/dev/null", home); };
    report(); // imports

    constexpr int rounds = 30;
    Bench::add("report", rounds, report);
    return Bench::run(argc, argv, {{.subject = "report", .limit = secondsAtMost}});
}
