// Apart from the other paths: a static program must not link the user database.

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

#include "UsageModel/AppPaths.h"

namespace UsageModel {

std::filesystem::path AppPaths::currentHome() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? std::filesystem::path(user->pw_dir) : std::filesystem::path();
}

} // namespace UsageModel
