#include "platform/macos/MacPreferences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "tests/fakes/FakeUserDefaults.h"

namespace kestrune {
namespace {

using Texts = Preferences::Texts;

class MacPreferencesTest : public testing::Test {
protected:
    /// The preferences of a program that starts now.
    [[nodiscard]] MacPreferences another() { return MacPreferences(std::make_unique<FakeUserDefaults>(database)); }

    FakeDefaultsDatabase database;
    FakeUserDefaults* const defaults = new FakeUserDefaults(database);
    MacPreferences preferences{std::unique_ptr<UserDefaults>(defaults)};
};

TEST_F(MacPreferencesTest, everyTypeComesBackInTheNextSession) {
    const WallTime date{Seconds{1795271234.56789}};
    const std::vector<double> frame = {-1280.5, 0, 1100, 1.0 / 3};
    EXPECT_TRUE(preferences.setBoolean("yes", true));
    EXPECT_TRUE(preferences.setBoolean("no", false));
    EXPECT_TRUE(preferences.setTexts("texts", {"/Users/me/.npm", "", "/Users/me/Library/Caches/pip"}));
    EXPECT_TRUE(preferences.setTexts("none", {}));
    EXPECT_TRUE(preferences.setDate("date", date));
    EXPECT_TRUE(preferences.setNumbers("frame", frame));
    const MacPreferences next = another();
    EXPECT_EQ(true, next.boolean("yes"));
    EXPECT_EQ(false, next.boolean("no"));
    EXPECT_EQ((Texts{"/Users/me/.npm", "", "/Users/me/Library/Caches/pip"}), next.texts("texts"));
    EXPECT_EQ(Texts{}, next.texts("none"));
    EXPECT_EQ(date, next.date("date"));
    EXPECT_EQ(frame, next.numbers("frame"));
}

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

TEST_F(MacPreferencesTest, everySingleByteAndPairOfBytesSurvives) {
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

TEST_F(MacPreferencesTest, aFailedSaveKeepsTheStoreAndTheValueForThisSession) {
    EXPECT_TRUE(preferences.setBoolean("a", true));
    database.failsSaving = true;
    EXPECT_FALSE(preferences.setBoolean("a", false));
    EXPECT_FALSE(preferences.setTexts("t", {"x"}));
    EXPECT_EQ(false, preferences.boolean("a"));
    EXPECT_EQ(Texts{"x"}, preferences.texts("t"));
    EXPECT_EQ(true, another().boolean("a"));
    EXPECT_EQ(std::nullopt, another().texts("t"));
}

TEST_F(MacPreferencesTest, whatCouldNotBeSavedGoesOutWithTheNextSetThatCan) {
    database.failsSaving = true;
    EXPECT_FALSE(preferences.setBoolean("a", false));
    database.failsSaving = false;
    EXPECT_TRUE(preferences.setBoolean("b", true));
    EXPECT_EQ(false, another().boolean("a"));
    EXPECT_TRUE(another().setBoolean("a", true));
    EXPECT_TRUE(preferences.setBoolean("b", false));
    EXPECT_EQ(true, preferences.boolean("a"));
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

TEST_F(MacPreferencesTest, numbersThatAreNotFiniteAreRefused) {
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(preferences.setNumbers("frame", {0, 0, nothing, 1}));
    EXPECT_FALSE(preferences.setDate("date", WallTime{Seconds{endless}}));
    EXPECT_EQ(std::nullopt, preferences.numbers("frame"));
    EXPECT_EQ(std::nullopt, preferences.date("date"));
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

TEST_F(MacPreferencesTest, anyThreadMaySetAndAsk) {
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
    EXPECT_EQ(200U, database.values.size());
    EXPECT_TRUE(std::all_of(database.values.begin(), database.values.end(),
                            [](const auto& entry) { return entry.second == DefaultsValue(true); }));
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
