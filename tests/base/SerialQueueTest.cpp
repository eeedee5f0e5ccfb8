#include "base/SerialQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <vector>

namespace kestrune {

TEST(ThreadSerialQueue, jobsRunInTheOrderTheyCame) {
    std::vector<int> order;
    {
        ThreadSerialQueue queue("test");
        for (int i = 0; i < 100; ++i) {
            queue.enqueue([&order, i] { order.push_back(i); });
        }
    }
    ASSERT_EQ(order.size(), 100U);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
    }
}

TEST(ThreadSerialQueue, theDestructorRunsWhatWasEnqueued) {
    std::atomic<int> ran = 0;
    std::promise<void> gate;
    auto opened = gate.get_future();
    auto queue = std::make_unique<ThreadSerialQueue>("test");
    queue->enqueue([&] { opened.wait(); });
    queue->enqueue([&] { ++ran; });
    queue->enqueue([&] { ++ran; });
    EXPECT_EQ(ran, 0);
    gate.set_value();
    queue.reset();
    EXPECT_EQ(ran, 2);
}

TEST(ThreadSerialQueue, jobsNeverRunOnTheCallersThread) {
    std::thread::id worker;
    {
        ThreadSerialQueue queue("test");
        queue.enqueue([&] { worker = std::this_thread::get_id(); });
    }
    EXPECT_NE(worker, std::this_thread::get_id());
    EXPECT_NE(worker, std::thread::id{});
}

TEST(ThreadSerialQueue, aJobMayEnqueueAnother) {
    std::promise<int> answer;
    auto future = answer.get_future();
    ThreadSerialQueue queue("test");
    queue.enqueue([&] { queue.enqueue([&] { answer.set_value(7); }); });
    EXPECT_EQ(future.get(), 7);
}

TEST(ThreadSerialQueue, severalThreadsMayEnqueueAtOnce) {
    int ran = 0;  // touched by the queue's own thread only
    {
        ThreadSerialQueue queue("test");
        std::vector<std::thread> callers;
        for (int caller = 0; caller < 4; ++caller) {
            callers.emplace_back([&] {
                for (int i = 0; i < 250; ++i) {
                    queue.enqueue([&ran] { ++ran; });
                }
            });
        }
        for (auto& caller : callers) {
            caller.join();
        }
    }
    EXPECT_EQ(ran, 1000);
}

TEST(ThreadSerialQueue, aQueueWithoutJobsEndsAtOnceAndKnowsItsLabel) {
    const ThreadSerialQueue queue("com.torvandelsyn.kestrune.actions");
    EXPECT_EQ(queue.label(), "com.torvandelsyn.kestrune.actions");
}

}  // namespace kestrune
