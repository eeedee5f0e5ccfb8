#include "base/Published.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace kestrune {

TEST(Published, anObserverIsToldAfterTheValueChanged) {
    Published<int> field{1};
    int seen = 0;
    const auto subscription = field.observe([&] { seen = field.get(); });
    field.set(2);
    EXPECT_EQ(seen, 2);
}

TEST(Published, settingAnEqualValueTellsNobody) {
    Published<std::string> field{"same"};
    int calls = 0;
    const auto subscription = field.observe([&] { ++calls; });
    field.set("same");
    EXPECT_EQ(calls, 0);
}

TEST(Published, aSubscriptionThatWentAwayIsNotToldAnyMore) {
    Published<int> field{0};
    int calls = 0;
    {
        const auto subscription = field.observe([&] { ++calls; });
        field.set(1);
    }
    field.set(2);
    EXPECT_EQ(calls, 1);
}

TEST(Published, everyObserverIsToldInTheOrderOfConnecting) {
    Published<int> field{0};
    std::string order;
    const auto first = field.observe([&] { order += "a"; });
    const auto second = field.observe([&] { order += "b"; });
    field.set(1);
    EXPECT_EQ(order, "ab");
}

TEST(Signal, anObserverDisconnectedWhileTellingIsNotToldAnyMore) {
    Signal signal;
    int calls = 0;
    std::optional<Subscription> second;
    const auto first = signal.connect([&] { second.reset(); });
    second = signal.connect([&] { ++calls; });
    signal.emit();
    EXPECT_EQ(calls, 0);
}

TEST(Signal, anObserverMayConnectAnotherWhileBeingTold) {
    Signal signal;
    int calls = 0;
    std::optional<Subscription> added;
    const auto first = signal.connect([&] {
        if (!added) {
            added = signal.connect([&] { ++calls; });
        }
    });
    signal.emit();
    EXPECT_EQ(calls, 0);
    signal.emit();
    EXPECT_EQ(calls, 1);
}

TEST(Published, anObserverMaySetTheValueAgain) {
    Published<int> field{0};
    const auto subscription = field.observe([&] {
        if (field.get() < 3) {
            field.set(field.get() + 1);
        }
    });
    field.set(1);
    EXPECT_EQ(field.get(), 3);
}

}  // namespace kestrune
