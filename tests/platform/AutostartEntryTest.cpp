#include "platform/linux/AutostartEntry.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

std::string execOf(const std::string& path) {
    const std::string text = AutostartEntry::textFor(path).value_or("");
    const std::size_t begin = text.find("\nExec=") + 6;
    return text.substr(begin, text.find('\n', begin) - begin);
}

TEST(AutostartEntry, pathIsQuotedByTheRulesOfTheExecKey) {
    EXPECT_EQ(execOf("/usr/bin/kestrune"), R"("/usr/bin/kestrune")");
    EXPECT_EQ(execOf("/a b/it's"), R"("/a b/it's")");
    EXPECT_EQ(execOf("/ä/\xE6\x97\xA5"), "\"/ä/\xE6\x97\xA5\"");
    // One backslash for the quotes, then every backslash doubled for the value.
    EXPECT_EQ(execOf(R"(/a"b)"), R"("/a\\"b")");
    EXPECT_EQ(execOf("/$HOME"), R"("/\\$HOME")");
    EXPECT_EQ(execOf("/`id`"), R"("/\\`id\\`")");
    EXPECT_EQ(execOf(R"(/a\b)"), R"("/a\\\\b")");
}

TEST(AutostartEntry, percentSignIsDoubledBehindAProgramThatIsFoundByItsName) {
    EXPECT_EQ(execOf("/100%/%f"), R"(/usr/bin/nice -n 0 "/100%%/%%f")");
}

TEST(AutostartEntry, pathThatAnEntryCannotHoldHasNone) {
    for (const char* const path : {"", "kestrune", "/a\nb", "/a\rb", "/a\tb", "/a\x7f", "/a\xFF"}) {
        EXPECT_FALSE(AutostartEntry::textFor(path)) << path;
    }
}

TEST(AutostartEntry, ownEntryIsOnAndAsksForItsProgram) {
    const AutostartEntry::Reading expected{true, false, R"(/a b\%/kestrune)"};
    EXPECT_EQ(AutostartEntry::read(AutostartEntry::textFor(R"(/a b\%/kestrune)").value_or("")), expected);
}

TEST(AutostartEntry, switchesAreReadInTheirGroupAlone) {
    EXPECT_TRUE(AutostartEntry::read("[Desktop Entry]\nHidden = true\n").isSwitchedOff);
    EXPECT_TRUE(AutostartEntry::read("[Desktop Entry]\r\nX-GNOME-Autostart-enabled=false\r\n").isSwitchedOff);
    EXPECT_FALSE(AutostartEntry::read("[Desktop Entry]\n#Hidden=true\nHidden=false\n").isSwitchedOff);
    EXPECT_FALSE(AutostartEntry::read("[Desktop Entry]\n[Desktop Action a]\nHidden=true\n").isSwitchedOff);
    EXPECT_FALSE(AutostartEntry::read("Hidden=true\n").isSwitchedOff);
    EXPECT_EQ(AutostartEntry::read("[Desktop Entry]\nTryExec=/a\\sb\\\\n\n").tryExec, "/a b\\n");
    EXPECT_FALSE(AutostartEntry::read("no entry at all").isEntry);
}

TEST(AutostartEntry, ownEntryIsKnownWhereverItLeads) {
    const std::string ours = AutostartEntry::textFor("/old/place").value_or("");
    EXPECT_TRUE(AutostartEntry::isOurs(ours));
    EXPECT_FALSE(AutostartEntry::isOurs(ours + "X-Delay=5\n"));
    EXPECT_FALSE(AutostartEntry::isOurs(AutostartEntry::switched(ours, false)));
    EXPECT_FALSE(AutostartEntry::isOurs(""));
}

TEST(AutostartEntry, switchingKeepsEverythingElse) {
    const std::string edited =
        "# mine\n[Desktop Entry]\nName=K\nHidden=true\nExec=env A=1 kestrune\n[Other]\nHidden=true";
    EXPECT_EQ(AutostartEntry::switched(edited, true),
              "# mine\n[Desktop Entry]\nX-GNOME-Autostart-enabled=true\nName=K\nHidden=false\nExec=env A=1 kestrune\n"
              "[Other]\nHidden=true");
    EXPECT_EQ(AutostartEntry::switched("[Desktop Entry]\nName=K\n", false), "[Desktop Entry]\nHidden=true\nName=K\n");
    EXPECT_FALSE(AutostartEntry::read(AutostartEntry::switched(edited, true)).isSwitchedOff);
}

TEST(AutostartEntry, redirectingReplacesTheProgramAlone) {
    EXPECT_EQ(AutostartEntry::redirected("[Desktop Entry]\nExec=/old\nTryExec=/old\nX-Delay=5\n", "/new place"),
              "[Desktop Entry]\nExec=\"/new place\"\nTryExec=/new place\nX-Delay=5\n");
}

}  // namespace
}  // namespace kestrune
