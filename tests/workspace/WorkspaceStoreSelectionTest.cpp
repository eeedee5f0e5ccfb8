#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

class WorkspaceStoreSelection : public testing::Test {
protected:
    WorkspaceStoreSelection() {
        gradle = fixture.addCache("Gradle Caches", 9'000'000);
        npm = fixture.addCache("NPM Global Cache", 8'000'000);
        ollama = fixture.addCache("Ollama Models", 7'000'000);
        logs = fixture.addCache("User Logs", 30'000'000);
    }

    [[nodiscard]] CleanTarget target(const std::string& path) {
        for (const auto& known : fixture.store().targets.get()) {
            if (known.path == path) {
                return known;
            }
        }
        return {};
    }

    StoreFixture fixture;
    std::string gradle;
    std::string npm;
    std::string ollama;
    std::string logs;
};

std::vector<std::string> titlesOf(const std::vector<CleanTarget>& targets) {
    std::vector<std::string> titles;
    for (const auto& known : targets) {
        titles.push_back(known.title);
    }
    return titles;
}

}  // namespace

TEST_F(WorkspaceStoreSelection, recommendedHoldsBuildCachesOnlyAndNeverLogs) {
    fixture.scan();
    EXPECT_EQ(titlesOf(fixture.store().recommended()), (std::vector<std::string>{"Gradle Caches", "NPM Global Cache"}));
    EXPECT_EQ(fixture.store().recommendedBytes(), 17'000'000);
}

TEST_F(WorkspaceStoreSelection, whatIsSelectedKeepsTheTargetsOrder) {
    fixture.scan();
    fixture.store().setSelected(ollama, true);
    fixture.store().setSelected(logs, true);
    fixture.store().setSelected("/somewhere/else", true);
    EXPECT_EQ(titlesOf(fixture.store().selected()), (std::vector<std::string>{"User Logs", "Ollama Models"}));
    EXPECT_EQ(fixture.store().selectedBytes(), 37'000'000);
    fixture.store().setSelected(logs, false);
    EXPECT_EQ(fixture.store().selectedBytes(), 7'000'000);
    fixture.store().clearSelection();
    EXPECT_TRUE(fixture.store().selected().empty());
}

TEST_F(WorkspaceStoreSelection, excludingASelectedTargetRemovesItAtOnceAndIncludingDoesNotReselect) {
    fixture.scan();
    fixture.store().setSelected(gradle, true);
    fixture.store().setSelected(npm, true);
    fixture.store().toggleExclusion(target(gradle));
    EXPECT_EQ(fixture.store().selection.get(), (std::set<std::string>{npm}));
    EXPECT_EQ(titlesOf(fixture.store().selected()), (std::vector<std::string>{"NPM Global Cache"}));
    EXPECT_EQ(fixture.store().selectedBytes(), 8'000'000);
    EXPECT_EQ(fixture.preferences.texts("kestrune_exclusions"), (Preferences::Texts{gradle}));
    fixture.store().toggleExclusion(target(gradle));
    EXPECT_EQ(fixture.store().selection.get(), (std::set<std::string>{npm}));
    EXPECT_EQ(fixture.preferences.texts("kestrune_exclusions"), Preferences::Texts{});
}

TEST_F(WorkspaceStoreSelection, anExcludedTargetIsNeverSelectedWhateverTheSelectionHolds) {
    fixture.preferences.values["kestrune_exclusions"] = Preferences::Texts{gradle};
    fixture.scan();
    fixture.store().setSelected(gradle, true);
    EXPECT_TRUE(fixture.store().selected().empty());
    EXPECT_EQ(fixture.store().targets.get().size(), 4U);
    EXPECT_EQ(fixture.store().visibleTargets().size(), 3U);
    EXPECT_EQ(titlesOf(fixture.store().recommended()), (std::vector<std::string>{"NPM Global Cache"}));
}

TEST_F(WorkspaceStoreSelection, savingWritesTheSelectionAndSaysHowToUseIt) {
    fixture.scan();
    fixture.store().setSelected(npm, true);
    fixture.store().setSelected(gradle, true);
    fixture.store().saveSelection();
    EXPECT_EQ(fixture.store().savedSelection(), (std::vector<std::string>{gradle, npm}));
    EXPECT_EQ(fixture.preferences.texts("kestrune_saved_selection"), (Preferences::Texts{gradle, npm}));
    EXPECT_EQ(fixture.store().message.get(),
              "Folders saved. Choose Use Saved Folders after a scan, or Clean the Same Folders Again from the menu.");
}

TEST_F(WorkspaceStoreSelection, restoringReplacesTheSelectionByTheSavedFolders) {
    fixture.preferences.values["kestrune_saved_selection"] = Preferences::Texts{gradle, "/gone"};
    fixture.scan();
    fixture.store().setSelected(npm, true);
    fixture.store().restoreSelection();
    EXPECT_EQ(fixture.store().selection.get(), (std::set<std::string>{gradle}));
}

TEST_F(WorkspaceStoreSelection, aSavedFolderThatFellBelowItsThresholdIsNotRestored) {
    fixture.scan();
    fixture.store().setSelected(gradle, true);
    fixture.store().setSelected(npm, true);
    fixture.store().saveSelection();
    fixture.walker.add(gradle, 4'000'000);
    fixture.scan();
    fixture.store().restoreSelection();
    EXPECT_EQ(fixture.store().selection.get(), (std::set<std::string>{npm}));
}

TEST_F(WorkspaceStoreSelection, aSavedFolderThatWasExcludedSinceIsLeftOut) {
    fixture.scan();
    fixture.store().setSelected(gradle, true);
    fixture.store().saveSelection();
    fixture.store().toggleExclusion(target(gradle));
    fixture.store().restoreSelection();
    EXPECT_TRUE(fixture.store().selection.get().empty());
}

TEST_F(WorkspaceStoreSelection, withoutASavedListThereIsNothingToRestore) {
    fixture.scan();
    EXPECT_TRUE(fixture.store().savedSelection().empty());
    fixture.store().setSelected(gradle, true);
    fixture.store().restoreSelection();
    EXPECT_TRUE(fixture.store().selection.get().empty());
}

TEST_F(WorkspaceStoreSelection, usingSavedFoldersWithoutASavedListSaysSoAndKeepsTheSelection) {
    fixture.scan();
    fixture.store().setSelected(gradle, true);
    fixture.store().useSavedFolders();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts.front().messageText, "No saved items to clean");
    EXPECT_EQ(fixture.store().selection.get(), std::set<std::string>{gradle});
}

TEST_F(WorkspaceStoreSelection, usingSavedFoldersThatAreAllExcludedSaysThatNothingIsLeft) {
    fixture.scan();
    fixture.store().setSelected(gradle, true);
    fixture.store().saveSelection();
    fixture.store().useSavedFolders();
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    fixture.store().toggleExclusion(target(gradle));
    fixture.store().useSavedFolders();
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_TRUE(fixture.store().selected().empty());
}

TEST_F(WorkspaceStoreSelection, settingsThatCannotBeSavedHoldForTheSessionAndSaySo) {
    const std::string unsaved = "This setting works for this session, but couldn't be saved.";
    fixture.scan();
    fixture.preferences.failsSaving = true;
    fixture.store().toggleExclusion(target(gradle));
    EXPECT_EQ(fixture.store().message.get(), unsaved);
    EXPECT_TRUE(fixture.store().excluded.get().contains(gradle));
    fixture.store().message.set(std::nullopt);
    fixture.store().saveSelection();
    EXPECT_EQ(fixture.store().message.get(), unsaved);
}

}  // namespace kestrune
