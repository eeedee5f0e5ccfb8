#include <gtest/gtest.h>

#include "tests/fakes/StoreFixture.h"

namespace kestrune {

TEST(WorkspaceStoreScan, aScanIsObservableWhileItRunsAndPublishesAtItsEnd) {
    StoreFixture fixture;
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.store().message.set("old");
    fixture.store().scan();
    EXPECT_TRUE(fixture.store().isScanning.get());
    EXPECT_EQ(fixture.store().message.get(), std::nullopt);
    EXPECT_TRUE(fixture.store().targets.get().empty());
    fixture.settle();
    EXPECT_FALSE(fixture.store().isScanning.get());
    ASSERT_EQ(fixture.store().targets.get().size(), 1U);
    EXPECT_EQ(fixture.store().targets.get()[0].title, "Gradle Caches");
    EXPECT_EQ(fixture.store().lastScan.get(), fixture.clock.wall);
    EXPECT_TRUE(fixture.store().scanNotes.get().empty());
}

TEST(WorkspaceStoreScan, aSecondScanDoesNotStartWhileOneRuns) {
    StoreFixture fixture;
    fixture.store().scan();
    fixture.store().scan();
    EXPECT_EQ(fixture.actions().waiting(), 1U);
}

TEST(WorkspaceStoreScan, onFinishedRunsOnceAfterTheResultsArePublished) {
    StoreFixture fixture;
    fixture.addCache("Gradle Caches", 9'000'000);
    std::size_t seen = 0;
    int calls = 0;
    fixture.store().scan([&] {
        ++calls;
        seen = fixture.store().targets.get().size();
        EXPECT_FALSE(fixture.store().isScanning.get());
    });
    fixture.settle();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(seen, 1U);
}

TEST(WorkspaceStoreScan, aSelectionKeepsWhatIsStillThereAndNothingNew) {
    StoreFixture fixture;
    const auto gradle = fixture.addCache("Gradle Caches", 9'000'000);
    const auto npm = fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.scan();
    fixture.store().setSelected(gradle, true);
    fixture.store().setSelected(npm, true);
    fixture.removeCache("NPM Global Cache");
    fixture.addCache("Yarn Global Cache", 9'000'000);
    fixture.scan();
    EXPECT_EQ(fixture.store().selection.get(), (std::set<std::string>{gradle}));
}

TEST(WorkspaceStoreScan, notesNameIncompleteAndUnreadableLocations) {
    StoreFixture fixture;
    const auto npm = fixture.addCache("NPM Global Cache", 9'000'000);
    fixture.walker.add(npm, 9'000'000, 2);
    const auto logs = fixture.pathOf("User Logs");
    fixture.fileQueries.addDirectory(logs);
    fixture.fileQueries.unreadable.insert(logs);
    fixture.scan();
    EXPECT_EQ(fixture.store().scanNotes.get(),
              (std::vector<std::string>{"Some files couldn't be inspected in _cacache. Size may be incomplete.",
                                        "Some files couldn't be inspected in Logs. Size may be incomplete.",
                                        "Couldn't inspect User Logs. Check access in System Settings."}));
}

TEST(WorkspaceStoreScan, aStoppedScanKeepsItsPartialResultAndSaysSo) {
    StoreFixture fixture;
    fixture.addCache("Ollama Models", 9'000'000);
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.walker.whileMeasuring = [&](const std::string& folder) {
        if (folder == fixture.pathOf("Gradle Caches")) {
            fixture.store().cancelCleanup();
        }
    };
    fixture.scan();
    ASSERT_EQ(fixture.store().targets.get().size(), 1U);
    EXPECT_EQ(fixture.store().targets.get()[0].title, "Ollama Models");
    EXPECT_EQ(fixture.store().scanNotes.get(),
              (std::vector<std::string>{"Scan stopped. Results are incomplete; rescan before cleanup."}));
}

TEST(WorkspaceStoreScan, theNextScanForgetsTheStop) {
    StoreFixture fixture;
    fixture.addCache("Gradle Caches", 9'000'000);
    fixture.store().scan();
    fixture.store().cancelCleanup();
    fixture.settle();
    EXPECT_TRUE(fixture.store().targets.get().empty());
    fixture.scan();
    EXPECT_EQ(fixture.store().targets.get().size(), 1U);
    EXPECT_TRUE(fixture.store().scanNotes.get().empty());
}

TEST(WorkspaceStoreScan, progressTellsTheLocationAndEndsAtNothing) {
    StoreFixture fixture;
    fixture.addCache("Gradle Caches", 9'000'000);
    std::vector<OperationProgress> steps;
    const auto subscription =
        fixture.store().operationProgress.observe([&] { steps.push_back(fixture.store().operationProgress.get()); });
    fixture.scan();
    EXPECT_EQ(steps, (std::vector<OperationProgress>{{18, 20, "Gradle Caches"}, {}}));
}

TEST(WorkspaceStoreScan, theDiskFigureIsReadAgainAtTheEnd) {
    StoreFixture fixture;
    static_cast<void>(fixture.store());
    fixture.volumes.volumes["/"] = {500'000'000'000, 250'000'000'000};
    fixture.scan();
    EXPECT_EQ(fixture.store().disk.get().pct, 50);
}

TEST(WorkspaceStoreScan, aNewScanClearsTheLastCleanupsFailures) {
    StoreFixture fixture;
    const auto gradle = fixture.addCache("Gradle Caches", 9'000'000);
    fixture.trash.failures[gradle] = {TrashFailure::system, "No space left on device"};
    fixture.scan();
    fixture.store().selectRecommended();
    fixture.store().clean();
    fixture.settle();
    ASSERT_EQ(fixture.store().failures.get().size(), 1U);
    fixture.store().scan();
    EXPECT_TRUE(fixture.store().failures.get().empty());
}

}  // namespace kestrune
