#include <QCoreApplication>

#include <gtest/gtest.h>

// What waits on the main loop needs one, but no display.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
