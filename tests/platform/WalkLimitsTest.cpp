#include "platform/WalkLimits.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace kestrune {
namespace {

TEST(WalkLimits, severalThreadsAreGrantedExactlyTheLimitTogether) {
    WalkRequest request;
    request.entryLimit = 10007;
    WalkLimits limits(request);
    std::atomic<std::size_t> granted{0};
    std::vector<std::thread> threads;
    for (int worker = 0; worker < 4; ++worker) {
        threads.emplace_back([&limits, &granted] {
            while (const std::size_t now = limits.grant(7)) {
                granted += now;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(10007U, granted);
    EXPECT_EQ(WalkEnd::entryLimit, limits.end());
}

TEST(WalkLimits, whatWasGrantedIsAbandonedOnlyWhenCancelled) {
    WalkRequest request;
    bool cancelled = false;
    bool timeIsUp = true;
    request.cancelled = [&cancelled] { return cancelled; };
    request.timeIsUp = [&timeIsUp] { return timeIsUp; };
    WalkLimits limits(request);
    EXPECT_EQ(0U, limits.grant(1));
    EXPECT_TRUE(limits.isOver());
    EXPECT_FALSE(limits.isAbandoned());
    EXPECT_EQ(WalkEnd::timeLimit, limits.end());
    cancelled = true;
    limits.askWhetherCancelled();
    EXPECT_TRUE(limits.isAbandoned());
    EXPECT_EQ(WalkEnd::cancelled, limits.end());
}

TEST(WalkLimits, aFolderThatWaitsAsksForTimeAndIsNoEntry) {
    WalkRequest request;
    request.entryLimit = 1;
    bool timeIsUp = false;
    request.timeIsUp = [&timeIsUp] { return timeIsUp; };
    WalkLimits limits(request);
    limits.askBeforeFolder();
    EXPECT_EQ(1U, limits.grant(1));
    limits.askBeforeFolder();
    EXPECT_FALSE(limits.isOver());
    timeIsUp = true;
    limits.askBeforeFolder();
    EXPECT_EQ(WalkEnd::timeLimit, limits.end());
}

TEST(WalkLimits, entriesComeBeforeTimeAndTimeIsNotAskedForThen) {
    WalkRequest request;
    request.entryLimit = 5;
    int asked = 0;
    request.timeIsUp = [&asked] { return ++asked > 1; };
    WalkLimits limits(request);
    EXPECT_EQ(5U, limits.grant(9));
    EXPECT_EQ(0U, limits.grant(4));
    EXPECT_EQ(WalkEnd::entryLimit, limits.end());
    EXPECT_EQ(1, asked);
}

}  // namespace
}  // namespace kestrune
