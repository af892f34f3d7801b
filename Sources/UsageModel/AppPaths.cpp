#include "UsageModel/AppPaths.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace UsageModel {

namespace {

namespace fs = std::filesystem;

fs::path supportFolder(const fs::path& home, std::string_view name) {
    return home / "Library" / "Application Support" / name;
}

} // namespace

fs::path AppPaths::currentHome() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
    const passwd* user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? fs::path(user->pw_dir) : fs::path();
}

fs::path AppPaths::support() const {
    return supportFolder(home_, directoryName);
}

fs::path AppPaths::gaugeFile() const {
    return support() / "gauge.json";
}

fs::path AppPaths::database() const {
    return support() / "usage.db";
}

fs::path AppPaths::notificationState() const {
    return support() / "notification-state.json";
}

fs::path AppPaths::installedShim() const {
    return support() / "bin" / shimName;
}

std::vector<fs::path> AppPaths::legacySupport() const {
    return {supportFolder(home_, "Ferrowind"), supportFolder(home_, "Harrowlane")};
}

bool AppPaths::hasLegacySupport() const {
    return std::ranges::any_of(legacySupport(), [](const fs::path& folder) {
        std::error_code ignored;
        return fs::is_directory(folder, ignored);
    });
}

fs::path AppPaths::sessionLogs() const {
    return home_ / ".claude" / "projects";
}

fs::path AppPaths::claudeSettings() const {
    return home_ / ".claude" / "settings.json";
}

bool AppPaths::isOurShim(std::optional<std::string_view> command) {
    if (!command) return false;
    const auto named = [&](std::string_view name) { return command->find(name) != std::string_view::npos; };
    return named(shimName) || std::ranges::any_of(legacyShimNames, named);
}

} // namespace UsageModel
