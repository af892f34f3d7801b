#include "Report/Helper.h"

#include <stdexcept>
#include <system_error>

#include "UsageModel/AppPaths.h"

namespace Report {

namespace {

namespace fs = std::filesystem;
using State = UsageGauge::StatusLineInstaller::State;

} // namespace

fs::path helperBeside(const char* argv0) {
    std::error_code error;
    // Where the system tells it: the name may have been found by way of PATH.
    fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error) program = fs::canonical(argv0, error);
    const fs::path helper = program.parent_path() / UsageModel::AppPaths::shimName;
    return fs::exists(helper, error) ? helper : fs::path();
}

std::string helperStatus(const UsageGauge::StatusLineInstaller& installer) {
    switch (installer.state()) {
    case State::installed: return "installed: " + installer.shimDestURL().native();
    case State::notInstalled: return "not installed; without it the official limits are not known";
    case State::conflict: break;
    }
    return "conflict: the status line in " + installer.settingsURL.native() +
           " no longer points at the helper; install it again to set that right";
}

std::string installHelper(const UsageGauge::StatusLineInstaller& installer, const fs::path& helper,
                          UsageModel::Date now) {
    if (helper.empty())
        throw std::runtime_error("no " + std::string(UsageModel::AppPaths::shimName) + " beside this program");
    installer.install(helper, now);
    return "The helper is installed. The official limits will be known once Claude Code draws its status line.";
}

std::string removeHelper(const UsageGauge::StatusLineInstaller& installer) {
    if (installer.state() == State::notInstalled) return "The helper was not installed; nothing was changed.";
    installer.uninstall();
    return "The helper is removed. The status line is what it was before.";
}

} // namespace Report
