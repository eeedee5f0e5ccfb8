#include "update/VersionNumber.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrune {

namespace {

VersionNumber version(std::string_view text) {
    return VersionNumber::parse(text).value();
}

}  // namespace

TEST(VersionNumber, numbersAreComparedAsNumbers) {
    EXPECT_GT(version("2.10"), version("2.9"));
    EXPECT_GT(version("10"), version("9.9.9"));
    EXPECT_LT(version("2.1.0"), version("2.1.1"));
    EXPECT_GT(version("3"), version("2.99.99"));
    EXPECT_LT(version("0.9"), version("1"));
}

TEST(VersionNumber, missingNumbersAreZero) {
    EXPECT_EQ(version("2.1"), version("2.1.0"));
    EXPECT_EQ(version("2.1"), version("2.1.0.0.00"));
    EXPECT_EQ(version("0"), version("0.0"));
    EXPECT_LT(version("2.1"), version("2.1.0.1"));
    EXPECT_GT(version("2.0.1"), version("2"));
}

TEST(VersionNumber, leadingZerosChangeNothing) {
    EXPECT_EQ(version("02.001"), version("2.1"));
    EXPECT_LT(version("2.009"), version("2.10"));
}

TEST(VersionNumber, numbersOfAnyLengthAreComparedWithoutOverflow) {
    EXPECT_GT(version("18446744073709551616"), version("18446744073709551615"));
    EXPECT_GT(version("18446744073709551616"), version("1"));
    const std::string nines(100'000, '9');
    EXPECT_GT(version("1" + std::string(100'000, '0')), version(nines));
    EXPECT_EQ(version("2." + nines), version("2." + nines));
}

TEST(VersionNumber, anythingButDigitsAndDotsIsNoVersion) {
    for (const std::string_view text : {"", ".", "2.", ".2", "2..1", "v2", "2.1b", "2.1-rc1", "+2", "-2", " 2", "2 ",
                                        "2.1\n", "0x2", "2,1", "２.1", "1e3"}) {
        EXPECT_EQ(VersionNumber::parse(text), std::nullopt) << text;
    }
    EXPECT_EQ(VersionNumber::parse(std::string_view("2\0", 2)), std::nullopt);
}

}  // namespace kestrune
