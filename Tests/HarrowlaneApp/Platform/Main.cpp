#include <filesystem>

#include <QApplication>

#include <gtest/gtest.h>

#include "Support/TemporaryFolder.h"

// These tests need no display, and may not open one; nor may they meet the desktop or the settings of whoever runs
// them.
int main(int argc, char** argv) {
    const TestSupport::TemporaryFolder home;
    qputenv("HOME", QByteArray::fromStdString(home.path().string()));
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((home / "config").string()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
