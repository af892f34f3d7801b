#pragma once

#include <filesystem>

#include "HarrowlaneApp/Platform/Display/PrivateScreen.h"
#include "HarrowlaneApp/Platform/Linux/PanelSide.h"

namespace Bench {

/// A screen, and a session bus, that nobody else uses.
class PrivateDesktop {
public:
    [[nodiscard]] HarrowlaneApp::PrivateBus& bus() { return bus_; }

    /// What a program's environment needs in order to run there, with that home.
    [[nodiscard]] QHash<QString, QString> variables(const std::filesystem::path& home) const {
        const QString folder = QString::fromStdString(home.string());
        return {{"DISPLAY", screen_.display()},
                {"DBUS_SESSION_BUS_ADDRESS", bus_.address()},
                {"QT_QPA_PLATFORM", "xcb"},
                {"HOME", folder},
                {"XDG_CONFIG_HOME", folder + "/config"},
                {"XDG_RUNTIME_DIR", folder}};
    }

    /// How a program is started there, with that home.
    [[nodiscard]] HarrowlaneApp::ChildProcess::Start
    startOf(const std::string& program, const std::filesystem::path& home, const QStringList& arguments = {}) const {
        return {.program = QString::fromStdString(program), .arguments = arguments, .variables = variables(home)};
    }

    /// Moves this process there.
    void enter(const std::filesystem::path& home) const {
        const auto wanted = variables(home);
        for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
            qputenv(it.key().toLatin1().constData(), it.value().toUtf8());
        }
    }

private:
    HarrowlaneApp::PrivateScreen screen_;
    HarrowlaneApp::PrivateBus bus_;
};

} // namespace Bench
