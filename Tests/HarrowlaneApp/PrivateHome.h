#pragma once

#include <QByteArray>

#include "Support/TemporaryFolder.h"

namespace HarrowlaneApp {

/// Moves this process into a home of its own, where it meets neither the settings nor the bus of whoever runs it. To be
/// made before the application.
class PrivateHome {
public:
    PrivateHome() {
        qputenv("HOME", QByteArray::fromStdString(folder_.path().string()));
        qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder_.path().string()));
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((folder_ / "config").string()));
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    }

private:
    TestSupport::TemporaryFolder folder_;
};

} // namespace HarrowlaneApp
