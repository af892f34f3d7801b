#pragma once

#include <filesystem>
#include <stdexcept>

#include "HarrowlaneApp/Platform/Linux/PanelSide.h"

namespace Bench {

/// A screen, and a session bus, that nobody else uses.
class PrivateDesktop {
public:
    PrivateDesktop()
        : screen_({.program = "Xvfb",
                   .arguments = {"-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp", "-noreset"},
                   .variables = {}}),
          display_(':' + screen_.firstLine()) {
        if (display_.size() < 2) throw std::runtime_error("Xvfb does not start; is it installed?");
    }

    [[nodiscard]] HarrowlaneApp::PrivateBus& bus() { return bus_; }

    /// What a program's environment needs in order to run there, with that home.
    [[nodiscard]] QHash<QString, QString> variables(const std::filesystem::path& home) const {
        const QString folder = QString::fromStdString(home.string());
        return {{"DISPLAY", display_}, {"DBUS_SESSION_BUS_ADDRESS", bus_.address()}, {"QT_QPA_PLATFORM", "xcb"},
                {"HOME", folder},      {"XDG_CONFIG_HOME", folder + "/config"},      {"XDG_RUNTIME_DIR", folder}};
    }

    /// Moves this process there.
    void enter(const std::filesystem::path& home) const {
        const auto wanted = variables(home);
        for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
            qputenv(it.key().toLatin1().constData(), it.value().toUtf8());
        }
    }

private:
    HarrowlaneApp::ChildProcess screen_;
    QString display_;
    HarrowlaneApp::PrivateBus bus_;
};

} // namespace Bench
