#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "platform/Preferences.h"

namespace kestrune {

/// Where one system keeps settings, in memory.
class PreferencesHost {
public:
    PreferencesHost() = default;
    PreferencesHost(const PreferencesHost&) = delete;
    PreferencesHost& operator=(const PreferencesHost&) = delete;
    virtual ~PreferencesHost() = default;

    /// The preferences of a program that starts now.
    [[nodiscard]] virtual std::unique_ptr<Preferences> startProgram() = 0;

    /// Whether nothing can be saved from now on.
    virtual void failSaving(bool fails) = 0;
};

/// One system's host.
struct PreferencesHostMaker {
    const char* system;
    std::unique_ptr<PreferencesHost> (*make)();

    friend void PrintTo(const PreferencesHostMaker& maker, std::ostream* out) { *out << maker.system; }
};

/// What every system's Preferences are held to. A test program instantiates it with its own host.
class PreferencesTest : public testing::TestWithParam<PreferencesHostMaker> {
protected:
    using Texts = Preferences::Texts;

    const std::unique_ptr<PreferencesHost> host = GetParam().make();
    const std::unique_ptr<Preferences> preferences = host->startProgram();
};

TEST_P(PreferencesTest, everyTypeComesBackInTheNextSession) {
    const WallTime date{Seconds{1795271234.56789}};
    const std::vector<double> frame = {-1280.5, 0, 1100, 1.0 / 3};
    EXPECT_TRUE(preferences->setBoolean("yes", true));
    EXPECT_TRUE(preferences->setBoolean("no", false));
    EXPECT_TRUE(preferences->setTexts("texts", {"/home/user/.npm", "", "/home/user/.cache/pip"}));
    EXPECT_TRUE(preferences->setTexts("none", {}));
    EXPECT_TRUE(preferences->setDate("date", date));
    EXPECT_TRUE(preferences->setNumbers("frame", frame));
    const auto next = host->startProgram();
    EXPECT_EQ(true, next->boolean("yes"));
    EXPECT_EQ(false, next->boolean("no"));
    EXPECT_EQ((Texts{"/home/user/.npm", "", "/home/user/.cache/pip"}), next->texts("texts"));
    EXPECT_EQ(Texts{}, next->texts("none"));
    EXPECT_EQ(date, next->date("date"));
    EXPECT_EQ(frame, next->numbers("frame"));
}

TEST_P(PreferencesTest, textsAreBytes) {
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
    EXPECT_TRUE(preferences->setTexts("odd", odd));
    EXPECT_EQ(odd, preferences->texts("odd"));
    EXPECT_EQ(odd, host->startProgram()->texts("odd"));
}

TEST_P(PreferencesTest, everySingleByteAndPairOfBytesSurvives) {
    Texts all;
    for (int first = 0; first < 256; ++first) {
        all.emplace_back(1, static_cast<char>(first));
        for (int second = 0; second < 256; second += 5) {
            all.push_back({static_cast<char>(first), static_cast<char>(second)});
        }
    }
    EXPECT_TRUE(preferences->setTexts("all", all));
    EXPECT_EQ(all, host->startProgram()->texts("all"));
}

TEST_P(PreferencesTest, aFailedSaveKeepsWhatIsSavedAndTheValueForThisSession) {
    EXPECT_TRUE(preferences->setBoolean("a", true));
    host->failSaving(true);
    EXPECT_FALSE(preferences->setBoolean("a", false));
    EXPECT_FALSE(preferences->setTexts("t", {"x"}));
    EXPECT_EQ(false, preferences->boolean("a"));
    EXPECT_EQ(Texts{"x"}, preferences->texts("t"));
    EXPECT_EQ(true, host->startProgram()->boolean("a"));
    EXPECT_EQ(std::nullopt, host->startProgram()->texts("t"));
}

TEST_P(PreferencesTest, whatCouldNotBeSavedGoesOutWithTheNextSetThatCan) {
    EXPECT_TRUE(preferences->setBoolean("a", true));
    host->failSaving(true);
    EXPECT_FALSE(preferences->setBoolean("a", false));
    host->failSaving(false);
    EXPECT_TRUE(preferences->setBoolean("b", true));
    EXPECT_EQ(false, host->startProgram()->boolean("a"));
    EXPECT_TRUE(host->startProgram()->setBoolean("a", true));
    EXPECT_TRUE(preferences->setBoolean("b", false));
    EXPECT_EQ(true, host->startProgram()->boolean("a"));
}

TEST_P(PreferencesTest, moreThanAMebibyteHoldsForThisSession) {
    const Texts large = {std::string(std::size_t{1024} * 1024, 'x')};
    EXPECT_TRUE(preferences->setTexts("large", {"before"}));
    EXPECT_FALSE(preferences->setTexts("large", large));
    EXPECT_EQ(large, preferences->texts("large"));
    EXPECT_EQ(Texts{"before"}, host->startProgram()->texts("large"));
    EXPECT_TRUE(preferences->setTexts("large", {"small"}));
    EXPECT_EQ(Texts{"small"}, host->startProgram()->texts("large"));
}

TEST_P(PreferencesTest, numbersThatAreNotFiniteAreRefused) {
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(preferences->setNumbers("frame", {0, 0, nothing, 1}));
    EXPECT_FALSE(preferences->setDate("date", WallTime{Seconds{endless}}));
    EXPECT_EQ(std::nullopt, preferences->numbers("frame"));
    EXPECT_EQ(std::nullopt, preferences->date("date"));
}

TEST_P(PreferencesTest, anyThreadMaySetAndAsk) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this, thread] {
            for (int round = 0; round < 50; ++round) {
                const std::string key = std::to_string(thread) + "-" + std::to_string(round);
                EXPECT_TRUE(preferences->setBoolean(key, true));
                EXPECT_EQ(true, preferences->boolean(key));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const auto next = host->startProgram();
    for (int thread = 0; thread < 4; ++thread) {
        for (int round = 0; round < 50; ++round) {
            EXPECT_EQ(true, next->boolean(std::to_string(thread) + "-" + std::to_string(round)));
        }
    }
}

}  // namespace kestrune
