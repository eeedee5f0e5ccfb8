#include <gtest/gtest.h>

#include <QCoreApplication>

#include <csignal>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // As in the programs: a write that fails is an error to report, not an end.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
