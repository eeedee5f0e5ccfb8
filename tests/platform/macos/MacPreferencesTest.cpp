#include "platform/macos/MacPreferences.h"

#include "tests/fakes/FakeUserDefaults.h"
#include "tests/platform/PreferencesExpectations.h"

namespace kestrune {
namespace {

using Texts = Preferences::Texts;

class MacHost final : public PreferencesHost {
public:
    [[nodiscard]] std::unique_ptr<Preferences> startProgram() override {
        return std::make_unique<MacPreferences>(std::make_unique<FakeUserDefaults>(m_database));
    }

    void failSaving(bool fails) override { m_database.failsSaving = fails; }

private:
    FakeDefaultsDatabase m_database;
};

INSTANTIATE_TEST_SUITE_P(MacOS, PreferencesTest,
                         testing::Values(PreferencesHostMaker{"MacOS", []() -> std::unique_ptr<PreferencesHost> {
                                                                  return std::make_unique<MacHost>();
                                                              }}));

class MacPreferencesTest : public testing::Test {
protected:
    /// The preferences of a program that starts now.
    [[nodiscard]] MacPreferences another() { return MacPreferences(std::make_unique<FakeUserDefaults>(database)); }

    FakeDefaultsDatabase database;
    FakeUserDefaults* const defaults = new FakeUserDefaults(database);
    MacPreferences preferences{std::unique_ptr<UserDefaults>(defaults)};
};

TEST_F(MacPreferencesTest, eachTypeIsStoredAsTheSystemsOwn) {
    EXPECT_TRUE(preferences.setBoolean("b", true));
    EXPECT_TRUE(preferences.setTexts("t", {"x"}));
    EXPECT_TRUE(preferences.setDate("d", WallTime{Seconds{12.5}}));
    EXPECT_TRUE(preferences.setNumbers("n", {1, 2}));
    EXPECT_EQ(DefaultsValue(true), database.values["b"]);
    EXPECT_EQ(DefaultsValue(DefaultsList{std::string("x")}), database.values["t"]);
    EXPECT_EQ(DefaultsValue(WallTime{Seconds{12.5}}), database.values["d"]);
    EXPECT_EQ(DefaultsValue(DefaultsList{1.0, 2.0}), database.values["n"]);
}

TEST_F(MacPreferencesTest, aValueOfAnotherTypeReadsAsAbsent) {
    database.values = {{"b", true},
                       {"one", 1.0},
                       {"t", DefaultsList{std::string("x")}},
                       {"d", WallTime{Seconds{12.5}}},
                       {"n", DefaultsList{1.0, 2.0}},
                       {"mixed", DefaultsList{std::string("x"), 1.0}},
                       {"odd", DefaultsList{DefaultsElement()}},
                       {"other", {}}};
    for (const char* key : {"one", "t", "d", "n", "mixed", "odd", "other", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.boolean(key)) << key;
    }
    for (const char* key : {"b", "one", "d", "n", "odd", "other", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.texts(key)) << key;
    }
    for (const char* key : {"b", "one", "t", "n", "mixed", "odd", "other", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.date(key)) << key;
    }
    for (const char* key : {"b", "one", "t", "d", "mixed", "odd", "other", "missing"}) {
        EXPECT_EQ(std::nullopt, preferences.numbers(key)) << key;
    }
}

TEST_F(MacPreferencesTest, aNumberIsNoBoolean) {
    database.values = {{"zero", 0.0}, {"one", 1.0}};
    EXPECT_EQ(std::nullopt, preferences.boolean("zero"));
    EXPECT_EQ(std::nullopt, preferences.boolean("one"));
}

TEST_F(MacPreferencesTest, aListOfTextsKeepsItsTextsWhateverElseItHolds) {
    database.values["alwaysKeepApps"] =
        DefaultsList{DefaultsElement(), std::string("Harmless View"), 5.0, DefaultsBytes{"\xFF"}};
    EXPECT_EQ((Texts{"Harmless View", "\xFF"}), preferences.texts("alwaysKeepApps"));
}

TEST_F(MacPreferencesTest, aTextThatWouldNotComeBackUnchangedIsStoredAsBytes) {
    const Texts odd = {
        "\xFF\xFE", "/Volumes/old/\xFFname", "\xEF\xBB\xBFmark first", std::string("a\0b", 3), "\xED\xA0\x80",
        "\xC0\xAF"};
    EXPECT_TRUE(preferences.setTexts("odd", odd));
    const DefaultsValue stored = database.values["odd"];
    for (const DefaultsElement& element : std::get<DefaultsList>(stored)) {
        EXPECT_TRUE(std::holds_alternative<DefaultsBytes>(element));
    }
    EXPECT_EQ(odd, another().texts("odd"));
}

TEST_F(MacPreferencesTest, everyOtherTextIsStoredAsText) {
    const Texts plain = {"",
                         "a\xEF\xBB\xBF",
                         "\xF0\x9F\xA7\xB9",
                         "line\nbreak\"\\",
                         "\xC3\xA9",
                         "e\xCC\x81",
                         "\xEF\xBF\xBD",
                         "\x7F",
                         "<bytes>&\x01\x1F",
                         "%FF"};
    EXPECT_TRUE(preferences.setTexts("plain", plain));
    const DefaultsValue stored = database.values["plain"];
    for (const DefaultsElement& element : std::get<DefaultsList>(stored)) {
        EXPECT_TRUE(std::holds_alternative<std::string>(element));
    }
    EXPECT_EQ(plain, another().texts("plain"));
}

TEST_F(MacPreferencesTest, aListOfMoreThanAMebibyteHoldsForThisSessionAndIsNeverHandedOver) {
    const Texts large = {std::string(MacPreferences::listBytesAtMost, 'x')};
    EXPECT_FALSE(preferences.setTexts("large", large));
    EXPECT_EQ(large, preferences.texts("large"));
    EXPECT_TRUE(preferences.setBoolean("other", true));
    EXPECT_EQ(std::vector<std::string>{"other"}, defaults->sets);
    EXPECT_EQ(large, preferences.texts("large"));
    EXPECT_TRUE(preferences.setTexts("large", {"small"}));
    EXPECT_EQ(Texts{"small"}, another().texts("large"));
}

TEST_F(MacPreferencesTest, manyShortTextsMayAlsoBeTooMany) {
    EXPECT_FALSE(preferences.setTexts("many", Texts(MacPreferences::listBytesAtMost / 2, "")));
    EXPECT_TRUE(defaults->sets.empty());
}

TEST_F(MacPreferencesTest, theRevisionChangesWithEverySet) {
    const std::uint64_t first = preferences.revision();
    EXPECT_EQ(first, preferences.revision());
    EXPECT_TRUE(preferences.setBoolean("a", true));
    const std::uint64_t second = preferences.revision();
    EXPECT_NE(first, second);
    database.failsSaving = true;
    EXPECT_FALSE(preferences.setBoolean("a", false));
    EXPECT_NE(second, preferences.revision());
}

TEST_F(MacPreferencesTest, theRevisionChangesWhenAnotherProgramChangesWhatWasAskedFor) {
    EXPECT_EQ(std::nullopt, preferences.texts("alwaysKeepApps"));
    const std::uint64_t before = preferences.revision();
    EXPECT_EQ(std::nullopt, preferences.texts("alwaysKeepApps"));
    EXPECT_EQ(before, preferences.revision());
    defaults->changeFromOutside("alwaysKeepApps", DefaultsList{std::string("terminal")});
    EXPECT_NE(before, preferences.revision());
    EXPECT_EQ(Texts{"terminal"}, preferences.texts("alwaysKeepApps"));
}

TEST_F(MacPreferencesTest, aKeyIsWatchedOnceHoweverOftenItIsAskedFor) {
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(std::nullopt, preferences.boolean("reduceFX"));
    }
    EXPECT_EQ(1U, defaults->watched.count("reduceFX"));
}

TEST_F(MacPreferencesTest, aChangeThatIsToldAfterThePreferencesAreGoneGoesNowhere) {
    FakeDefaultsDatabase other;
    std::function<void()> told;
    {
        auto store = std::make_unique<FakeUserDefaults>(other);
        const FakeUserDefaults& watching = *store;
        const MacPreferences shortLived(std::move(store));
        EXPECT_EQ(std::nullopt, shortLived.boolean("a"));
        ASSERT_EQ(1U, watching.watched.size());
        told = watching.watched.begin()->second;
    }
    told();
}

TEST_F(MacPreferencesTest, aSuiteIsAStoreOfItsOwn) {
    FakeDefaultsDatabase suite;
    MacPreferences tests(std::make_unique<FakeUserDefaults>(suite));
    EXPECT_TRUE(tests.setBoolean("a", true));
    EXPECT_EQ(std::nullopt, preferences.boolean("a"));
    EXPECT_TRUE(preferences.setBoolean("a", false));
    EXPECT_EQ(true, tests.boolean("a"));
}

}  // namespace
}  // namespace kestrune
