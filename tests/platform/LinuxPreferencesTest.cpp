#include "platform/linux/LinuxPreferences.h"

#include "platform/linux/LinuxFileStore.h"
#include "tests/fakes/FakeFileStore.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/PreferencesExpectations.h"

namespace kestrune {
namespace {

using Texts = Preferences::Texts;

class LinuxHost final : public PreferencesHost {
public:
    [[nodiscard]] std::unique_ptr<Preferences> startProgram() override {
        return std::make_unique<LinuxPreferences>("/home/user/.config/kestrune/preferences.json", m_files);
    }

    void failSaving(bool fails) override { m_files.failsReplacing = fails; }

private:
    FakeFileStore m_files;
};

INSTANTIATE_TEST_SUITE_P(Linux, PreferencesTest,
                         testing::Values(PreferencesHostMaker{"Linux", []() -> std::unique_ptr<PreferencesHost> {
                                                                  return std::make_unique<LinuxHost>();
                                                              }}));

class LinuxPreferencesTest : public testing::Test {
protected:
    [[nodiscard]] LinuxPreferences another() { return {path, files}; }

    [[nodiscard]] const std::string& content() { return files.files[path]; }

    const std::string path = "/home/user/.config/kestrune/preferences.json";
    const std::string aside = path + ".unreadable-1";
    FakeFileStore files;
    LinuxPreferences preferences{path, files};
};

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

TEST_F(LinuxPreferencesTest, aTextThatIsNotUtf8IsSpelledInPercentAndAnyOtherAsItIs) {
    EXPECT_TRUE(preferences.setTexts("odd", {"\xFF", "\xF0\x9F\xA7\xB9"}));
    EXPECT_NE(std::string::npos, content().find("%FF"));
    EXPECT_NE(std::string::npos, content().find("\xF0\x9F\xA7\xB9"));
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

TEST_F(LinuxPreferencesTest, aFailedSaveKeepsTheFile) {
    EXPECT_TRUE(preferences.setBoolean("a", true));
    const std::string before = content();
    files.failsReplacing = true;
    EXPECT_FALSE(preferences.setBoolean("a", false));
    EXPECT_EQ(before, content());
}

TEST_F(LinuxPreferencesTest, moreThanAMebibyteIsNotWritten) {
    EXPECT_TRUE(preferences.setBoolean("a", true));
    const std::string before = content();
    EXPECT_FALSE(preferences.setTexts("large", {std::string(LinuxPreferences::fileBytesAtMost, 'x')}));
    EXPECT_EQ(before, content());
    EXPECT_TRUE(preferences.setTexts("large", {"small"}));
    EXPECT_EQ(Texts{"small"}, another().texts("large"));
}

TEST_F(LinuxPreferencesTest, aNumberThatIsNotFiniteDoesNotReachTheFile) {
    EXPECT_FALSE(preferences.setNumbers("frame", {std::numeric_limits<double>::quiet_NaN()}));
    EXPECT_EQ(0, files.replaceAttempts);
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
