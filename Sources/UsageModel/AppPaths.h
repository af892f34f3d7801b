#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace UsageModel {

/// Where everything of this program lies on the disk, computed from a home folder. The program and the status line
/// helper agree on the gauge file through this alone.
class AppPaths {
public:
    static constexpr std::string_view directoryName = "Brindlewick";
    static constexpr std::string_view shimName = "brindlewick-statusline";
    /// The shim's names under earlier names of the product.
    static constexpr std::array<std::string_view, 2> legacyShimNames{"ferrowind-statusline", "harrow-lane-statusline"};

    /// The current user's home folder: `HOME`, or the user database's where that is not set, without links where it is
    /// there. Empty where neither is set.
    [[nodiscard]] static std::filesystem::path currentHome();

    explicit AppPaths(std::filesystem::path home = currentHome()) : home_(std::move(home)) {}

    [[nodiscard]] const std::filesystem::path& home() const { return home_; }
    /// The folder of the program.
    [[nodiscard]] std::filesystem::path support() const;
    [[nodiscard]] std::filesystem::path gaugeFile() const;
    [[nodiscard]] std::filesystem::path database() const;
    [[nodiscard]] std::filesystem::path notificationState() const;
    [[nodiscard]] std::filesystem::path installedShim() const;
    /// The folders of earlier names of the product, oldest first. Nothing is carried over from them.
    [[nodiscard]] std::vector<std::filesystem::path> legacySupport() const;
    [[nodiscard]] bool hasLegacySupport() const;

    /// Claude Code's own: the session logs, and the settings file.
    [[nodiscard]] std::filesystem::path sessionLogs() const;
    [[nodiscard]] std::filesystem::path claudeSettings() const;

    /// Whether a status line command is ours: it names the shim or one of its earlier names anywhere. A user's own
    /// script whose name contains one of them counts as ours. An absent command does not.
    [[nodiscard]] static bool isOurShim(std::optional<std::string_view> command);

private:
    std::filesystem::path home_;
};

namespace GaugePaths {

/// The gauge file, under the name that the gauge side uses.
[[nodiscard]] inline std::filesystem::path gaugeFile(const AppPaths& paths) {
    return paths.gaugeFile();
}

} // namespace GaugePaths

} // namespace UsageModel
