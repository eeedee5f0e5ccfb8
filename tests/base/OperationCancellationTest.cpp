#include "base/OperationCancellation.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace kestrune {

TEST(OperationCancellation, startsNotCancelled) {
    EXPECT_FALSE(OperationCancellation().isCancelled());
}

TEST(OperationCancellation, cancelHoldsUntilReset) {
    OperationCancellation flag;
    flag.cancel();
    flag.cancel();
    EXPECT_TRUE(flag.isCancelled());
    flag.reset();
    EXPECT_FALSE(flag.isCancelled());
}

TEST(OperationCancellation, aWorkerSeesTheFlagOfTheOneWhoShares) {
    const auto flag = std::make_shared<OperationCancellation>();
    std::thread worker([flag] {
        while (!flag->isCancelled()) {
            std::this_thread::yield();
        }
    });
    flag->cancel();
    worker.join();
    EXPECT_TRUE(flag->isCancelled());
}

}  // namespace kestrune
