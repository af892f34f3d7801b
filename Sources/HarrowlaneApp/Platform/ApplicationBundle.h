#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace HarrowlaneApp {

/// A program with all that belongs to it in one folder: NAME.app/Contents with MacOS (the executable), Helpers,
/// Resources and Info.plist.
struct ApplicationBundle {
    std::string identifier;
    /// The folder Contents.
    std::filesystem::path contents;

    /// The bundle of an executable, whose path has no links in it. Absent where it does not lie in such a folder, or
    /// Info.plist names no identifier.
    [[nodiscard]] static std::optional<ApplicationBundle> containing(const std::filesystem::path& executable);
    /// The bundle of this process. Wants an application object.
    [[nodiscard]] static std::optional<ApplicationBundle> ofThisProcess();

    friend bool operator==(const ApplicationBundle&, const ApplicationBundle&) = default;
};

} // namespace HarrowlaneApp
