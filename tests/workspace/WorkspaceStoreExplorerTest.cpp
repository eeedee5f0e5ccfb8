#include <gtest/gtest.h>

#include <future>
#include <limits>

#include "tests/fakes/StoreFixture.h"
#include "workspace/ExplorerListing.h"

namespace kestrune {

namespace {

const std::string work = "/home/anna/code";
const std::string music = "/home/anna/music";

/// A fixture with two folders to explore.
class ExplorerFixture {
public:
    ExplorerFixture() {
        lay(work, 40);
        lay(music, 30);
    }

    void lay(const std::string& folder, std::int64_t bytes) {
        fixture.walker.add(folder, bytes);
        fixture.walker.walks[folder].children = {{"child", bytes, true}};
    }

    void explore(const std::string& folder) {
        store.explore(folder);
        fixture.settle();
    }

    [[nodiscard]] std::string root() const { return store.explorerRoot.get().value_or("none"); }

    /// What is published of a folder laid down with this many bytes.
    [[nodiscard]] static DiskExplorerResult found(const std::string& folder, std::int64_t bytes) {
        DiskExplorerResult result;
        result.folders = {{folder + "/child", bytes, true}};
        result.inspectedFiles = result.regularFiles = 1;
        return result;
    }

    StoreFixture fixture;
    WorkspaceStore& store = fixture.store();
};

WalkProgress stepAt(std::int64_t entries) {
    WalkProgress step;
    step.entries = entries;
    return step;
}

}  // namespace

TEST(WorkspaceStoreExplorer, aScanIsObservableWhileItRunsAndPublishesAtItsEnd) {
    ExplorerFixture explorer;
    WorkspaceStore& store = explorer.store;
    explorer.explore(music);
    store.explore(work);
    EXPECT_EQ(store.explorerRoot.get(), work);
    EXPECT_EQ(store.explorerResult.get(), DiskExplorerResult{});
    EXPECT_TRUE(store.isExploring.get());
    EXPECT_TRUE(explorer.fixture.explorations().runOne());
    EXPECT_TRUE(store.isExploring.get());
    explorer.fixture.mainQueue.runPosted();
    EXPECT_FALSE(store.isExploring.get());
    EXPECT_EQ(store.explorerResult.get(), ExplorerFixture::found(work, 40));
    EXPECT_EQ(store.explorerRoot.get(), work);
}

TEST(WorkspaceStoreExplorer, theRootIsPublishedInTheStandardFormOfItsPath) {
    ExplorerFixture explorer;
    explorer.explore("/home//anna/./music/../code/");
    EXPECT_EQ(explorer.root(), work);
    EXPECT_EQ(explorer.fixture.walker.measured, (std::vector<std::string>{work}));
}

TEST(WorkspaceStoreExplorer, aPathThatIsNotAbsoluteIsNotExplored) {
    ExplorerFixture explorer;
    explorer.store.explore("work");
    explorer.store.explore("");
    EXPECT_FALSE(explorer.store.isExploring.get());
    EXPECT_EQ(explorer.store.explorerRoot.get(), std::nullopt);
}

TEST(WorkspaceStoreExplorer, aScanHasTheDefaultLimitsAndKeepsTwoHundredFolders) {
    ExplorerFixture explorer;
    explorer.explore(work);
    ASSERT_EQ(explorer.fixture.walker.requests.size(), 1U);
    const WalkRequest& request = explorer.fixture.walker.requests[0];
    EXPECT_EQ(request.entryLimit, 250'000);
    EXPECT_EQ(request.largestLimit, 50);
    EXPECT_EQ(request.childLimit, 200);
}

TEST(WorkspaceStoreExplorer, aScanEndsAfterFortyFiveSeconds) {
    ExplorerFixture explorer;
    explorer.fixture.walker.whileMeasuring = [&](const std::string&) { explorer.fixture.clock.advance(Seconds{45}); };
    explorer.explore(work);
    EXPECT_TRUE(explorer.store.explorerResult.get().limitReached);
}

TEST(WorkspaceStoreExplorer, exploringWhileAScanRunsDoesNothing) {
    ExplorerFixture explorer;
    explorer.store.explore(work);
    explorer.store.explore(music);
    explorer.store.rescanExplorer();
    explorer.store.exploreParent();
    EXPECT_EQ(explorer.root(), work);
    EXPECT_EQ(explorer.fixture.explorations().waiting(), 1U);
}

TEST(WorkspaceStoreExplorer, observersOfTheEndFindTheResultAndItsVisit) {
    ExplorerFixture explorer;
    explorer.explore(music);
    DiskExplorerResult seen;
    bool couldGoBack = false;
    const auto subscription = explorer.store.isExploring.observe([&] {
        seen = explorer.store.explorerResult.get();
        couldGoBack = explorer.store.canGoBackInExplorer();
    });
    explorer.explore(work);
    EXPECT_EQ(seen, ExplorerFixture::found(work, 40));
    EXPECT_TRUE(couldGoBack);
}

TEST(WorkspaceStoreExplorer, anObserverOfTheBeginningMayStopTheScanAtOnce) {
    ExplorerFixture explorer;
    const auto subscription = explorer.store.isExploring.observe([&] { explorer.store.stopExploring(); });
    explorer.explore(work);
    EXPECT_TRUE(explorer.store.explorerResult.get().stopped);
}

TEST(WorkspaceStoreExplorer, aChosenFolderIsAskedForAtHomeAndExplored) {
    ExplorerFixture explorer;
    explorer.fixture.folderChooser.answer = work;
    explorer.store.chooseExplorerFolder();
    explorer.fixture.settle();
    using Asked = std::vector<std::pair<std::string, std::string>>;
    EXPECT_EQ(explorer.fixture.folderChooser.asked,
              (Asked{{"Choose a folder to inspect. Disk Explorer only reads files.", explorer.fixture.home}}));
    EXPECT_EQ(explorer.root(), work);
    EXPECT_EQ(explorer.store.explorerResult.get(), ExplorerFixture::found(work, 40));
}

TEST(WorkspaceStoreExplorer, aDismissedPanelChangesNothing) {
    ExplorerFixture explorer;
    explorer.explore(work);
    explorer.store.chooseExplorerFolder();
    EXPECT_FALSE(explorer.store.isExploring.get());
    EXPECT_EQ(explorer.root(), work);
}

TEST(WorkspaceStoreExplorer, choosingAFolderWhileAScanRunsDoesNothing) {
    ExplorerFixture explorer;
    explorer.fixture.folderChooser.answer = music;
    explorer.store.explore(work);
    explorer.store.chooseExplorerFolder();
    EXPECT_TRUE(explorer.fixture.folderChooser.asked.empty());
    EXPECT_EQ(explorer.root(), work);
}

TEST(WorkspaceStoreExplorer, aScanThatBeganWhileThePanelWasOpenGoesOn) {
    ExplorerFixture explorer;
    explorer.fixture.folderChooser.answer = music;
    explorer.fixture.folderChooser.whileOpen = [&] { explorer.store.explore(work); };
    explorer.store.chooseExplorerFolder();
    EXPECT_EQ(explorer.root(), work);
    explorer.fixture.settle();
    EXPECT_EQ(explorer.fixture.walker.measured, (std::vector<std::string>{work}));
}

TEST(WorkspaceStoreExplorer, stoppingPublishesAPartialResultAndAllowsChoosingAgain) {
    ExplorerFixture explorer;
    explorer.fixture.walker.walks[work].entries = 10;
    explorer.fixture.walker.whileMeasuring = [&](const std::string&) { explorer.store.stopExploring(); };
    explorer.explore(work);
    EXPECT_TRUE(explorer.store.explorerResult.get().stopped);
    EXPECT_EQ(explorer.store.explorerResult.get().inspectedFiles, 0);
    EXPECT_FALSE(explorer.store.isExploring.get());
    explorer.fixture.walker.whileMeasuring = {};
    explorer.fixture.folderChooser.answer = music;
    explorer.store.chooseExplorerFolder();
    explorer.fixture.settle();
    EXPECT_EQ(explorer.store.explorerResult.get(), ExplorerFixture::found(music, 30));
}

TEST(WorkspaceStoreExplorer, aStopBeforeAScanDoesNotReachIt) {
    ExplorerFixture explorer;
    explorer.store.stopExploring();
    explorer.explore(work);
    EXPECT_FALSE(explorer.store.explorerResult.get().stopped);
}

TEST(WorkspaceStoreExplorer, exploringDoesNotWaitForTheActionQueueNorTheReverse) {
    ExplorerFixture explorer;
    StoreFixture& fixture = explorer.fixture;
    fixture.addCache("Gradle Caches", 9'000'000);
    explorer.store.scan();
    explorer.store.explore(work);
    EXPECT_EQ(fixture.actions().waiting(), 1U);
    EXPECT_TRUE(fixture.explorations().runOne());
    fixture.mainQueue.runPosted();
    EXPECT_EQ(explorer.store.explorerResult.get(), ExplorerFixture::found(work, 40));
    EXPECT_TRUE(explorer.store.isScanning.get());

    explorer.store.explore(music);
    EXPECT_TRUE(fixture.actions().runOne());
    fixture.mainQueue.runPosted();
    EXPECT_EQ(explorer.store.targets.get().size(), 1U);
    EXPECT_TRUE(explorer.store.isExploring.get());
}

TEST(WorkspaceStoreExplorer, aStopEndsItsOwnScanOnly) {
    ExplorerFixture explorer;
    explorer.fixture.addCache("Gradle Caches", 9'000'000);
    explorer.store.scan();
    explorer.store.explore(work);
    explorer.store.stopExploring();
    explorer.fixture.settle();
    EXPECT_EQ(explorer.store.targets.get().size(), 1U);
    EXPECT_TRUE(explorer.store.scanNotes.get().empty());
    explorer.store.scan();
    explorer.store.explore(work);
    explorer.store.cancelCleanup();
    explorer.fixture.settle();
    EXPECT_FALSE(explorer.store.explorerResult.get().stopped);
}

TEST(WorkspaceStoreExplorer, progressIsToldWhileTheScanRunsAndEndsAtNothing) {
    ExplorerFixture explorer;
    explorer.fixture.walker.steps = {stepAt(70)};
    explorer.fixture.walker.steps[0].folder = "a";
    std::vector<std::optional<DiskExplorerProgress>> told;
    const auto subscription = explorer.store.explorerProgress.observe([&] {
        told.push_back(explorer.store.explorerProgress.get());
        EXPECT_EQ(explorer.store.isExploring.get(), told.size() == 1);
    });
    explorer.explore(work);
    DiskExplorerProgress step;
    step.found.inspectedFiles = 70;
    step.folder = work + "/a";
    EXPECT_EQ(told, (std::vector<std::optional<DiskExplorerProgress>>{step, std::nullopt}));
}

TEST(WorkspaceStoreExplorer, ofTheProgressThatPiledUpOnlyTheNewestIsShown) {
    ExplorerFixture explorer;
    explorer.fixture.walker.steps = {stepAt(1), stepAt(2), stepAt(3)};
    std::vector<std::int64_t> told;
    const auto subscription = explorer.store.explorerProgress.observe([&] {
        const auto& step = explorer.store.explorerProgress.get();
        told.push_back(step ? step->found.inspectedFiles : -1);
        EXPECT_EQ(explorer.store.isExploring.get(), step.has_value());
    });
    explorer.explore(work);
    EXPECT_EQ(told, (std::vector<std::int64_t>{3, -1}));
}

TEST(WorkspaceStoreExplorer, theParentIsTheFolderAbove) {
    ExplorerFixture explorer;
    explorer.store.exploreParent();
    EXPECT_FALSE(explorer.store.isExploring.get());
    explorer.explore(work);
    explorer.store.exploreParent();
    EXPECT_EQ(explorer.root(), "/home/anna");
    EXPECT_TRUE(explorer.store.isExploring.get());
}

TEST(WorkspaceStoreExplorer, theRootOfAllHasNoParent) {
    ExplorerFixture explorer;
    explorer.explore("/");
    explorer.store.exploreParent();
    EXPECT_FALSE(explorer.store.isExploring.get());
    EXPECT_EQ(explorer.root(), "/");
}

TEST(WorkspaceStoreExplorer, aRescanReplacesTheResultAndItsVisit) {
    ExplorerFixture explorer;
    explorer.store.rescanExplorer();
    EXPECT_FALSE(explorer.store.isExploring.get());
    explorer.explore(work);
    explorer.lay(work, 50);
    explorer.store.rescanExplorer();
    EXPECT_EQ(explorer.store.explorerResult.get(), DiskExplorerResult{});
    explorer.fixture.settle();
    EXPECT_EQ(explorer.store.explorerResult.get(), ExplorerFixture::found(work, 50));
    EXPECT_FALSE(explorer.store.canGoBackInExplorer());
}

TEST(WorkspaceStoreExplorer, backAndForwardShowWhatIsRememberedWithoutAScan) {
    ExplorerFixture explorer;
    WorkspaceStore& store = explorer.store;
    store.goBackInExplorer();
    EXPECT_EQ(store.explorerRoot.get(), std::nullopt);
    explorer.explore(work);
    explorer.explore(music);
    store.goBackInExplorer();
    EXPECT_EQ(explorer.root(), work);
    EXPECT_EQ(store.explorerResult.get(), ExplorerFixture::found(work, 40));
    EXPECT_FALSE(store.canGoBackInExplorer());
    EXPECT_TRUE(store.canGoForwardInExplorer());
    store.goBackInExplorer();
    EXPECT_EQ(explorer.root(), work);
    store.goForwardInExplorer();
    EXPECT_EQ(explorer.root(), music);
    EXPECT_EQ(store.explorerResult.get(), ExplorerFixture::found(music, 30));
    store.goForwardInExplorer();
    EXPECT_EQ(explorer.root(), music);
    EXPECT_EQ(explorer.fixture.walker.measured.size(), 2U);
}

TEST(WorkspaceStoreExplorer, whileAScanRunsThereIsNoWayBackOrForward) {
    ExplorerFixture explorer;
    explorer.explore(work);
    explorer.explore(music);
    explorer.store.goBackInExplorer();
    explorer.store.rescanExplorer();
    EXPECT_FALSE(explorer.store.canGoForwardInExplorer());
    explorer.store.goForwardInExplorer();
    EXPECT_EQ(explorer.root(), work);
    explorer.fixture.settle();
    EXPECT_TRUE(explorer.store.canGoForwardInExplorer());

    explorer.store.goForwardInExplorer();
    explorer.store.rescanExplorer();
    EXPECT_FALSE(explorer.store.canGoBackInExplorer());
    explorer.store.goBackInExplorer();
    EXPECT_EQ(explorer.root(), music);
}

TEST(WorkspaceStoreExplorer, aStoppedScanIsRememberedAsItIs) {
    ExplorerFixture explorer;
    explorer.store.explore(work);
    explorer.store.stopExploring();
    explorer.fixture.settle();
    explorer.explore(music);
    explorer.store.goBackInExplorer();
    EXPECT_EQ(explorer.root(), work);
    EXPECT_TRUE(explorer.store.explorerResult.get().stopped);
}

TEST(WorkspaceStoreExplorer, theResultOfAnExploredFolderIsRemembered) {
    ExplorerFixture explorer;
    EXPECT_EQ(explorer.store.rememberedResult(work), nullptr);
    explorer.explore(work);
    explorer.explore(music);
    ASSERT_NE(explorer.store.rememberedResult(work), nullptr);
    EXPECT_EQ(*explorer.store.rememberedResult(work), ExplorerFixture::found(work, 40));
}

TEST(WorkspaceStoreExplorer, aScanThatComesBackAfterTheStoreIsGoneDoesNothing) {
    StoreFixture fixture;
    fixture.walker.add(work, 40);
    fixture.walker.steps = {stepAt(1)};
    int changes = 0;
    fixture.store().explore(work);
    const auto subscription = fixture.store().isExploring.observe([&] { ++changes; });
    ASSERT_TRUE(fixture.explorations().runOne());
    fixture.endStore();
    fixture.mainQueue.runPosted();
    EXPECT_EQ(changes, 0);
}

TEST(WorkspaceStoreExplorer, theEndOfTheStoreStopsAScanThatWouldNeverEnd) {
    StoreFixture fixture;
    fixture.walker.walks[work].exists = fixture.walker.walks[work].opened = true;
    fixture.walker.walks[work].entries = std::numeric_limits<std::int64_t>::max();
    std::promise<void> began;
    fixture.walker.whileMeasuring = [&began](const std::string&) { began.set_value(); };
    {
        WorkspaceStore store(fixture.partsOnThreads());
        store.explore(work);
        began.get_future().wait();
    }
    fixture.mainQueue.runPosted();
    EXPECT_EQ(fixture.walker.measured, (std::vector<std::string>{work}));
}

}  // namespace kestrune
