#include "platform/linux/TrashInfo.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace kestrune {
namespace {

std::tm someDay() {
    std::tm day = {};
    day.tm_year = 126;
    day.tm_mon = 0;
    day.tm_mday = 9;
    day.tm_hour = 7;
    day.tm_min = 5;
    day.tm_sec = 3;
    return day;
}

TEST(TrashInfo, lettersDigitsAndSlashesStayPlain) {
    EXPECT_EQ(percentEncoded("/home/Ann/.cache/a-b_c~1.2"), "/home/Ann/.cache/a-b_c~1.2");
}

TEST(TrashInfo, everyOtherByteIsEncoded) {
    EXPECT_EQ(percentEncoded("a b\nc%d\\"), "a%20b%0Ac%25d%5C");
    EXPECT_EQ(percentEncoded("\xFF\xC3\xA9\x01"), "%FF%C3%A9%01");
    EXPECT_EQ(percentEncoded("?#[]=+&"), "%3F%23%5B%5D%3D%2B%26");
}

TEST(TrashInfo, aNewLineInANameCannotForgeASecondKey) {
    const std::string text = trashInfoText("/h/a\nPath=/etc", someDay());
    EXPECT_EQ(split(text, '\n').size(), 4U);
    EXPECT_EQ(text.find("\nPath=/etc"), std::string::npos);
}

TEST(TrashInfo, textHoldsHeaderPathAndLocalDate) {
    EXPECT_EQ(trashInfoText("/h/a b", someDay()), "[Trash Info]\nPath=/h/a%20b\nDeletionDate=2026-01-09T07:05:03\n");
}

TEST(TrashInfo, recognisesAWholeRecordOfTheSamePathWhateverItsDate) {
    EXPECT_TRUE(isTrashInfoOf("[Trash Info]\nPath=/h/a%20b\nDeletionDate=1999-12-31T23:59:59\n", "/h/a b"));
}

TEST(TrashInfo, doesNotTakeAnotherPathOrACutRecordForItsOwn) {
    const std::string text = trashInfoText("/h/ab", someDay());
    EXPECT_FALSE(isTrashInfoOf(text, "/h/a"));
    EXPECT_FALSE(isTrashInfoOf(text, "/h/abc"));
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_FALSE(isTrashInfoOf(text.substr(0, length), "/h/ab")) << length;
    }
    EXPECT_FALSE(isTrashInfoOf(text + "More=1\n", "/h/ab"));
}

TEST(TrashInfo, firstNameIsTheItemsOwnAndLaterOnesAreNumbered) {
    EXPECT_EQ(trashName(".npm", 0, 255), ".npm");
    EXPECT_EQ(trashName(".npm", 1, 255), ".npm.2");
    EXPECT_EQ(trashName(".npm", 99, 255), ".npm.100");
}

TEST(TrashInfo, aLongNameLeavesRoomForTheRecordsSuffix) {
    const std::string leaf(255, 'x');
    EXPECT_EQ(trashName(leaf, 0, 255), std::string(245, 'x'));
    EXPECT_EQ(trashName(leaf, 9, 255), std::string(242, 'x') + ".10");
    EXPECT_EQ(trashName(std::string(245, 'x'), 0, 255), std::string(245, 'x'));
}

TEST(TrashInfo, aLongNameIsCutBetweenCharacters) {
    std::string leaf;
    while (leaf.size() < 255) {
        leaf += "\xF0\x9F\xA7\xB9";
    }
    const std::string name = trashName(leaf, 0, 255);
    EXPECT_EQ(name.size(), 244U);
    EXPECT_TRUE(isValidUtf8(name));
}

TEST(TrashInfo, aLongNameThatIsNotTextIsCutAnywhere) {
    EXPECT_EQ(trashName(std::string(255, '\xBF'), 0, 255), std::string(245, '\xBF'));
}

TEST(TrashInfo, aFileSystemWithShorterNamesGetsShorterNames) {
    EXPECT_EQ(trashName(std::string(143, 'x'), 0, 143), std::string(133, 'x'));
}

TEST(TrashInfo, everyByteOfAPathComesBackFromItsRecord) {
    std::string path = "/h/";
    for (int byte = 1; byte < 256; ++byte) {
        path.push_back(static_cast<char>(byte));
    }
    EXPECT_EQ(originalPathIn(trashInfoText(path, someDay())), path);
    EXPECT_EQ(originalPathIn("[Trash Info]\nPath=/h/%c3%A9\n"), "/h/\xC3\xA9");
}

TEST(TrashInfo, aCutRecordNamesNoPathUntilItsLineIsWhole) {
    const std::string text = trashInfoText("/h/a b", someDay());
    const std::size_t whole = text.find("\nDeletionDate") + 1;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        EXPECT_EQ(originalPathIn(text.substr(0, length)).has_value(), length >= whole) << length;
    }
}

TEST(TrashInfo, whatIsNoEscapeAndWhatShouldHaveBeenOneNamesNoPath) {
    for (const char* path :
         {"/h/%", "/h/%4", "/h/%g0", "/h/%0g", "/h/%00", "/h/%-1", "/h/a\tb", "/h/a\x7F", "/h/a\r"}) {
        EXPECT_EQ(originalPathIn("[Trash Info]\nPath=" + std::string(path) + "\n"), std::nullopt) << path;
    }
}

TEST(TrashInfo, twoPathsAreNone) {
    EXPECT_EQ(originalPathIn("[Trash Info]\nPath=/h/a\nPath=/h/a\n"), std::nullopt);
}

}  // namespace
}  // namespace kestrune
