#include "platform/linux/LoginUnit.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

TEST(LoginUnit, saysWhatALaunchAgentWould) {
    EXPECT_EQ(LoginUnit::textFor("/usr/bin/kestrune"),
              "[Unit]\nDescription=Kestrune\nPartOf=graphical-session.target\nAfter=graphical-session.target\n\n"
              "[Service]\nExecStart=:\"/usr/bin/kestrune\"\nRestart=no\nSlice=background.slice\n\n"
              "[Install]\nWantedBy=graphical-session.target\n");
}

TEST(LoginUnit, pathIsQuotedByTheRulesOfSystemd) {
    const auto startOf = [](const std::string& path) {
        const std::string text = LoginUnit::textFor(path).value_or("");
        const std::size_t begin = text.find("ExecStart=") + 10;
        return text.substr(begin, text.find('\n', begin) - begin);
    };
    EXPECT_EQ(startOf("/a b/$HOME/100%"), R"(:"/a b/$HOME/100%%")");
    EXPECT_EQ(startOf(R"(/a"b)"), R"(:/usr/bin/nice -n 0 "/a\"b")");
    EXPECT_EQ(startOf(R"(/a\b)"), R"(:/usr/bin/nice -n 0 "/a\\b")");
    EXPECT_EQ(startOf("/it's"), R"(:/usr/bin/nice -n 0 "/it's")");
}

TEST(LoginUnit, pathThatAUnitCannotHoldHasNone) {
    for (const char* const path : {"", "kestrune", "/a\nb", "/a\x01", "/a\x7f", "/a\xFF"}) {
        EXPECT_FALSE(LoginUnit::textFor(path)) << path;
    }
}

TEST(LoginUnit, ownUnitIsKnownWhereverItLeads) {
    const std::string ours = LoginUnit::textFor("/old/place").value_or("");
    EXPECT_TRUE(LoginUnit::isOurs(ours));
    EXPECT_FALSE(LoginUnit::isOurs(ours + "# mine\n"));
    EXPECT_FALSE(LoginUnit::isOurs(""));
}

}  // namespace
}  // namespace kestrune
