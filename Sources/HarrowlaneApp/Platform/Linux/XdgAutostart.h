#pragma once

#include <filesystem>

#include "HarrowlaneApp/Platform/Autostart.h"

namespace HarrowlaneApp {

/// Autostart by a desktop entry in the user's autostart folder. An entry that the desktop's own settings have switched
/// off counts as not enabled.
class XdgAutostart : public Autostart {
public:
    struct Place {
        /// The folder of autostart entries; made where it is missing.
        std::filesystem::path folder;
        /// What is to be started.
        std::filesystem::path program;
    };

    explicit XdgAutostart(Place place);
    /// The user's folder, and the program of this process. Wants an application object.
    [[nodiscard]] static Place usualPlace();

    [[nodiscard]] bool isAvailable() const override { return true; }
    [[nodiscard]] bool isEnabled() const override;
    void setEnabled(bool enabled) override;

private:
    [[nodiscard]] std::filesystem::path entry() const;

    Place place_;
};

} // namespace HarrowlaneApp
