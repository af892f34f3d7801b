#include <QApplication>
#include <QLoggingCategory>

#include <gtest/gtest.h>
#include <malloc.h>

#include "Support/TemporaryFolder.h"

// The program lives on a screen that nobody sees, on a bus of its own and in a home of its own.
int main(int argc, char** argv) {
    // One arena, or the figures of the heap would tell of the main thread's alone.
    mallopt(M_ARENA_MAX, 1);
    const TestSupport::TemporaryFolder home;
    qputenv("HOME", QByteArray::fromStdString(home.path().string()));
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((home / "config").string()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The screen that nobody sees tells at each opening of a window what it cannot do.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false\nqt.accessibility.core.warning=false"));
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
