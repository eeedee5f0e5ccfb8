#include "platform/macos/MacMemoryPressure.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/platform/macos/fake_darwin/FakeDispatch.h"

namespace kestrune {
namespace {

class MacMemoryPressureTest : public testing::Test {
protected:
    void SetUp() override { FakeDispatch::reset(); }

    void TearDown() override {
        source.reset();
        FakeDispatch::runMainQueue();
        EXPECT_EQ(FakeDispatch::sources(), 0U);
    }

    void start() {
        source->start([this](PressureLevels levels) { told.push_back(levels); });
    }

    static std::size_t tell(std::uintptr_t event) {
        return FakeDispatch::tell(DISPATCH_SOURCE_TYPE_MEMORYPRESSURE, 0, event);
    }

    std::unique_ptr<MacMemoryPressure> source = std::make_unique<MacMemoryPressure>();
    std::vector<PressureLevels> told;
};

TEST_F(MacMemoryPressureTest, eachLevelIsToldOnTheMainQueue) {
    start();
    for (const int level :
         {DISPATCH_MEMORYPRESSURE_NORMAL, DISPATCH_MEMORYPRESSURE_WARN, DISPATCH_MEMORYPRESSURE_CRITICAL}) {
        ASSERT_EQ(tell(static_cast<std::uintptr_t>(level)), 1U);
        const std::size_t before = told.size();
        FakeDispatch::runMainQueue();
        EXPECT_EQ(told.size(), before + 1);
    }
    EXPECT_EQ(told, (std::vector<PressureLevels>{{true, false, false}, {false, true, false}, {false, false, true}}));
}

TEST_F(MacMemoryPressureTest, eventMayCarrySeveralLevels) {
    start();
    tell(DISPATCH_MEMORYPRESSURE_WARN);
    tell(DISPATCH_MEMORYPRESSURE_CRITICAL);
    FakeDispatch::runMainQueue();
    EXPECT_EQ(told, (std::vector<PressureLevels>{{false, true, true}}));
}

TEST_F(MacMemoryPressureTest, nothingIsToldBeforeTheFirstEvent) {
    start();
    FakeDispatch::runMainQueue();
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(FakeDispatch::sources(), 1U);
}

TEST_F(MacMemoryPressureTest, nothingIsWatchedBeforeTheStart) {
    EXPECT_EQ(FakeDispatch::sources(), 0U);
}

TEST_F(MacMemoryPressureTest, systemThatMakesNoSourceTellsNothing) {
    FakeDispatch::refuseSources(true);
    start();
    EXPECT_EQ(tell(DISPATCH_MEMORYPRESSURE_CRITICAL), 0U);
    FakeDispatch::runMainQueue();
    EXPECT_TRUE(told.empty());
}

TEST_F(MacMemoryPressureTest, eventThatIsQueuedWhenTheObjectGoesIsNotTold) {
    start();
    tell(DISPATCH_MEMORYPRESSURE_CRITICAL);
    source.reset();
    EXPECT_EQ(tell(DISPATCH_MEMORYPRESSURE_WARN), 0U);
    FakeDispatch::runMainQueue();
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(FakeDispatch::sources(), 0U);
}

TEST_F(MacMemoryPressureTest, handlerMayEndTheObjectThatCallsIt) {
    const auto owned = std::make_shared<int>(1);
    source->start([this, owned](PressureLevels levels) {
        source.reset();
        told.push_back(levels);
        EXPECT_EQ(*owned, 1);
    });
    tell(DISPATCH_MEMORYPRESSURE_NORMAL);
    FakeDispatch::runMainQueue();
    EXPECT_EQ(told.size(), 1U);
    EXPECT_EQ(owned.use_count(), 1);
    EXPECT_EQ(FakeDispatch::sources(), 0U);
}

TEST_F(MacMemoryPressureTest, whatTheHandlerHoldsGoesWithTheSource) {
    const auto owned = std::make_shared<int>(1);
    source->start([owned](PressureLevels) {});
    EXPECT_EQ(owned.use_count(), 2);
    source.reset();
    FakeDispatch::runMainQueue();
    EXPECT_EQ(owned.use_count(), 1);
}

}  // namespace
}  // namespace kestrune
