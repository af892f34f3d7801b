#include <QGuiApplication>

#include <gtest/gtest.h>

#include "HarrowlaneApp/PrivateHome.h"

// Everything here draws into images: no test may need a display, or open one.
int main(int argc, char** argv) {
    const HarrowlaneApp::PrivateHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
