#include "platform/linux/LinuxTerminationRequests.h"

#include <gtest/gtest.h>

#include <QTest>

#include <cerrno>
#include <csignal>

namespace kestrune {

TEST(LinuxTerminationRequests, eachSignalReachesTheEventLoop) {
    int calls = 0;
    LinuxTerminationRequests requests;
    requests.start([&] { ++calls; });
    int expected = 0;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        std::raise(signal);
        EXPECT_EQ(calls, expected) << "never from inside the signal handler";
        ++expected;
        EXPECT_TRUE(QTest::qWaitFor([&] { return calls == expected; }));
    }
}

TEST(LinuxTerminationRequests, theInterruptedCodeKeepsItsError) {
    constexpr int moreThanAPipeHolds = 70'000;
    LinuxTerminationRequests requests;
    requests.start([] {});
    errno = ENOENT;
    for (int i = 0; i < moreThanAPipeHolds; ++i) {
        std::raise(SIGTERM);
    }
    EXPECT_EQ(errno, ENOENT);
}

TEST(LinuxTerminationRequests, theOldDispositionReturnsWithItsEnd) {
    {
        LinuxTerminationRequests requests;
        requests.start([] {});
    }
    EXPECT_EXIT(std::raise(SIGTERM), ::testing::KilledBySignal(SIGTERM), "");
}

}  // namespace kestrune
