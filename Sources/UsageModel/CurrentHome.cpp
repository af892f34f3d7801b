// Apart from the other paths: a static program must not link the user database.

#include <cstdlib>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

#include "UsageModel/AppPaths.h"

namespace UsageModel {

namespace {

std::filesystem::path namedHome() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? std::filesystem::path(user->pw_dir) : std::filesystem::path();
}

} // namespace

// One spelling for one folder: the database knows each log by its path, and would count it again under another.
std::filesystem::path AppPaths::currentHome() {
    const std::filesystem::path named = namedHome();
    std::error_code error;
    std::filesystem::path canonical = std::filesystem::canonical(named, error);
    return error ? named : canonical;
}

} // namespace UsageModel
