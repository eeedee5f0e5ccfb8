#include "platform/ArgumentVector.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

using namespace std::string_literals;

TEST(ArgumentVectorTest, theProgramComesFirstAndANullPointerLast) {
    const std::string program = "/bin/echo";
    const std::vector<std::string> arguments{"a b", ""};
    const auto vector = argumentVector(program, arguments);
    ASSERT_TRUE(vector);
    ASSERT_EQ(vector->size(), 4U);
    EXPECT_STREQ((*vector)[0], "/bin/echo");
    EXPECT_STREQ((*vector)[1], "a b");
    EXPECT_STREQ((*vector)[2], "");
    EXPECT_EQ((*vector)[3], nullptr);
}

TEST(ArgumentVectorTest, aTextThatWouldEndEarlyMakesNone) {
    EXPECT_EQ(argumentVector("/bin/echo\0/x"s, {}), std::nullopt);
    EXPECT_EQ(argumentVector("/bin/echo", {"a", "b\0"s}), std::nullopt);
}

}  // namespace
}  // namespace kestrune
