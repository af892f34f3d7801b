#include <QApplication>
#include <QLoggingCategory>

#include <gtest/gtest.h>
#include <malloc.h>

#include "HarrowlaneApp/PrivateHome.h"

// The program lives on a screen that nobody sees, on a bus of its own and in a home of its own.
int main(int argc, char** argv) {
    // One arena, or the figures of the heap would tell of the main thread's alone.
    mallopt(M_ARENA_MAX, 1);
    const HarrowlaneApp::PrivateHome home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The screen that nobody sees tells at each opening of a window what it cannot do.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false\nqt.accessibility.core.warning=false"));
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
