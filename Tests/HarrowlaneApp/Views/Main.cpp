#include <QApplication>

#include <gtest/gtest.h>

#include "HarrowlaneApp/PrivateHome.h"
#include "HarrowlaneApp/Views/Accessibility.h"

// Everything here is shown off the screen: no test may need a display, or open one.
int main(int argc, char** argv) {
    const HarrowlaneApp::PrivateHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    HarrowlaneApp::installAccessibility();
    return RUN_ALL_TESTS();
}
