#include <QApplication>

#include <gtest/gtest.h>

#include "HarrowlaneApp/Platform/Display/PrivateScreen.h"
#include "HarrowlaneApp/PrivateHome.h"

// These tests have a display of their own, with nothing on it but what they start there.
int main(int argc, char** argv) {
    const HarrowlaneApp::PrivateHome home;
    qputenv("QT_QPA_PLATFORM", "xcb");
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();

    const HarrowlaneApp::PrivateScreen screen;
    qputenv("DISPLAY", screen.display().toUtf8());
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
