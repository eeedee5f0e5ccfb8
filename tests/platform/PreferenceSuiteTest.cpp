#include "platform/PreferenceSuite.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace kestrune {
namespace {

/// KESTRUNE_TEST_SUITE set to value, and afterwards to what it was.
class SuiteVariable final {
public:
    explicit SuiteVariable(const char* value) {
        const char* before = std::getenv(name);
        m_before = before == nullptr ? std::nullopt : std::optional<std::string>(before);
        set(value);
    }

    SuiteVariable(const SuiteVariable&) = delete;
    SuiteVariable& operator=(const SuiteVariable&) = delete;

    ~SuiteVariable() { set(m_before ? m_before->c_str() : nullptr); }

private:
    static constexpr const char* name = "KESTRUNE_TEST_SUITE";

    static void set(const char* value) {
        if (value == nullptr) {
            ::unsetenv(name);
        } else {
            ::setenv(name, value, 1);
        }
    }

    std::optional<std::string> m_before;
};

TEST(PreferenceSuite, onlyPlainNamesNameASuite) {
    for (const std::string& name : {std::string("a"), std::string("A.b-c_9"), std::string(64, 'x'), std::string("-")}) {
        EXPECT_TRUE(PreferenceSuite::isPlainName(name)) << name;
    }
    for (const std::string& name :
         {std::string(), std::string(65, 'x'), std::string(".hidden"), std::string(".."), std::string("a/b"),
          std::string("a b"), std::string("\xC3\xA9"), std::string("a\0b", 3), std::string("preferences")}) {
        EXPECT_FALSE(PreferenceSuite::isPlainName(name)) << name;
    }
}

TEST(PreferenceSuite, theEnvironmentNamesTheSuite) {
    const SuiteVariable variable("my.suite-1");
    EXPECT_EQ("my.suite-1", PreferenceSuite::fromEnvironment());
}

TEST(PreferenceSuite, withoutTheVariableThereIsNoSuite) {
    const SuiteVariable variable(nullptr);
    EXPECT_EQ(std::nullopt, PreferenceSuite::fromEnvironment());
}

TEST(PreferenceSuiteDeathTest, aSuiteThatCannotBeUsedEndsTheProgramWithASentence) {
    const SuiteVariable variable("../elsewhere");
    EXPECT_EXIT(static_cast<void>(PreferenceSuite::fromEnvironment()), testing::ExitedWithCode(EXIT_FAILURE),
                "KESTRUNE_TEST_SUITE is not the plain name of a preference suite");
}

TEST(PreferenceSuiteDeathTest, aSuiteThatIsSetAndEmptyEndsTheProgram) {
    const SuiteVariable variable("");
    EXPECT_EXIT(static_cast<void>(PreferenceSuite::fromEnvironment()), testing::ExitedWithCode(EXIT_FAILURE), "");
}

}  // namespace
}  // namespace kestrune
