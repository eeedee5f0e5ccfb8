#include "platform/linux/LinuxPreferences.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/LinuxFileStore.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/TemporaryFolder.h"

namespace kestrune {
namespace {

using Texts = Preferences::Texts;

class LinuxPreferencesTest : public testing::Test {
protected:
    [[nodiscard]] LinuxPreferences another() { return {path, files}; }

    [[nodiscard]] const std::string& content() { return files.files[path]; }

    const std::string path = "/home/user/.config/kestrune/preferences.json";
    const std::string aside = path + ".unreadable-1";
    FakeFileStore files;
    LinuxPreferences preferences{path, files};
};

TEST_F(LinuxPreferencesTest, everyTypeComesBackInTheNextSession) {
    const WallTime date{Seconds{1795271234.56789}};
    const std::vector<double> frame = {-1280.5, 0, 1100, 1.0 / 3};
    EXPECT_TRUE(preferences.setBoolean("yes", true));
    EXPECT_TRUE(preferences.setBoolean("no", false));
    EXPECT_TRUE(preferences.setTexts("texts", {"/home/user/.npm", "", "/home/user/.cache/pip"}));
    EXPECT_TRUE(preferences.setTexts("none", {}));
    EXPECT_TRUE(preferences.setDate("date", date));
    EXPECT_TRUE(preferences.setNumbers("frame", frame));
    const LinuxPreferences next = another();
    EXPECT_EQ(true, next.boolean("yes"));
    EXPECT_EQ(false, next.boolean("no"));
    EXPECT_EQ((Texts{"/home/user/.npm", "", "/home/user/.cache/pip"}), next.texts("texts"));
    EXPECT_EQ(Texts{}, next.texts("none"));
    EXPECT_EQ(date, next.date("date"));
    EXPECT_EQ(frame, next.numbers("frame"));
}

TEST_F(LinuxPreferencesTest, nothingIsReadBeforeTheFirstUseAndOnlyOnceForAsking) {
    EXPECT_EQ(0, files.reads);
    EXPECT_EQ(std::nullopt, preferences.boolean("a"));
    EXPECT_EQ(std::nullopt, preferences.texts("b"));
    EXPECT_EQ(1, files.reads);
    EXPECT_EQ(0, files.replaceAttempts);
}

TEST_F(LinuxPreferencesTest, aValueOfAnotherTypeReadsAsAbsent) {
    files.files[path] = R"({"b": true, "t": ["x"], "d": 12.5, "n": [1, 2], "s": "text", "mixed": ["x", 1],
                            "o": {"bytes": "x"}, "null": null, "odd": [{"other": "x"}]})";
    for (const char* key : {"t", "d", "n", "s", "mixed", "o", "null", "odd", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.boolean(key)) << key;
    }
    for (const char* key : {"b", "d", "n", "s", "o", "null", "odd", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.texts(key)) << key;
    }
    for (const char* key : {"b", "t", "n", "s", "mixed", "o", "null", "odd", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.date(key)) << key;
    }
    for (const char* key : {"b", "t", "d", "s", "mixed", "o", "null", "odd", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.numbers(key)) << key;
    }
}

TEST_F(LinuxPreferencesTest, aListOfTextsKeepsItsTextsWhateverElseItHolds) {
    files.files[path] = R"({"alwaysKeepApps": [null, "Harmless View", 5, {"other": "x"}, {"bytes": "%FF"}, ["a"]]})";
    EXPECT_EQ((Texts{"Harmless View", "\xFF"}), preferences.texts("alwaysKeepApps"));
}

TEST_F(LinuxPreferencesTest, theRevisionChangesWithWhatASetMayHaveChanged) {
    files.files[path] = R"({"t": ["a"]})";
    const std::uint64_t first = preferences.revision();
    EXPECT_EQ(Texts{"a"}, preferences.texts("t"));
    EXPECT_EQ(first, preferences.revision());
    EXPECT_EQ(1, files.reads);
    files.files[path] = R"({"t": ["b"]})";
    EXPECT_TRUE(preferences.setBoolean("other", true));
    EXPECT_NE(first, preferences.revision());
    EXPECT_EQ(Texts{"b"}, preferences.texts("t"));
    const std::uint64_t second = preferences.revision();
    files.failsReplacing = true;
    EXPECT_FALSE(preferences.setTexts("t", {"c"}));
    EXPECT_NE(second, preferences.revision());
}

