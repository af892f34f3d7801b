#include <QApplication>

#include <gtest/gtest.h>

#include "HarrowlaneApp/PrivateHome.h"

// No test here may need a display, or open one.
int main(int argc, char** argv) {
    const HarrowlaneApp::PrivateHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
