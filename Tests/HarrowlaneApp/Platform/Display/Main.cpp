#include <cstdio>

#include <QApplication>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/ChildProcess.h"
#include "Support/TemporaryFolder.h"

// These tests have a display of their own, with nothing on it but what they start there.
int main(int argc, char** argv) {
    const TestSupport::TemporaryFolder home;
    qputenv("HOME", QByteArray::fromStdString(home.path().string()));
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString((home / "config").string()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("QT_QPA_PLATFORM", "xcb");
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();

    HarrowlaneApp::ChildProcess display(
        {.program = "Xvfb",
         .arguments = {"-displayfd", "1", "-screen", "0", "1024x768x24", "-nolisten", "tcp", "-noreset"},
         .variables = {}});
    const QString number = display.firstLine();
    if (number.isEmpty()) {
        std::fputs("Xvfb does not start; is it installed?\n", stderr);
        return 1;
    }
    qputenv("DISPLAY", (':' + number).toUtf8());
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
