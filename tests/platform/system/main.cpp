#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Also when the tests are only listed, which the build does without a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Settings of its own, and no notifications.
    qputenv("KESTRUNE_TEST_SUITE", "com.torvandelsyn.kestrune.contracts");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
