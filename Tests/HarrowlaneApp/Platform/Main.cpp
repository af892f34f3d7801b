#include <QApplication>

#include <gtest/gtest.h>

#include "HarrowlaneApp/PrivateHome.h"

// These tests need no display, and may not open one; nor may they meet the desktop or the settings of whoever runs
// them.
int main(int argc, char** argv) {
    const HarrowlaneApp::PrivateHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
