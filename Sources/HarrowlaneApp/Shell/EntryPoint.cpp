#include <cstdio>
#include <string>
#include <vector>

#include "HarrowlaneApp/Shell/CommandLine.h"

namespace AppMain {

namespace {

/// Performs the one job that the arguments ask for. The status is 0 whatever comes of it: failures are only printed.
int main(const std::vector<std::string>& arguments) {
    const HarrowlaneApp::Job job = HarrowlaneApp::jobFor(arguments);
    if (job.kind == HarrowlaneApp::Job::Kind::application) {
        std::puts("the menu-bar program is not built into this version yet; brindlewick-report shows the numbers");
    } else {
        std::printf("%s is not built into this version yet\n", std::string(switchOf(job.kind)).c_str());
    }
    return 0;
}

} // namespace

} // namespace AppMain

int main(int argc, char** argv) {
    return AppMain::main({argv, argv + argc});
}
