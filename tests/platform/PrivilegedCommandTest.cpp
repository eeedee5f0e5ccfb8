#include "platform/PrivilegedCommand.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>

namespace kestrune {
namespace {

using namespace PrivilegedCommand;

// Reads an AppleScript string literal the way the language defines it, without looking at how it was made.
std::optional<std::string> readLiteral(std::string_view literal) {
    if (literal.size() < 2 || literal.front() != '"' || literal.back() != '"') {
        return std::nullopt;
    }
    literal = literal.substr(1, literal.size() - 2);
    std::string text;
    for (std::size_t i = 0; i < literal.size(); ++i) {
        if (literal[i] == '"') {
            return std::nullopt;
        }
        if (literal[i] == '\\') {
            ++i;
            if (i == literal.size() || (literal[i] != '\\' && literal[i] != '"')) {
                return std::nullopt;
            }
        }
        text += literal[i];
    }
    return text;
}

TEST(PrivilegedCommand, everyElementIsQuotedAndJoinedWithOneSpace) {
    EXPECT_EQ(shellQuoted({"/usr/sbin/purge"}), "'/usr/sbin/purge'");
    EXPECT_EQ(shellQuoted({"a", "", "b c", "$HOME"}), "'a' '' 'b c' '$HOME'");
    EXPECT_EQ(shellQuoted({}), "");
}

TEST(PrivilegedCommand, singleQuoteBecomesFourCharacters) {
    EXPECT_EQ(shellQuoted({"it's"}), "'it'\\''s'");
    EXPECT_EQ(shellQuoted({"'"}), "''\\'''");
}

TEST(PrivilegedCommand, backslashesAreEscapedBeforeDoubleQuotes) {
    EXPECT_EQ(scriptLiteral("plain"), "\"plain\"");
    EXPECT_EQ(scriptLiteral("a\"b"), "\"a\\\"b\"");
    EXPECT_EQ(scriptLiteral("a\\b"), "\"a\\\\b\"");
    EXPECT_EQ(scriptLiteral("\\\""), "\"\\\\\\\"\"");
}

TEST(PrivilegedCommand, scriptOfAPlainToolIsExactlyAsAgreed) {
    EXPECT_EQ(administratorScript("/usr/sbin/purge", {}),
              "do shell script \"'/usr/sbin/purge'\" with administrator privileges");
}

TEST(PrivilegedCommand, argumentsAreQuotedForTheShellAndEscapedOnceMore) {
    EXPECT_EQ(administratorScript("/bin/echo", {"it's", "a\"b", "c\\d"}),
              "do shell script \"'/bin/echo' 'it'\\\\''s' 'a\\\"b' 'c\\\\d'\" with administrator privileges");
}

TEST(PrivilegedCommand, randomTextsComeBackFromTheirLiteral) {
    std::mt19937 random(4711);
    std::uniform_int_distribution<std::size_t> length(0, 40);
    std::uniform_int_distribution<std::size_t> pick(0, 11);
    constexpr std::string_view alphabet = "\\\\\"\"'a \n\t$`\xC3";
    for (int i = 0; i < 100'000; ++i) {
        std::string text(length(random), ' ');
        for (char& c : text) {
            c = alphabet[pick(random)];
        }
        ASSERT_EQ(readLiteral(scriptLiteral(text)), text);
    }
}

}  // namespace
}  // namespace kestrune
