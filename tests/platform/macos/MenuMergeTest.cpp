#include "platform/macos/MenuMerge.h"

#include <gtest/gtest.h>

#include <string>

#include "base/Text.h"

namespace kestrune {
namespace {

MenuItem line(std::string title, MenuAction action = MenuAction::none) {
    MenuItem item;
    item.title = std::move(title);
    item.action = action;
    return item;
}

MenuItem separator() {
    MenuItem item;
    item.separator = true;
    return item;
}

/// A head, a line that may hide, a separator, a command and a submenu of one command.
std::vector<MenuItem> menu() {
    MenuItem hidden = line("");
    hidden.hidden = true;
    MenuItem advanced = line("Advanced");
    advanced.submenu = {line("Clear", MenuAction::clearMemory)};
    return {line("Memory 63%"), hidden, separator(), line("Clean", MenuAction::quickClean), advanced};
}

class MenuMergeTest : public ::testing::Test {
protected:
    MenuMergeTest() { static_cast<void>(m_merge.show(menu())); }

    MenuMerge m_merge;
};

TEST(MenuMerge, theFirstMenuIsBuiltAsAWhole) {
    EXPECT_EQ(MenuMerge().show(menu()), (MenuSteps{menu(), {}}));
}

TEST_F(MenuMergeTest, aMenuThatIsTheSameCostsNothing) {
    EXPECT_EQ(m_merge.show(menu()), MenuSteps{});
}

TEST_F(MenuMergeTest, onlyTheLineThatDiffersIsChanged) {
    auto wanted = menu();
    wanted[0].title = "Memory 64%";
    wanted[3].enabled = false;
    EXPECT_EQ(m_merge.show(wanted), (MenuSteps{std::nullopt, {{{0}, wanted[0]}, {{3}, wanted[3]}}}));
    EXPECT_EQ(m_merge.show(wanted), MenuSteps{}) << "it is shown by then";
}

TEST_F(MenuMergeTest, aLineOfASubmenuIsNamedByBothPlaces) {
    auto wanted = menu();
    wanted[4].submenu[0].tooltip = "Optional.";
    EXPECT_EQ(m_merge.show(wanted), (MenuSteps{std::nullopt, {{{4, 0}, wanted[4].submenu[0]}}}));
}

TEST_F(MenuMergeTest, aHiddenLineComesIntoAClosedMenuAtOnce) {
    auto wanted = menu();
    wanted[1].hidden = false;
    wanted[1].title = "Done.";
    EXPECT_EQ(m_merge.show(wanted), (MenuSteps{std::nullopt, {{{1}, wanted[1]}}}));
}

TEST_F(MenuMergeTest, anOpenMenuFollowsTheFiguresButNoLineComesOrGoes) {
    m_merge.opened();
    auto wanted = menu();
    wanted[0].title = "Memory 64%";
    wanted[1].hidden = false;
    wanted[1].title = "Done.";
    MenuItem stillHidden = wanted[1];
    stillHidden.hidden = true;
    EXPECT_EQ(m_merge.show(wanted), (MenuSteps{std::nullopt, {{{0}, wanted[0]}, {{1}, stillHidden}}}));
    EXPECT_EQ(m_merge.closed(), (MenuSteps{std::nullopt, {{{1}, wanted[1]}}}));
    EXPECT_EQ(m_merge.closed(), MenuSteps{});
}

TEST_F(MenuMergeTest, anotherStructureWaitsUntilTheMenuHasClosed) {
    m_merge.opened();
    auto wanted = menu();
    wanted.erase(wanted.begin());
    EXPECT_EQ(m_merge.show(wanted), MenuSteps{});
    EXPECT_EQ(m_merge.closed(), (MenuSteps{wanted, {}}));
}

TEST_F(MenuMergeTest, whatWaitedAndIsGoneAgainIsNeverDone) {
    m_merge.opened();
    auto wanted = menu();
    wanted.push_back(line("One more"));
    static_cast<void>(m_merge.show(wanted));
    static_cast<void>(m_merge.show(menu()));
    EXPECT_EQ(m_merge.closed(), MenuSteps{});
}

TEST_F(MenuMergeTest, aLineThatDoesSomethingElseIsAnotherLine) {
    auto wanted = menu();
    wanted[3].action = MenuAction::cleanSaved;
    EXPECT_EQ(m_merge.show(wanted).rebuilt, wanted);
    wanted[3].key = "l";
    EXPECT_EQ(m_merge.show(wanted).rebuilt, wanted);
    wanted[4].submenu.clear();
    EXPECT_EQ(m_merge.show(wanted).rebuilt, wanted);
    wanted[0] = separator();
    EXPECT_EQ(m_merge.show(wanted).rebuilt, wanted);
}

TEST(FittedLine, aLineThatFitsStaysAsItIs) {
    MenuItem item = line("⚙️ Settings & Help…");
    item.tooltip = "Help.";
    EXPECT_EQ(fitted(item), item);
    EXPECT_EQ(fitted(line(std::string(80, 'm'))).title, std::string(80, 'm'));
}

TEST(FittedLine, aLongMessageIsCutAndExplainedByItsTooltip) {
    std::string message;
    for (int i = 0; i < 81; ++i) {
        message += "ü";
    }
    const MenuItem shown = fitted(line(message));
    EXPECT_EQ(characterCount(shown.title), 80U);
    EXPECT_TRUE(shown.title.ends_with("ü…"));
    EXPECT_EQ(shown.tooltip, message);
}

TEST(FittedLine, aTooltipOfItsOwnStays) {
    MenuItem item = line(std::string(200, 'm'));
    item.tooltip = "Own.";
    EXPECT_EQ(fitted(item).tooltip, "Own.");
}

TEST(FittedLine, aForeignNameStaysOnOneLine) {
    EXPECT_EQ(fitted(line("Close R&D\n <b>Tool</b>\tfirst.")).title, "Close R&D <b>Tool</b> first.");
}

}  // namespace
}  // namespace kestrune
