#include "platform/linux/DesktopEntryIndex.h"

#include <gtest/gtest.h>

namespace kestrune {
namespace {

DesktopEntry entry(const std::string& id, const std::string& windowClass, std::vector<std::string> programs) {
    DesktopEntry made;
    made.id = id;
    made.windowClass = windowClass;
    made.programs = std::move(programs);
    return made;
}

std::string idOf(const DesktopEntry* found) {
    return found == nullptr ? "none" : found->id;
}

TEST(DesktopEntryIndex, hintsComeBeforeProgramsAndTheirOrderCounts) {
    const DesktopEntryIndex index({entry("one", "Klass", {"a"}), entry("org.two", "", {"b"})});
    EXPECT_EQ(idOf(index.find({"KLASS", "org.two"}, {"b"})), "one");
    EXPECT_EQ(idOf(index.find({"Org.Two", "klass"}, {"a"})), "org.two");
    EXPECT_EQ(idOf(index.find({"org.two.desktop"}, {})), "org.two");
    EXPECT_EQ(idOf(index.find({"unknown"}, {"", "b", "a"})), "org.two");
    EXPECT_EQ(idOf(index.find({"unknown", "a"}, {"x"})), "one");
    EXPECT_EQ(idOf(index.find({"unknown", ""}, {"", "x"})), "none");
    EXPECT_EQ(idOf(DesktopEntryIndex().find({"one"}, {"a"})), "none");
}

TEST(DesktopEntryIndex, plainEntryComesBeforeOneWithArguments) {
    DesktopEntry settings = entry("a-settings", "", {"editor"});
    settings.hasOwnArguments = true;
    const DesktopEntryIndex index({settings, entry("editor-main", "", {"editor"}), entry("third", "", {"editor"})});
    EXPECT_EQ(idOf(index.find({}, {"editor"})), "editor-main");
}

TEST(DesktopEntryIndex, shownEntryComesBeforeAHiddenOneThatStillCounts) {
    DesktopEntry hidden = entry("handler", "Shared", {"tool"});
    hidden.isShown = false;
    EXPECT_EQ(idOf(DesktopEntryIndex({hidden}).find({"shared"}, {})), "handler");
    EXPECT_EQ(idOf(DesktopEntryIndex({hidden, entry("main", "Shared", {})}).find({"shared"}, {})), "main");
}

}  // namespace
}  // namespace kestrune
