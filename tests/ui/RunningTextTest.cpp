#include "ui/RunningText.h"

#include <gtest/gtest.h>

#include <string_view>

#include "base/Localized.h"

namespace kestrune {

TEST(RunningText, memoryIsGroupedByThousands) {
    EXPECT_EQ(RunningText::memory(0), QStringLiteral("0 MB"));
    EXPECT_EQ(RunningText::memory(999), QStringLiteral("999 MB"));
    EXPECT_EQ(RunningText::memory(3842), QStringLiteral("3,842 MB"));
    EXPECT_EQ(RunningText::memory(1'234'567), QStringLiteral("1,234,567 MB"));
}

TEST(RunningText, processorShareStandsAsItIsListed) {
    EXPECT_EQ(RunningText::cpu("12.5"), QStringLiteral("12.5% CPU"));
    EXPECT_EQ(RunningText::cpu("1600.0"), QStringLiteral("1600.0% CPU"));
    EXPECT_EQ(RunningText::cpu("3"), QStringLiteral("3% CPU"));
    EXPECT_EQ(RunningText::cpu(""), QString());
}

TEST(RunningText, processorShareHasTheDecimalMarkOfTheLanguage) {
    setTranslation(
        {[](const char* english) { return std::string_view(english) == "%1.%2" ? "%1,%2" : english; }, nullptr});
    const QString shown = RunningText::cpu("12.5");
    setTranslation({});
    EXPECT_EQ(shown, QStringLiteral("12,5% CPU"));
}

TEST(RunningText, portsStandOnOneLineInTheirOrder) {
    EXPECT_EQ(RunningText::ports({"*:3000", "[::1]:5173"}), QStringLiteral("*:3000, [::1]:5173"));
    EXPECT_EQ(RunningText::ports({}), QString());
}

TEST(RunningText, identifierIsDecimalWithoutGroups) {
    EXPECT_EQ(RunningText::identifier(2'147'483'647), QStringLiteral("PID 2147483647"));
}

}  // namespace kestrune
