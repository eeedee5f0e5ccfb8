#include "base/Localized.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/ByteCount.h"

namespace kestrune {
namespace {

const char* inPigLatin(const char* english) {
    using namespace std::string_view_literals;
    if (english == "Trash"sv) {
        return "Ashtray";
    }
    if (english == "%1 of %2"sv) {
        return "of %2: %1";
    }
    if (english == "%1.%2"sv) {
        return "%1,%2";
    }
    return english;
}

/// Two for one and none, as no two-form language has it: it shows whose rule counts.
const char* pigLatinForm(const char* one, const char* many, unsigned long count) {
    return count == 2 ? one : many;
}

class Localized : public testing::Test {
protected:
    Localized() { setTranslation({}); }

    ~Localized() override { setTranslation({}); }

    Localized(const Localized&) = delete;
    Localized& operator=(const Localized&) = delete;
};

TEST_F(Localized, everythingIsEnglishUntilALanguageIsSet) {
    EXPECT_EQ(localized("Trash"), "Trash");
    EXPECT_EQ(localized("%1 of %2", {"3", "4"}), "3 of 4");
}

TEST_F(Localized, aTextComesInTheUsersLanguage) {
    setTranslation({inPigLatin, pigLatinForm});
    EXPECT_EQ(localized("Trash"), "Ashtray");
    EXPECT_EQ(localized(std::string_view("Trash")), "Ashtray");
}

TEST_F(Localized, aTextWithoutTranslationStaysEnglish) {
    setTranslation({inPigLatin, pigLatinForm});
    EXPECT_EQ(localized("Finder"), "Finder");
}

TEST_F(Localized, anEmptyTextIsNotLookedUp) {
    setTranslation({[](const char*) { return "Project-Id-Version: kestrune"; }, nullptr});
    EXPECT_EQ(localized(""), "");
}

TEST_F(Localized, argumentsGoWhereTheTranslationPutsThem) {
    setTranslation({inPigLatin, pigLatinForm});
    EXPECT_EQ(localized("%1 of %2", {"3", "4"}), "of 4: 3");
}

TEST_F(Localized, anArgumentIsNotSearchedForMarks) {
    EXPECT_EQ(localized("%1 and %2", {"%2", "%1"}), "%2 and %1");
}

TEST_F(Localized, aMarkWithoutArgumentAndALonePercentSignStay) {
    EXPECT_EQ(localized("%1% of %3 %", {"5"}), "5% of %3 %");
    EXPECT_EQ(localized("100%", {"5"}), "100%");
}

TEST_F(Localized, aCountChoosesTheEnglishForm) {
    EXPECT_EQ(localizedCount("%1 item", "%1 items", 0), "0 items");
    EXPECT_EQ(localizedCount("%1 item", "%1 items", 1), "1 item");
    EXPECT_EQ(localizedCount("%1 item", "%1 items", 2), "2 items");
}

TEST_F(Localized, theLanguagesOwnRuleChoosesTheForm) {
    setTranslation({inPigLatin, pigLatinForm});
    EXPECT_EQ(localizedCount("%1 item", "%1 items", 1), "1 items");
    EXPECT_EQ(localizedCount("%1 item", "%1 items", 2), "2 item");
}

TEST_F(Localized, aCountIsShownAsItsCallerWritesIt) {
    EXPECT_EQ(localizedCount("%1 smaller item", "%1 smaller items", 12480, {"12,480"}), "12,480 smaller items");
}

TEST_F(Localized, aMarkedTextOfATableStaysAsItIs) {
    constexpr const char* text = localizable("Trash");
    EXPECT_STREQ(text, "Trash");
}

TEST_F(Localized, aSizeTakesTheLanguagesDecimalSign) {
    EXPECT_EQ(formatByteCount(18'420'000'000), "18.42 GB");
    setTranslation({inPigLatin, pigLatinForm});
    EXPECT_EQ(formatByteCount(18'420'000'000), "18,42 GB");
    EXPECT_EQ(formatByteCount(12'000), "12 KB");
}

}  // namespace
}  // namespace kestrune
