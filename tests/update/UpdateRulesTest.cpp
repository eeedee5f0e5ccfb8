#include "update/UpdateRules.h"

#include <gtest/gtest.h>

#include "base/Text.h"

namespace kestrune {

namespace {

const std::string signature = std::string(85, 'x') + "A==";

FeedItem goodItem(const std::string& version = "2.2.0") {
    return {.version = version,
            .shortVersion = {},
            .os = {},
            .minimumSystemVersion = {},
            .notes = "Better.",
            .url = "https://example.com/Kestrune.AppImage",
            .length = "1000",
            .signature = signature};
}

const UpdateRules::Program program{.runningVersion = "2.1.0", .archiveSuffix = "AppImage"};

bool exists(const FeedItem& item) {
    return UpdateRules::update(item, program).has_value();
}

bool existsShownAs(const std::string& shortVersion) {
    FeedItem item = goodItem();
    item.shortVersion = shortVersion;
    return exists(item);
}

bool existsWithLength(const std::string& length) {
    FeedItem item = goodItem();
    item.length = length;
    return exists(item);
}

bool existsWithSignature(const std::string& text) {
    FeedItem item = goodItem();
    item.signature = text;
    return exists(item);
}

bool existsAt(const std::string& url, const std::optional<std::string>& suffix = "AppImage") {
    FeedItem item = goodItem();
    item.url = url;
    return UpdateRules::update(item, {.runningVersion = "2.1.0", .archiveSuffix = suffix}).has_value();
}

}  // namespace

TEST(UpdateRules, aGoodItemIsAnUpdate) {
    FeedItem item = goodItem();
    item.shortVersion = "2.2 “Heron”";
    item.os = "linux";
    EXPECT_EQ(UpdateRules::update(item, program), (UpdateItem{.version = "2.2.0",
                                                              .displayVersion = "2.2 “Heron”",
                                                              .notes = "Better.",
                                                              .archiveUrl = "https://example.com/Kestrune.AppImage",
                                                              .archiveBytes = 1000,
                                                              .archiveSignature = signature}));
}

TEST(UpdateRules, withoutAShortVersionTheVersionIsShown) {
    EXPECT_EQ(UpdateRules::update(goodItem(), program).value().displayVersion, "2.2.0");
}

TEST(UpdateRules, onlyANewerVersionIsAnUpdate) {
    for (const std::string version : {"2.1.0", "2.1", "2.0.99", "1", "0"}) {
        EXPECT_FALSE(exists(goodItem(version))) << version;
    }
    for (const std::string version : {"2.1.0.1", "2.1.1", "2.10", "3"}) {
        EXPECT_TRUE(exists(goodItem(version))) << version;
    }
}

TEST(UpdateRules, aVersionThatIsNoNumberIsNoUpdate) {
    for (const std::string version : {"", "three", "3.0-beta", "3..0", " 3", "3\n", "٣"}) {
        EXPECT_FALSE(exists(goodItem(version))) << version;
    }
}

TEST(UpdateRules, aVersionOfMoreThan128CharactersIsNoUpdate) {
    FeedItem item = goodItem(std::string(128, '9'));
    item.shortVersion = "9";
    EXPECT_TRUE(exists(item));
    item.version += '9';
    EXPECT_FALSE(exists(item));
}

TEST(UpdateRules, nothingIsNewerThanARunningVersionThatIsNoNumber) {
    EXPECT_EQ(UpdateRules::update(goodItem(), {.runningVersion = "dev", .archiveSuffix = "AppImage"}), std::nullopt);
}

TEST(UpdateRules, theShownVersionHasAtMost64Characters) {
    EXPECT_TRUE(existsShownAs(std::string(64, 'x')));
    EXPECT_FALSE(existsShownAs(std::string(65, 'x')));
    std::string umlauts;
    for (int i = 0; i < 64; ++i) {
        umlauts += "ü";
    }
    EXPECT_TRUE(existsShownAs(umlauts));
    EXPECT_FALSE(existsShownAs(umlauts + "ü"));
    FeedItem unnamed = goodItem("3." + std::string(62, '1'));
    EXPECT_TRUE(exists(unnamed));
    unnamed.version += '1';
    EXPECT_FALSE(exists(unnamed));
}

TEST(UpdateRules, theShownVersionIsOnePlainLine) {
    for (const std::string text :
         {"2.2\n", "2\t2", "2\r2", "\x1B[31m2", "2\x7F", "2\u0085", "2\u2028", "2\u202E2\u202C", "\u20662\u2069",
          "2\u200F", "2\u200B", "\uFEFF2", "2\U000E0041", "2\u00AD2"}) {
        EXPECT_FALSE(existsShownAs(text)) << text;
    }
    EXPECT_FALSE(existsShownAs(std::string("2\0x", 3)));
    EXPECT_TRUE(existsShownAs("2.2 <b>&amp;</b> %1"));
}

TEST(UpdateRules, theShownVersionIsValidUtf8) {
    for (const std::string text : {"2\xFF", "\xC3", "\xED\xA0\x80", "\xC0\x80"}) {
        EXPECT_FALSE(existsShownAs(text));
    }
}

TEST(UpdateRules, theShownVersionCanBeSeen) {
    for (const std::string text : {" ", "   ", "\u00A0", "\u3000", "\u2800"}) {
        EXPECT_FALSE(existsShownAs(text));
    }
}

TEST(UpdateRules, anItemForAnotherSystemIsNoUpdate) {
    FeedItem item = goodItem();
    item.os = "linux";
    EXPECT_TRUE(exists(item));
    for (const std::string os : {"macos", "windows", "Linux", "linux ", "linux\n"}) {
        item.os = os;
        EXPECT_FALSE(exists(item)) << os;
    }
}

TEST(UpdateRules, aMinimumSystemVersionIsNotLookedAt) {
    FeedItem item = goodItem();
    item.minimumSystemVersion = "99.0";
    EXPECT_TRUE(exists(item));
}

TEST(UpdateRules, theArchiveLiesAtAnHttpsAddress) {
    for (const std::string url : {"", "http://example.com/K.AppImage", "file:///tmp/K.AppImage", "https:///K.AppImage",
                                  "/K.AppImage", "https://anna@example.com/K.AppImage",
                                  "https://example.com/K .AppImage", "https://example.com/\nK.AppImage"}) {
        EXPECT_FALSE(existsAt(url)) << url;
        EXPECT_FALSE(existsAt(url, std::nullopt)) << url;
    }
}

TEST(UpdateRules, theArchiveIsOfTheProgramsKind) {
    EXPECT_TRUE(existsAt("https://example.com/K.AppImage?mirror=1"));
    EXPECT_TRUE(existsAt("https://example.com/kestrune_2.2_amd64.deb", "deb"));
    for (const std::string url :
         {"https://example.com/K.deb", "https://example.com/K.dmg", "https://example.com/.AppImage",
          "https://example.com/KAppImage", "https://example.com/K.appimage", "https://example.com/K.AppImage/",
          "https://example.com/K.AppImage.zip", "https://example.com/?K.AppImage", "https://example.com/#K.AppImage"}) {
        EXPECT_FALSE(existsAt(url)) << url;
    }
}

TEST(UpdateRules, aProgramThatCannotReplaceItselfLearnsOfEveryArchive) {
    EXPECT_TRUE(existsAt("https://example.com/K.deb", std::nullopt));
    EXPECT_TRUE(existsAt("https://example.com/latest", std::nullopt));
}

TEST(UpdateRules, theLengthIsFromOneByteToFourGibibytes) {
    EXPECT_TRUE(existsWithLength("1"));
    EXPECT_TRUE(existsWithLength("4294967296"));
    for (const std::string length : {"", "0", "-1", "4294967297", "9223372036854775808", "99999999999999999999", "1e3",
                                     "0x10", " 5", "5 ", "+5", "5.0", "many"}) {
        EXPECT_FALSE(existsWithLength(length)) << length;
    }
}

TEST(UpdateRules, theSignatureIs64BytesInBase64) {
    EXPECT_TRUE(existsWithSignature(std::string(85, '/') + "Q=="));
    EXPECT_TRUE(existsWithSignature(std::string(85, '+') + "g=="));
    const std::string start(85, 'x');
    for (const std::string& text :
         {std::string(), start, start + "A", start + "A=", start + "xA=", start + "xxA",
          start + "B==", start + "A===", " " + start + "A==", start + "A==\n", start.substr(1) + "A==",
          "xx" + start + "A==", "-" + start.substr(1) + "A==", "=" + start.substr(1) + "A==", start + "==="}) {
        EXPECT_FALSE(existsWithSignature(text)) << text;
    }
}

TEST(UpdateRules, theHighestVersionOfAFeedIsTheBest) {
    const auto best = UpdateRules::bestUpdate({goodItem("2.9"), goodItem("2.10"), goodItem("2.2")}, program);
    EXPECT_EQ(best.value().version, "2.10");
}

TEST(UpdateRules, ofTwoItemsWithOneVersionTheFirstIsTaken) {
    FeedItem second = goodItem("2.2");
    second.shortVersion = "second";
    EXPECT_EQ(UpdateRules::bestUpdate({goodItem("2.2.0"), second}, program).value().displayVersion, "2.2.0");
}

TEST(UpdateRules, aHigherVersionThatBreaksARuleDoesNotHideALowerOne) {
    FeedItem unsigned3 = goodItem("3.0");
    unsigned3.signature.clear();
    FeedItem package = goodItem("2.5");
    package.url = "https://example.com/kestrune.deb";
    EXPECT_EQ(UpdateRules::bestUpdate({unsigned3, package, goodItem("2.2")}, program).value().version, "2.2");
}

TEST(UpdateRules, aFeedWithoutAnUpdateHasNoBest) {
    EXPECT_EQ(UpdateRules::bestUpdate({}, program), std::nullopt);
    EXPECT_EQ(UpdateRules::bestUpdate({goodItem("2.1.0"), goodItem("1.9"), FeedItem{}}, program), std::nullopt);
}

TEST(UpdateRules, notesKeepTheirLinesAndLoseWhatDisturbs) {
    EXPECT_EQ(UpdateRules::plainNotes("One\r\n\n\tTwo <b>&amp;"), "One\n\n\tTwo <b>&amp;");
    EXPECT_EQ(UpdateRules::plainNotes("a\x1B[0mb\u202Ec\u202C\u200Bd\xFF\x7F"), "a[0mbcd");
    EXPECT_EQ(UpdateRules::plainNotes(std::string_view("a\0b", 3)), "ab");
}

TEST(UpdateRules, notesHaveNoWhiteSpaceAroundThem) {
    EXPECT_EQ(UpdateRules::plainNotes("\n  \r\n One \n\n"), "One");
    EXPECT_EQ(UpdateRules::plainNotes(" \n\t"), "");
    EXPECT_EQ(UpdateRules::plainNotes(""), "");
}

TEST(UpdateRules, notesHaveAtMost20000Characters) {
    std::string notes;
    for (int i = 0; i < 30'000; ++i) {
        notes += "ü";
    }
    const std::string plain = UpdateRules::plainNotes(notes);
    EXPECT_EQ(characterCount(plain), 20'000U);
    EXPECT_TRUE(isValidUtf8(plain));
    EXPECT_EQ(characterCount(UpdateRules::plainNotes(std::string(20'000, 'x'))), 20'000U);
}

}  // namespace kestrune
