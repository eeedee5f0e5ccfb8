#include "app/StatusMenuModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace kestrune {

namespace {

StatusMenuModel refreshed(const StatusMenuState& state) {
    StatusMenuModel model;
    model.refresh(state);
    return model;
}

const MenuItem& itemFor(const StatusMenuModel& model, MenuAction action) {
    return *std::find_if(model.items().begin(), model.items().end(),
                         [&](const MenuItem& item) { return item.action == action; });
}

}  // namespace

TEST(StatusMenuModel, dumpHas23LinesAndEmptyOnesWhereOnlyARefreshPutsText) {
    EXPECT_EQ(
        dumpMenu(StatusMenuModel().items()),
        "Kestrune\n\n\n---\n🧹 Clean Build Caches…\n📋 Clean the Same Folders Again…\n"
        "🌐 Find What’s Using a Port…\n🔒 Keep My Current App Open\n🚪 Quit Other Apps…\n---\n"
        "✦ Open Kestrune\n💾 Find What’s Taking Space…\n🖥 Running Apps…\n📂 Find Big Files…\n🧠 AI "
        "Tools…\n"
        "🔁 Daily Scan Reminders\n🕘 Recent Actions…\n---\nCheck for Updates…\n⚙️ Settings & "
        "Help…\nAdvanced\n---\n"
        "Quit Kestrune\n");
}

TEST(StatusMenuModel, titleAndTooltipTellTheMemoryUse) {
    const StatusMenuModel model = refreshed({.memoryPercent = 63});
    EXPECT_EQ(model.title(), "🧹 63%");
    EXPECT_EQ(model.tooltip(), "Kestrune · Memory usage 63%");
}

TEST(StatusMenuModel, anUpdateShowsInTitleTooltipAndItem) {
    const StatusMenuModel model = refreshed({.memoryPercent = 63, .updateAvailable = true});
    EXPECT_EQ(model.title(), "🧹 ↑ 63%");
    EXPECT_EQ(model.tooltip(), "Kestrune · Memory usage 63% · Update available");
    EXPECT_EQ(itemFor(model, MenuAction::checkUpdates).title, "Update Available — Install…");
}

TEST(StatusMenuModel, theUpdateItemReturnsToItsTitleWhenTheUpdateIsGone) {
    StatusMenuModel model = refreshed({.updateAvailable = true});
    model.refresh({});
    EXPECT_EQ(itemFor(model, MenuAction::checkUpdates).title, "Check for Updates…");
}

TEST(StatusMenuModel, resourceLineTellsMemoryAndFreeDisk) {
    EXPECT_EQ(refreshed({.memoryPercent = 63, .freeDiskGB = 120}).items()[1].title,
              "Memory 63% · 120 GB disk available");
}

TEST(StatusMenuModel, resultLineIsHiddenUntilThereIsAMessage) {
    EXPECT_TRUE(StatusMenuModel().items()[2].hidden);
    StatusMenuModel model = refreshed({.message = "Moved 2 items to Trash."});
    EXPECT_FALSE(model.items()[2].hidden);
    EXPECT_EQ(model.items()[2].title, "Moved 2 items to Trash.");
    model.refresh({});
    EXPECT_TRUE(model.items()[2].hidden);
    EXPECT_EQ(model.items()[2].title, "");
}

TEST(StatusMenuModel, theFirstThreeLinesAreNeverEnabled) {
    const StatusMenuModel model = refreshed({.message = "Done."});
    for (std::size_t place = 0; place < 3; ++place) {
        EXPECT_FALSE(model.items()[place].enabled) << place;
    }
}

TEST(StatusMenuModel, aScanDisablesBothCleaningItemsAndRenamesTheFirst) {
    const StatusMenuModel model = refreshed({.isScanning = true});
    EXPECT_EQ(itemFor(model, MenuAction::quickClean).title, "🧹 Scanning Caches…");
    EXPECT_FALSE(itemFor(model, MenuAction::quickClean).enabled);
    EXPECT_FALSE(itemFor(model, MenuAction::cleanSaved).enabled);
}

TEST(StatusMenuModel, aCleanupDisablesBothCleaningItemsUnderTheirOwnTitles) {
    const StatusMenuModel model = refreshed({.isCleaning = true});
    EXPECT_EQ(itemFor(model, MenuAction::quickClean).title, "🧹 Clean Build Caches…");
    EXPECT_FALSE(itemFor(model, MenuAction::quickClean).enabled);
    EXPECT_FALSE(itemFor(model, MenuAction::cleanSaved).enabled);
}

TEST(StatusMenuModel, cleaningItemsComeBackAfterwards) {
    StatusMenuModel model = refreshed({.isScanning = true, .isCleaning = true});
    model.refresh({});
    EXPECT_TRUE(itemFor(model, MenuAction::quickClean).enabled);
    EXPECT_TRUE(itemFor(model, MenuAction::cleanSaved).enabled);
}

