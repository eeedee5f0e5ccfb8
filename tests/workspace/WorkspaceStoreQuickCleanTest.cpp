#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

namespace {

void quickClean(StoreFixture& fixture, bool saved) {
    fixture.store().quickClean(saved);
    fixture.settle();
}

std::vector<std::string> blockers(const std::string& title, const std::vector<std::string>& running) {
    CleanTarget target;
    target.title = title;
    return WorkspaceStore::cleanupBlockers({target}, running);
}

}  // namespace

TEST(WorkspaceStoreQuickClean, buildCachesAreScannedConfirmedAndMoved) {
    StoreFixture fixture;
    const auto npm = fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.addCache("User Logs", 90'000'000);
    fixture.addCache("Ollama Models", 90'000'000);
    quickClean(fixture, false);
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "Move 1 item to Trash?");
    EXPECT_EQ(fixture.trash.moved, (std::vector<std::string>{npm}));
}

TEST(WorkspaceStoreQuickClean, savedFoldersAreMovedWhateverTheirCategory) {
    StoreFixture fixture;
    fixture.addCache("NPM Global Cache", 9'000'000);
    const auto logs = fixture.addCache("User Logs", 90'000'000);
    fixture.preferences.values["kestrune_saved_selection"] = Preferences::Texts{logs};
    quickClean(fixture, true);
    EXPECT_EQ(fixture.trash.moved, (std::vector<std::string>{logs}));
}

TEST(WorkspaceStoreQuickClean, theQuestionStillDecides) {
    StoreFixture fixture;
    fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.alerts.answer = 1;
    quickClean(fixture, false);
    EXPECT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_TRUE(fixture.trash.requests.empty());
}

TEST(WorkspaceStoreQuickClean, withoutBuildCachesThatIsTold) {
    StoreFixture fixture;
    fixture.addCache("User Logs", 90'000'000);
    quickClean(fixture, false);
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].style, AlertStyle::informational);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "No build caches found");
    EXPECT_EQ(fixture.alerts.alerts[0].informativeText(),
              "No build caches found in the places we check. Try the other categories in Storage.");
}

TEST(WorkspaceStoreQuickClean, withoutASavedListThatIsTold) {
    StoreFixture fixture;
    fixture.addCache("NPM Global Cache", 9'000'000);
    quickClean(fixture, true);
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts[0].messageText, "No saved items to clean");
    EXPECT_EQ(
        fixture.alerts.alerts[0].informativeText(),
        "Choose folders in Storage and click Save for Next Time. Folders you excluded or that no longer exist are "
        "left out.");
    EXPECT_TRUE(fixture.trash.requests.empty());
}

TEST(WorkspaceStoreQuickClean, aScanStoppedByTheUserMovesNothingAndAsksForANewOne) {
    StoreFixture fixture;
    fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.walker.whileMeasuring = [&](const std::string& folder) {
        if (folder == fixture.pathOf("Gradle Caches")) {
            fixture.store().cancelCleanup();
        }
    };
    quickClean(fixture, false);
    EXPECT_EQ(fixture.store().message.get(), "Finish a new scan before cleaning.");
    EXPECT_TRUE(fixture.alerts.alerts.empty());
    EXPECT_TRUE(fixture.trash.requests.empty());
}

TEST(WorkspaceStoreQuickClean, aScanStoppedBeforeItFoundAnythingEndsWithNothingToCleanAndKeepsItsNote) {
    StoreFixture fixture;
    fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.store().quickClean(false);
    fixture.store().cancelCleanup();
    fixture.settle();
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts.front().messageText, "No build caches found");
    EXPECT_EQ(fixture.store().scanNotes.get(),
              (std::vector<std::string>{"Scan stopped. Results are incomplete; rescan before cleanup."}));
}

TEST(WorkspaceStoreQuickClean, itDoesNotStartWhileAScanRuns) {
    StoreFixture fixture;
    fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.store().scan();
    fixture.store().quickClean(false);
    fixture.settle();
    EXPECT_TRUE(fixture.alerts.alerts.empty());
}

TEST(CleanupBlockers, everyKeywordNamesItsApplications) {
    EXPECT_EQ(blockers("Xcode DerivedData", {"Xcode"}), (std::vector<std::string>{"Xcode"}));
    EXPECT_EQ(blockers("Xcode Simulator Caches", {"Simulator"}), (std::vector<std::string>{"Simulator"}));
    EXPECT_EQ(blockers("Ollama Models", {"ollama"}), (std::vector<std::string>{"ollama"}));
    EXPECT_EQ(blockers("LM Studio Models (Legacy)", {"LM Studio"}), (std::vector<std::string>{"LM Studio"}));
    EXPECT_EQ(blockers("ComfyUI Models", {"ComfyUI"}), (std::vector<std::string>{"ComfyUI"}));
    EXPECT_EQ(blockers("Gradle Caches", {"IntelliJ IDEA", "Android Studio"}),
              (std::vector<std::string>{"Android Studio", "IntelliJ IDEA"}));
}

TEST(CleanupBlockers, onlyTheWholeNameBlocks) {
    EXPECT_TRUE(blockers("Xcode DerivedData", {"Xcode Helper", "xcodebuild", ""}).empty());
    EXPECT_TRUE(blockers("Ollama Models", {"", "Xcode"}).empty());
}

TEST(CleanupBlockers, titlesWithoutAKeywordAreNeverBlocked) {
    const std::vector<std::string> everything{"Xcode",   "Simulator",      "Ollama",       "LM Studio",
                                              "ComfyUI", "Android Studio", "IntelliJ IDEA"};
    for (const char* title : {"NPM Global Cache", "PNPM Store", "Yarn Global Cache", "Bun Install Cache",
                              "Cargo Registry Cache", "User Logs", "Claude Code Cache"}) {
        EXPECT_TRUE(blockers(title, everything).empty()) << title;
    }
}

TEST(CleanupBlockers, aNameThatRunsTwiceIsNamedOnce) {
    EXPECT_EQ(blockers("Ollama Models", {"Ollama", "Ollama"}), (std::vector<std::string>{"Ollama"}));
}

}  // namespace kestrune
