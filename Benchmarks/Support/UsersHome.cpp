#include "Support/UsersHome.h"

#include <chrono>
#include <fstream>

#include "SampleHome/SampleHome.h"
#include "Support/Processes.h"

namespace Bench {

namespace {

constexpr std::uint64_t bytesOfLogs = 100'000'000;

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

} // namespace

UsersHome::UsersHome(const std::string& self) : tree_({.bytes = bytesOfLogs, .files = logs, .now = secondsNow()}) {
    // By another process: an import leaves memory behind that is not to be counted here.
    const std::string home = "HOME=\"$TREE\" '";
    shell(home + programBeside(self, "brindlewick-report") + "' --json >/dev/null", tree_.home());
    multiplyTurns(paths().database(), turns);
    std::ofstream(tree_.home() / "status-line.json") << SampleHome::statusLineDocument(secondsNow());
    shell(home + programBeside(self, "brindlewick-statusline") + "' <\"$TREE/status-line.json\" >/dev/null",
          tree_.home());
}

} // namespace Bench
