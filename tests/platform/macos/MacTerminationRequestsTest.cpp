#include "platform/macos/MacTerminationRequests.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/platform/macos/fake_darwin/FakeDispatch.h"

namespace kestrune {
namespace {

constexpr std::array requests{SIGTERM, SIGINT, SIGHUP};

class MacTerminationRequestsTest : public testing::Test {
protected:
    void SetUp() override { FakeDispatch::reset(); }

    void TearDown() override {
        termination.reset();
        FakeDispatch::runMainQueue();
        EXPECT_EQ(FakeDispatch::sources(), 0U);
    }

    void start() {
        termination->start([this] { ++asked; });
    }

    static std::size_t tell(int signal, std::uintptr_t times = 1) {
        return FakeDispatch::tell(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<std::uintptr_t>(signal), times);
    }

    static void (*action(int signal))(int) {
        struct sigaction current {};

        EXPECT_EQ(sigaction(signal, nullptr, &current), 0);
        return current.sa_handler;
    }

    std::unique_ptr<MacTerminationRequests> termination = std::make_unique<MacTerminationRequests>();
    int asked = 0;
};

TEST_F(MacTerminationRequestsTest, eachSignalIsOneCallOnTheMainQueue) {
    start();
    for (const int signal : requests) {
        EXPECT_EQ(tell(signal), 1U) << signal;
    }
    EXPECT_EQ(asked, 0);
    FakeDispatch::runMainQueue();
    EXPECT_EQ(asked, 3);
}

TEST_F(MacTerminationRequestsTest, oneSignalThatCameSeveralTimesIsOneCall) {
    start();
    tell(SIGTERM, 4);
    FakeDispatch::runMainQueue();
    EXPECT_EQ(asked, 1);
}

TEST_F(MacTerminationRequestsTest, signalsDoNotEndTheProcessWhileTheObjectLives) {
    start();
    for (const int signal : requests) {
        ASSERT_NE(action(signal), SIG_DFL) << signal;
        EXPECT_EQ(raise(signal), 0);
    }
    EXPECT_EQ(asked, 0);
}

TEST_F(MacTerminationRequestsTest, programsThatAreStartedDoNotInheritAnIgnoredSignal) {
    start();
    for (const int signal : requests) {
        EXPECT_NE(action(signal), SIG_IGN) << signal;
    }
}

TEST_F(MacTerminationRequestsTest, signalsGetTheirDefaultActionBack) {
    start();
    termination.reset();
    for (const int signal : requests) {
        EXPECT_EQ(action(signal), SIG_DFL) << signal;
        EXPECT_EQ(tell(signal), 0U) << signal;
    }
}

TEST_F(MacTerminationRequestsTest, signalsKeepTheirDefaultActionWhereNoSourceCanBeMade) {
    FakeDispatch::refuseSources(true);
    start();
    for (const int signal : requests) {
        EXPECT_EQ(action(signal), SIG_DFL) << signal;
    }
    EXPECT_EQ(FakeDispatch::sources(), 0U);
}

TEST_F(MacTerminationRequestsTest, requestThatIsQueuedWhenTheObjectGoesIsDropped) {
    start();
    tell(SIGTERM);
    termination.reset();
    FakeDispatch::runMainQueue();
    EXPECT_EQ(asked, 0);
}

TEST_F(MacTerminationRequestsTest, objectThatWasNeverStartedLeavesTheSignalsAlone) {
    termination.reset();
    for (const int signal : requests) {
        EXPECT_EQ(action(signal), SIG_DFL) << signal;
    }
}

}  // namespace
}  // namespace kestrune
