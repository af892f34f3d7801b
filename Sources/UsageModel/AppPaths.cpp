#include "UsageModel/AppPaths.h"

#include <algorithm>
#include <system_error>

namespace UsageModel {

namespace {

namespace fs = std::filesystem;

fs::path supportFolder(const fs::path& home, std::string_view name) {
    return home / "Library" / "Application Support" / name;
}

} // namespace

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
