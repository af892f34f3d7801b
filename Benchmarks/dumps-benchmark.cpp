// How long the program takes, from its start to its end, to write its views as pictures.

#include "Support/Processes.h"
#include "Support/Ratios.h"
#include "Support/TemporaryTree.h"

namespace {

constexpr double chartSeconds = 2.0;
constexpr double uiSeconds = 4.0;

} // namespace

int main(int argc, char** argv) {
    const std::string program = Bench::programBeside(argv[0], "Brindlewick");
    const Bench::TemporaryTree tree({.bytes = 1});
    const auto dump = [&](const char* job) {
        Bench::shell("HOME=\"$TREE\" QT_QPA_PLATFORM=offscreen exec '" + program + "' " + job +
                         " \"$TREE/pictures\" >/dev/null",
                     tree.home());
    };
    constexpr int rounds = 5;
    Bench::add("dump_chart", rounds, [&] { dump("--dump-chart"); });
    Bench::add("dump_ui", rounds, [&] { dump("--dump-ui"); });
    return Bench::run(argc, argv,
                      {
                          {.subject = "dump_chart", .limit = chartSeconds},
                          {.subject = "dump_ui", .limit = uiSeconds},
                      });
}
