#include "app/QtMainQueue.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QThread>

#include <thread>
#include <vector>

namespace kestrune {

TEST(QtMainQueue, runsPostedJobsInOrderAndOnlyFromTheEventLoop) {
    QtMainQueue queue;
    std::vector<int> order;
    queue.post([&] { order.push_back(1); });
    queue.post([&] { order.push_back(2); });
    EXPECT_TRUE(order.empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST(QtMainQueue, runsJobsFromOtherThreadsOnTheMainThread) {
    QtMainQueue queue;
    QThread* ranOn = nullptr;
    std::thread([&] { queue.post([&] { ranOn = QThread::currentThread(); }); }).join();
    QCoreApplication::processEvents();
    EXPECT_EQ(ranOn, QThread::currentThread());
}

TEST(QtMainQueue, aDelayedJobRunsOnce) {
    QtMainQueue queue;
    int runs = 0;
    const auto timer = queue.after(std::chrono::milliseconds{1}, [&] { ++runs; });
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return runs == 1; }));
    EXPECT_FALSE(QTest::qWaitFor([&] { return runs > 1; }, 20));
}

TEST(QtMainQueue, aRepeatedJobRunsUntilItsTimerIsGone) {
    QtMainQueue queue;
    int runs = 0;
    std::unique_ptr<Timer> timer;
    timer = queue.every(std::chrono::milliseconds{1}, [&] {
        ++runs;
        if (runs == 3) {
            timer.reset();
        }
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return runs == 3; }));
    EXPECT_FALSE(QTest::qWaitFor([&] { return runs > 3; }, 20));
}

TEST(QtMainQueue, aJobWhoseTimerIsGoneNeverRuns) {
    QtMainQueue queue;
    int runs = 0;
    queue.after(std::chrono::milliseconds{1}, [&] { ++runs; }).reset();
    EXPECT_FALSE(QTest::qWaitFor([&] { return runs > 0; }, 20));
}

}  // namespace kestrune
