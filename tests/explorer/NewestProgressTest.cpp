#include "explorer/NewestProgress.h"

#include <gtest/gtest.h>

#include <thread>

namespace kestrune {

namespace {

DiskExplorerProgress stepAt(std::int64_t entries) {
    DiskExplorerProgress step;
    step.found.inspectedFiles = entries;
    return step;
}

}  // namespace

TEST(NewestProgress, nothingWaitsAtFirst) {
    EXPECT_EQ(NewestProgress().take(), std::nullopt);
}

TEST(NewestProgress, onlyTheFirstStepOfARowNeedsSomeoneToBeTold) {
    NewestProgress newest;
    EXPECT_TRUE(newest.put(stepAt(1)));
    EXPECT_FALSE(newest.put(stepAt(2)));
    EXPECT_FALSE(newest.put(stepAt(3)));
}

TEST(NewestProgress, theNewestStepIsTakenOnce) {
    NewestProgress newest;
    static_cast<void>(newest.put(stepAt(1)));
    static_cast<void>(newest.put(stepAt(2)));
    EXPECT_EQ(newest.take(), stepAt(2));
    EXPECT_EQ(newest.take(), std::nullopt);
    EXPECT_TRUE(newest.put(stepAt(3)));
}

TEST(NewestProgress, whoeverIsToldFindsAStepWhileOthersArrive) {
    NewestProgress newest;
    std::int64_t last = 0;
    std::thread scanning([&newest] {
        for (std::int64_t entries = 1; entries <= 1000; ++entries) {
            static_cast<void>(newest.put(stepAt(entries)));
        }
    });
    while (last < 1000) {
        if (const auto step = newest.take()) {
            EXPECT_GT(step->found.inspectedFiles, last);
            last = step->found.inspectedFiles;
        } else {
            std::this_thread::yield();
        }
    }
    scanning.join();
    EXPECT_EQ(newest.take(), std::nullopt);
}

}  // namespace kestrune
