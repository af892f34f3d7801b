#pragma once

#include <array>
#include <filesystem>
#include <optional>

#include "UsageGauge/InstallMarker.h"
#include "UsageGauge/SettingsDocument.h"
#include "UsageModel/Date.h"
#include "UsageModel/EnumText.h"

namespace UsageGauge {

/// Points Claude Code's status line at the shim, and back. The settings file that it edits is the user's: it is only
/// ever replaced as a whole, a status line that was there lives on inside the shim's, and all of it can be undone.
/// A plain value without memory: what is installed is read from the settings file and the marker each time.
struct StatusLineInstaller {
    enum class State {
        notInstalled,
        installed,
        /// Installed, but the status line does not point at the shim any more.
        conflict,
    };

    /// Claude Code's settings file.
    std::filesystem::path settingsURL;
    /// The program's folder.
    std::filesystem::path appSupport;

    /// Without arguments those below the current user's home.
    explicit StatusLineInstaller(std::optional<std::filesystem::path> settings = {},
                                 std::optional<std::filesystem::path> support = {});

    /// Where the shim is installed.
    [[nodiscard]] std::filesystem::path shimDestURL() const;
    [[nodiscard]] std::filesystem::path markerFile() const;
    /// The settings as they were before the first install.
    [[nodiscard]] std::filesystem::path backupFile() const;

    /// Never throws but for want of memory: what cannot be read is not there.
    [[nodiscard]] State state() const;

    /// Installs a copy of `shimSource`, or renews an installation, which keeps what the first one remembered, also
    /// where that was cut off before it could write its marker. Settings that are no JSON are replaced; their text
    /// stays in the backup. Throws `std::system_error` or `Json::Error`: the settings are then as they were, or, where
    /// only the marker failed, new.
    void install(const std::filesystem::path& shimSource, UsageModel::Date now) const;

    /// Puts back the status line of before the install, whatever it is now. Does nothing without a marker. The copy of
    /// the shim and the backup stay. Throws as `install` does; it can then be tried again.
    void uninstall() const;

private:
    [[nodiscard]] std::optional<std::string> priorOf(const std::optional<InstallMarker>& old,
                                                     const SettingsDocument& settings) const;
    void writeSettings(const SettingsDocument& settings) const;
    [[nodiscard]] std::optional<InstallMarker> readMarker() const;
    void writeMarker(const InstallMarker& marker) const;
    void copyShim(const std::filesystem::path& shimSource) const;
    void backUpSettings() const;
};

} // namespace UsageGauge

template <>
struct UsageModel::EnumNames<UsageGauge::StatusLineInstaller::State> {
    static constexpr std::array<std::string_view, 3> names{"notInstalled", "installed", "conflict"};
};