TEST_F(LinuxPreferencesTest, textsAreBytes) {
    const Texts odd = {"\xFF\xFE",
                       "/home/user/\xFFname with spaces",
                       "\xEF\xBB\xBFmark first",
                       "\xEF\xBF\xBF",
                       std::string("a\0b", 3),
                       "\xED\xA0\x80",
                       "%FF",
                       "{\"bytes\":\"x\"}",
                       "\xF0\x9F\xA7\xB9",
                       "line\nbreak\"\\",
                       "\xC3\xA9",
                       "e\xCC\x81",
                       "\xC0\xAF",
                       "\xEF\xBF\xBD",
                       std::string(1, '\x7F'),
                       "bytes"};
    EXPECT_TRUE(preferences.setTexts("odd", odd));
    EXPECT_EQ(odd, preferences.texts("odd"));
    EXPECT_EQ(odd, another().texts("odd"));
    EXPECT_NE(std::string::npos, content().find("%FF"));
    EXPECT_NE(std::string::npos, content().find("\xF0\x9F\xA7\xB9"));
}

TEST_F(LinuxPreferencesTest, everySingleByteAndPairOfBytesSurvives) {
    Texts all;
    for (int first = 0; first < 256; ++first) {
        all.emplace_back(1, static_cast<char>(first));
        for (int second = 0; second < 256; second += 5) {
            all.push_back({static_cast<char>(first), static_cast<char>(second)});
        }
    }
    EXPECT_TRUE(preferences.setTexts("all", all));
    EXPECT_EQ(all, another().texts("all"));
}

TEST_F(LinuxPreferencesTest, unknownKeysAreKept) {
    files.files[path] = R"({"future": {"deep": [1, 9007199254740993, null]}, "reduceFX": false})";
    EXPECT_TRUE(preferences.setBoolean("reduceFX", true));
    EXPECT_NE(std::string::npos, content().find("future"));
    EXPECT_NE(std::string::npos, content().find("9007199254740993"));
    EXPECT_EQ(true, another().boolean("reduceFX"));
}

TEST_F(LinuxPreferencesTest, keysWrittenByAnotherProgramMeanwhileSurvive) {
    LinuxPreferences other = another();
    EXPECT_TRUE(preferences.setBoolean("mine", true));
    EXPECT_TRUE(other.setBoolean("theirs", true));
    EXPECT_TRUE(preferences.setBoolean("mine again", true));
    const LinuxPreferences next = another();
    EXPECT_EQ(true, next.boolean("mine"));
    EXPECT_EQ(true, next.boolean("theirs"));
    EXPECT_EQ(true, next.boolean("mine again"));
    EXPECT_EQ(true, preferences.boolean("theirs"));
}

TEST_F(LinuxPreferencesTest, aFileThatIsNoJsonObjectIsSetAsideByTheFirstSet) {
    for (const std::string bytes : {"", "{", "[]", "null", "{\"a\": \"\xFF\"}", "{} trailing"}) {
        FakeFileStore other;
        other.files[path] = bytes;
        LinuxPreferences damaged(path, other);
        EXPECT_EQ(std::nullopt, damaged.boolean("a")) << bytes;
        EXPECT_EQ(bytes, other.files[path]) << bytes;
        EXPECT_TRUE(damaged.setBoolean("a", true)) << bytes;
        EXPECT_EQ(bytes, other.files[aside]) << bytes;
        EXPECT_EQ(true, LinuxPreferences(path, other).boolean("a")) << bytes;
    }
}

TEST_F(LinuxPreferencesTest, aFileThatIsTooLargeIsSetAside) {
    const std::string large = "{\"a\": \"" + std::string(LinuxPreferences::fileBytesAtMost, 'x') + "\"}";
    files.files[path] = large;
    EXPECT_TRUE(preferences.setBoolean("b", true));
    EXPECT_EQ(large, files.files[aside]);
    EXPECT_EQ(true, another().boolean("b"));
}

TEST_F(LinuxPreferencesTest, aDamagedFileThatCannotBeSetAsideIsNeverOverwritten) {
    files.files[path] = "{ damaged";
    files.failsSettingAside = true;
    EXPECT_FALSE(preferences.setBoolean("a", true));
    EXPECT_EQ(0, files.replaceAttempts);
    EXPECT_EQ("{ damaged", content());
    EXPECT_EQ(true, preferences.boolean("a"));
}

TEST_F(LinuxPreferencesTest, aFileThatCannotBeReadIsSetAside) {
    files.files[path] = R"({"a": true})";
    files.failsReading = true;
    EXPECT_EQ(std::nullopt, preferences.boolean("a"));
    EXPECT_TRUE(preferences.setBoolean("b", true));
    EXPECT_EQ(R"({"a": true})", files.files[aside]);
    files.failsReading = false;
    EXPECT_EQ(true, another().boolean("b"));
}

TEST_F(LinuxPreferencesTest, aFileDamagedMeanwhileCostsNoKnownValue) {
    EXPECT_TRUE(preferences.setTexts("kestrune_exclusions", {"/a"}));
    files.files[path] = "damaged";
    EXPECT_TRUE(preferences.setBoolean("reduceFX", true));
    EXPECT_EQ("damaged", files.files[aside]);
    EXPECT_EQ(Texts{"/a"}, another().texts("kestrune_exclusions"));
    files.files.erase(path);
    EXPECT_TRUE(preferences.setBoolean("reduceFX", false));
    EXPECT_EQ(Texts{"/a"}, another().texts("kestrune_exclusions"));
}

