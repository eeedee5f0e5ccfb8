#include "app/SingleInstance.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/app/TestBus.h"

namespace kestrune {

namespace {

std::optional<bool> acquired(SingleInstance& instance) {
    std::optional<bool> answer;
    instance.acquire([&](bool isFirst) { answer = isFirst; });
    static_cast<void>(QTest::qWaitFor([&] { return answer.has_value(); }));
    return answer;
}

}  // namespace

TEST(SingleInstance, theFirstStartRunsAndALaterOneOnlyBringsItForward) {
    int reopened = 0;
    SingleInstance first(TestBus::instance().connect(), [&] { ++reopened; });
    SingleInstance second(TestBus::instance().connect(), [] {});
    EXPECT_EQ(acquired(first), true);
    EXPECT_EQ(reopened, 0);
    EXPECT_EQ(acquired(second), false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return reopened == 1; }));
}

TEST(SingleInstance, withoutABusEveryStartIsTheFirst) {
    SingleInstance instance(QDBusConnection(QStringLiteral("no such connection")), [] {});
    EXPECT_EQ(acquired(instance), true);
}

}  // namespace kestrune