TEST(StatusMenuModel, remindersShowAsACheckMark) {
    EXPECT_EQ(itemFor(StatusMenuModel(), MenuAction::toggleDaily).checked, false);
    EXPECT_EQ(itemFor(refreshed({.reminders = true}), MenuAction::toggleDaily).checked, true);
    EXPECT_EQ(itemFor(refreshed({}), MenuAction::toggleDaily).checked, false);
}

TEST(StatusMenuModel, onlyTheReminderItemIsACheckItem) {
    const auto items = StatusMenuModel().items();
    EXPECT_EQ(std::count_if(items.begin(), items.end(), [](const MenuItem& item) { return item.checked.has_value(); }),
              1);
}

TEST(StatusMenuModel, keysAreTheOnesOfTheMenu) {
    std::string keys;
    const StatusMenuModel model;
    for (const MenuItem& item : model.items()) {
        keys += item.key.empty() ? "-" : item.key;
    }
    EXPECT_EQ(keys, "----lsn-e-odkbim--u,--q");
}

TEST(StatusMenuModel, fourCommandsExplainThemselves) {
    const StatusMenuModel model;
    EXPECT_EQ(itemFor(model, MenuAction::quickClean).tooltip,
              "Review files your developer tools can build or download again, then choose what goes to Trash.");
    EXPECT_EQ(itemFor(model, MenuAction::cleanSaved).tooltip,
              "Review the folders you saved in Storage. Nothing is removed until you confirm.");
    EXPECT_EQ(itemFor(model, MenuAction::openPorts).tooltip,
              "Find the app or server using a port, then confirm before stopping its process.");
    EXPECT_EQ(itemFor(model, MenuAction::protectCurrent).tooltip,
              "Keep the app you were using safe from Kestrune’s quit actions.");
    const auto& items = model.items();
    EXPECT_EQ(std::count_if(items.begin(), items.end(), [](const MenuItem& item) { return !item.tooltip.empty(); }), 4);
}

TEST(StatusMenuModel, advancedHoldsOneItemWithItsExplanation) {
    const MenuItem advanced = StatusMenuModel().items()[20];
    ASSERT_EQ(advanced.submenu.size(), 1U);
    EXPECT_EQ(advanced.submenu[0].title, "Clear Cached Memory…");
    EXPECT_EQ(advanced.submenu[0].key, "p");
    EXPECT_EQ(advanced.submenu[0].tooltip,
              "Optional memory reset. macOS normally manages memory; this may ask for an administrator password.");
}

TEST(StatusMenuModel, everyCommandIsEnabledAndShown) {
    const StatusMenuModel model = refreshed({});
    for (const MenuItem& item : model.items()) {
        if (item.action != MenuAction::none) {
            EXPECT_TRUE(item.enabled) << item.title;
            EXPECT_FALSE(item.hidden) << item.title;
        }
    }
    EXPECT_TRUE(model.items()[20].enabled);
    EXPECT_TRUE(model.items()[20].submenu[0].enabled);
}

TEST(StatusMenuModel, clearingMemoryAndQuittingStayEnabledWhileSomethingRuns) {
    const StatusMenuModel model = refreshed({.isScanning = true, .isCleaning = true});
    EXPECT_TRUE(itemFor(model, MenuAction::quitOtherApps).enabled);
    EXPECT_TRUE(model.items()[20].submenu[0].enabled);
}

TEST(MainMenu, hasFourTopLevelItemsWithTheirCommands) {
    const auto menu = mainMenu();
    ASSERT_EQ(menu.size(), 4U);
    EXPECT_EQ(dumpMenu(menu), "\nEdit\nActions\nView\n");
    EXPECT_EQ(dumpMenu(menu[0].submenu), "Quit Kestrune\n");
    EXPECT_EQ(dumpMenu(menu[1].submenu), "Undo\nCut\nCopy\nPaste\nSelect All\n");
    EXPECT_EQ(dumpMenu(menu[2].submenu),
              "Clear Cached Memory (Advanced)…\nClean Build Caches…\nClean the Same Folders Again…\n"
              "Find What’s Using a Port…\nKeep My Current App Open\nQuit Other Apps…\n");
    EXPECT_EQ(dumpMenu(menu[3].submenu),
              "Overview\nStorage\nDisk Explorer\nAI Tools\nRunning Apps\nSettings\nCheck for Updates…\n");
}

TEST(MainMenu, keysAreTheOnesOfTheMenu) {
    const std::array<std::string, 4> expected{"q", "zxcva", "plsn-e", "odbik,u"};
    const std::vector<MenuItem> menus = mainMenu();
    for (std::size_t place = 0; place < expected.size(); ++place) {
        std::string keys;
        for (const MenuItem& item : menus.at(place).submenu) {
            keys += item.key.empty() ? "-" : item.key;
        }
        EXPECT_EQ(keys, expected[place]);
    }
}

}  // namespace kestrune