TEST_F(LinuxPreferencesTest, aFailedSaveKeepsTheFileAndTheValueForThisSession) {
    EXPECT_TRUE(preferences.setBoolean("a", true));
    const std::string before = content();
    files.failsReplacing = true;
    EXPECT_FALSE(preferences.setBoolean("a", false));
    EXPECT_FALSE(preferences.setTexts("t", {"x"}));
    EXPECT_EQ(before, content());
    EXPECT_EQ(false, preferences.boolean("a"));
    EXPECT_EQ(Texts{"x"}, preferences.texts("t"));
    EXPECT_EQ(true, another().boolean("a"));
}

TEST_F(LinuxPreferencesTest, whatCouldNotBeSavedGoesOutWithTheNextSetThatCan) {
    EXPECT_TRUE(preferences.setBoolean("a", true));
    files.failsReplacing = true;
    EXPECT_FALSE(preferences.setBoolean("a", false));
    files.failsReplacing = false;
    EXPECT_TRUE(preferences.setBoolean("b", true));
    EXPECT_EQ(false, another().boolean("a"));
    EXPECT_TRUE(another().setBoolean("a", true));
    EXPECT_TRUE(preferences.setBoolean("b", false));
    EXPECT_EQ(true, another().boolean("a"));
}

TEST_F(LinuxPreferencesTest, moreThanAMebibyteIsNotWritten) {
    EXPECT_TRUE(preferences.setBoolean("a", true));
    const std::string before = content();
    EXPECT_FALSE(preferences.setTexts("large", {std::string(LinuxPreferences::fileBytesAtMost, 'x')}));
    EXPECT_EQ(before, content());
    EXPECT_TRUE(preferences.setTexts("large", {"small"}));
    EXPECT_EQ(Texts{"small"}, another().texts("large"));
}

TEST_F(LinuxPreferencesTest, numbersThatAreNotFiniteAreRefused) {
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(preferences.setNumbers("frame", {0, 0, nothing, 1}));
    EXPECT_FALSE(preferences.setDate("date", WallTime{Seconds{endless}}));
    EXPECT_EQ(std::nullopt, preferences.numbers("frame"));
    EXPECT_EQ(std::nullopt, preferences.date("date"));
    EXPECT_EQ(0, files.replaceAttempts);
}

TEST_F(LinuxPreferencesTest, anyThreadMaySetAndAsk) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this, thread] {
            for (int round = 0; round < 50; ++round) {
                const std::string key = std::to_string(thread) + "-" + std::to_string(round);
                EXPECT_TRUE(preferences.setBoolean(key, true));
                EXPECT_EQ(true, preferences.boolean(key));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const LinuxPreferences next = another();
    for (int thread = 0; thread < 4; ++thread) {
        for (int round = 0; round < 50; ++round) {
            EXPECT_EQ(true, next.boolean(std::to_string(thread) + "-" + std::to_string(round)));
        }
    }
}

TEST_F(LinuxPreferencesTest, aSuiteReadsAndWritesOnlyItsOwnFile) {
    LinuxPreferences suite(LinuxPreferences::standardPath("/home/user/.config", "tests"), files);
    EXPECT_TRUE(suite.setBoolean("a", true));
    EXPECT_EQ(std::nullopt, preferences.boolean("a"));
    EXPECT_TRUE(preferences.setBoolean("a", false));
    EXPECT_EQ(true, LinuxPreferences("/home/user/.config/kestrune/tests.json", files).boolean("a"));
    EXPECT_EQ(2U, files.files.size());
}

TEST(LinuxPreferences, theStandardFileLiesInTheConfigurationFolder) {
    EXPECT_EQ("/home/user/.config/kestrune/preferences.json",
              LinuxPreferences::standardPath("/home/user/.config", std::nullopt));
    EXPECT_EQ("/c/kestrune/my.suite-1_2.json", LinuxPreferences::standardPath("/c", "my.suite-1_2"));
}

TEST(LinuxPreferencesDeathTest, aSuiteWithoutAPlainNameEndsTheProgram) {
    EXPECT_DEATH(static_cast<void>(LinuxPreferences::standardPath("/c", "../elsewhere")), "");
}

TEST(LinuxPreferences, settingsAreKeptOnDisk) {
    const TemporaryFolder home;
    const std::string path = LinuxPreferences::standardPath(home.path(), std::nullopt);
    LinuxFileStore files;
    EXPECT_TRUE(LinuxPreferences(path, files).setTexts("alwaysKeepApps", {"Terminal"}));
    EXPECT_EQ(Texts{"Terminal"}, LinuxPreferences(path, files).texts("alwaysKeepApps"));
}

}  // namespace
}  // namespace kestrune
