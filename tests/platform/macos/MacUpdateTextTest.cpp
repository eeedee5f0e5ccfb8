#include "platform/macos/MacUpdateText.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace kestrune {
namespace {

TEST(MacUpdateText, aBuildLooksForUpdatesWithAFeedAndAKeyOnly) {
    EXPECT_TRUE(MacUpdateText::isConfigured("https://kestrune.example/feed.xml", "MCowBQ=="));
    EXPECT_FALSE(MacUpdateText::isConfigured("", "MCowBQ=="));
    EXPECT_FALSE(MacUpdateText::isConfigured("https://kestrune.example/feed.xml", ""));
}

TEST(MacUpdateText, anItemHasTheTwoVersionsOfTheFeed) {
    const UpdateItem item = MacUpdateText::item("210", "2.1.0");
    EXPECT_EQ(item.version, "210");
    EXPECT_EQ(item.displayVersion, "2.1.0");
}

TEST(MacUpdateText, theShownVersionIsOneLineOfAtMost64Characters) {
    EXPECT_EQ(MacUpdateText::item("1", " 2.2 \n beta\t1 ").displayVersion, "2.2 beta 1");
    EXPECT_EQ(MacUpdateText::item("1", std::string(65, '9')).displayVersion, std::string(64, '9'));
    EXPECT_EQ(MacUpdateText::item("1", std::string(63, '9') + " 8").displayVersion, std::string(63, '9'));
}

TEST(MacUpdateText, whatTurnsOrHidesTextIsNotShown) {
    EXPECT_EQ(MacUpdateText::item("1", "2.2\u202E1\u200B.0\x1B").displayVersion, "2.21.0");
}

TEST(MacUpdateText, aVersionWithoutAnythingToShowIsShownByItsNumber) {
    EXPECT_EQ(MacUpdateText::item("211", " \u200B ").displayVersion, "211");
}

TEST(MacUpdateText, aChoiceIsKnownByItsNumber) {
    EXPECT_EQ(MacUpdateText::choice(0), UpdateChoice::skip);
    EXPECT_EQ(MacUpdateText::choice(1), UpdateChoice::install);
    EXPECT_EQ(MacUpdateText::choice(2), UpdateChoice::dismiss);
    EXPECT_EQ(MacUpdateText::choice(3), std::nullopt);
    EXPECT_EQ(MacUpdateText::choice(-1), std::nullopt);
}

TEST(MacUpdateText, onlyTheFrameworksOwnNumberMeansThatThereIsNoUpdate) {
    EXPECT_EQ(MacUpdateText::error(1001, "You’re up to date!").code, UpdaterError::noUpdate);
    EXPECT_NE(MacUpdateText::error(1000, "Bad feed.").code, UpdaterError::noUpdate);
}

TEST(MacUpdateText, aFeedThatCannotBeReadIsNotTakenForACancelledCheck) {
    EXPECT_EQ(MacUpdateText::error(1002, "Bad feed.").code, UpdaterError::feed);
}

TEST(MacUpdateText, errorsAreGroupedByTheStepThatFailed) {
    EXPECT_EQ(MacUpdateText::error(2001, "No network.").code, UpdaterError::network);
    EXPECT_EQ(MacUpdateText::error(3001, "Not signed.").code, UpdaterError::signature);
    EXPECT_EQ(MacUpdateText::error(4005, "No room.").code, UpdaterError::install);
    EXPECT_EQ(MacUpdateText::error(-1009, "Offline.").code, -1009);
}

TEST(MacUpdateText, aNumberThatNoIntegerHoldsIsStillAnError) {
    EXPECT_EQ(MacUpdateText::error(std::int64_t{1} << 40, "Odd.").code, 0);
    EXPECT_EQ(MacUpdateText::error((std::int64_t{1} << 32) + UpdaterError::noUpdate, "Odd.").code, 0);
}

TEST(MacUpdateText, aDescriptionIsASentenceThatEnds) {
    EXPECT_EQ(MacUpdateText::error(2001, "The download failed").description, "The download failed.");
    EXPECT_EQ(MacUpdateText::error(2001, "The download failed.\n").description, "The download failed.");
    EXPECT_EQ(MacUpdateText::error(2001, "Failed!").description, "Failed!");
    EXPECT_EQ(MacUpdateText::error(2001, "失敗しました。").description, "失敗しました。");
    EXPECT_EQ(MacUpdateText::error(2001, "").description, "");
}

TEST(MacUpdateText, aDescriptionIsOneLineThatFitsTheSettingsPage) {
    const std::string description = MacUpdateText::error(2001, "First\nsecond " + std::string(600, 'm')).description;
    EXPECT_TRUE(description.starts_with("First second m"));
    EXPECT_EQ(characterCount(description), 501U);
}

}  // namespace
}  // namespace kestrune
