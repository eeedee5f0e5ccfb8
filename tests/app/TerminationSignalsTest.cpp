#include "platform/linux/TerminationSignals.h"

#include <gtest/gtest.h>

#include <QTest>

#include <cerrno>
#include <csignal>

namespace kestrune {

TEST(TerminationSignals, eachSignalReachesTheEventLoop) {
    int calls = 0;
    const TerminationSignals signals([&] { ++calls; });
    int expected = 0;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        std::raise(signal);
        EXPECT_EQ(calls, expected) << "never from inside the signal handler";
        ++expected;
        EXPECT_TRUE(QTest::qWaitFor([&] { return calls == expected; }));
    }
}

TEST(TerminationSignals, theInterruptedCodeKeepsItsError) {
    constexpr int moreThanAPipeHolds = 70'000;
    const TerminationSignals signals([] {});
    errno = ENOENT;
    for (int i = 0; i < moreThanAPipeHolds; ++i) {
        std::raise(SIGTERM);
    }
    EXPECT_EQ(errno, ENOENT);
}

TEST(TerminationSignals, theOldDispositionReturnsWithItsEnd) {
    {
        const TerminationSignals signals([] {});
    }
    EXPECT_EXIT(std::raise(SIGTERM), ::testing::KilledBySignal(SIGTERM), "");
}

}  // namespace kestrune
