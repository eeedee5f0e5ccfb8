#include "ui/AIToolsPage.h"

#include <string>

#include "tests/ui/WindowFixture.h"

namespace kestrune {

namespace {

const QString noModels = QStringLiteral(
    "No model folders found in the places we check. Keep yours somewhere else? Choose that folder in Disk Explorer.");
const QString noTools = QStringLiteral("No AI tools we recognize in the latest check. Refresh to check again.");
const QString looking = QStringLiteral("Looking for model folders…");

class AIToolsPageTest : public WindowFixture {
protected:
    void run(std::int32_t pid, const std::string& command, std::int64_t megabytes) {
        fixture.processes.now.processes.push_back(
            {.pid = pid, .residentKilobytes = megabytes * 1024, .cpu = "1.5", .command = command, .startTime = 7});
    }

    void openListed() {
        open(WorkspacePage::ai);
        fixture.settle();
        QApplication::processEvents();
    }
};

}  // namespace

TEST_F(AIToolsPageTest, modelFoldersAreListedLargestFirstAndNothingElse) {
    fixture.addCache("Hugging Face Hub Cache", 9 * gigabyte);
    fixture.addCache("Ollama Models", 11 * gigabyte);
    fixture.addCache("Gradle Caches", 20 * gigabyte);
    fixture.scan();
    open(WorkspacePage::ai);
    const QWidget* larger = named(QStringLiteral("Ollama Models, 11 GB"));
    const QWidget* smaller = named(QStringLiteral("Hugging Face Hub Cache, 9 GB"));
    ASSERT_NE(larger, nullptr);
    ASSERT_NE(smaller, nullptr);
    EXPECT_LT(larger->y(), smaller->y());
    EXPECT_EQ(larger->accessibleDescription(), QStringLiteral("~/.ollama/models"));
    EXPECT_FALSE(shows(QStringLiteral("Show in Finder: Gradle Caches")));
    EXPECT_FALSE(shows(noModels));
}

TEST_F(AIToolsPageTest, anExcludedModelFolderTakesSpaceAllTheSame) {
    fixture.addCache("Ollama Models", 11 * gigabyte);
    fixture.scan();
    fixture.store().toggleExclusion(fixture.store().targets.get().front());
    open(WorkspacePage::ai);
    EXPECT_TRUE(shows(QStringLiteral("Ollama Models, 11 GB")));
}

TEST_F(AIToolsPageTest, showInFinderRevealsTheFolder) {
    const std::string path = fixture.addCache("Ollama Models", 11 * gigabyte);
    fixture.scan();
    open(WorkspacePage::ai);
    click(QStringLiteral("Show in Finder: Ollama Models"));
    EXPECT_EQ(fixture.fileViewer.revealed, std::vector<std::string>{path});
}

TEST_F(AIToolsPageTest, aScanThatFindsNoModelFolderSaysSo) {
    open(WorkspacePage::ai);
    EXPECT_FALSE(shows(noModels)) << "nothing was looked for yet";
    EXPECT_TRUE(shows(QStringLiteral("Nothing scanned yet. Scan now to see which model folders there are.")));
    fixture.scan();
    EXPECT_TRUE(shows(noModels));
}

TEST_F(AIToolsPageTest, theHeadersScanShowsThatItLooksAndThenWhatItFound) {
    fixture.addCache("Ollama Models", 11 * gigabyte);
    open(WorkspacePage::ai);
    EXPECT_FALSE(shows(looking));
    click(QStringLiteral("Scan now"));
    EXPECT_TRUE(shows(looking));
    EXPECT_FALSE(shows(noModels));
    fixture.settle();
    EXPECT_FALSE(shows(looking));
    EXPECT_TRUE(shows(QStringLiteral("Ollama Models, 11 GB")));
}

TEST_F(AIToolsPageTest, foldersOfTheLastScanStayWhileTheNextOneRuns) {
    fixture.addCache("Ollama Models", 11 * gigabyte);
    fixture.scan();
    open(WorkspacePage::ai);
    click(QStringLiteral("Scan now"));
    EXPECT_TRUE(shows(looking));
    EXPECT_TRUE(shows(QStringLiteral("Ollama Models, 11 GB")));
}

TEST_F(AIToolsPageTest, aFolderThatIsGoneLosesItsRow) {
    fixture.addCache("Ollama Models", 11 * gigabyte);
    fixture.scan();
    open(WorkspacePage::ai);
    fixture.removeCache("Ollama Models");
    fixture.scan();
    QApplication::processEvents();
    EXPECT_FALSE(shows(QStringLiteral("Show in Finder: Ollama Models")));
    EXPECT_TRUE(shows(noModels));
}

TEST_F(AIToolsPageTest, aStoppedScanSaysThatItIsIncomplete) {
    open(WorkspacePage::ai);
    click(QStringLiteral("Scan now"));
    click(QStringLiteral("Stop scan"));
    fixture.settle();
    QApplication::processEvents();
    EXPECT_TRUE(shows(QStringLiteral("Scan stopped. Results are incomplete; rescan before cleanup.")));
}

TEST_F(AIToolsPageTest, buttonsLeadToTheirPages) {
    open(WorkspacePage::ai);
    click(QStringLiteral("Review model cleanup"));
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::storage);
    open(WorkspacePage::ai);
    click(QStringLiteral("Review all running apps"));
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::apps);
}

TEST_F(AIToolsPageTest, aCustomFolderIsChosenHereAndExploredOnItsPage) {
    fixture.folderChooser.answer = "/home/anna/models";
    open(WorkspacePage::ai);
    click(QStringLiteral("Inspect a custom folder"));
    EXPECT_EQ(fixture.folderChooser.asked.size(), 1U);
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::explorer);
    EXPECT_TRUE(fixture.store().isExploring.get());
    EXPECT_EQ(fixture.store().explorerRoot.get(), "/home/anna/models");
}

TEST_F(AIToolsPageTest, aDismissedChoiceOfAFolderStaysOnThePage) {
    open(WorkspacePage::ai);
    click(QStringLiteral("Inspect a custom folder"));
    EXPECT_EQ(fixture.folderChooser.asked.size(), 1U);
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::ai);
    EXPECT_FALSE(fixture.store().isExploring.get());
}

TEST_F(AIToolsPageTest, aFolderThatIsBeingExploredIsShownInsteadOfChoosingAnother) {
    open(WorkspacePage::ai);
    fixture.store().explore("/home/anna/models");
    click(QStringLiteral("Inspect a custom folder"));
    EXPECT_TRUE(fixture.folderChooser.asked.empty());
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::explorer);
}

TEST_F(AIToolsPageTest, recognisedToolsAreListedAndOtherProcessesAreNot) {
    run(8412, "/usr/local/bin/ollama", 6184);
    run(9127, "/opt/llama.cpp/llama-server", 918);
    run(500, "/usr/bin/node", 300);
    openListed();
    EXPECT_TRUE(shows(QStringLiteral("ollama, 6,184 MB, PID 8412")));
    EXPECT_TRUE(shows(QStringLiteral("llama-server, 918 MB, PID 9127")));
    for (const Seen& piece : seen()) {
        EXPECT_FALSE(piece.name.contains(QStringLiteral("PID 500"))) << piece.name.toStdString();
    }
    EXPECT_FALSE(shows(noTools));
}

TEST_F(AIToolsPageTest, aProtectedToolSaysSoAsSoonAsItIs) {
    run(8412, "/usr/local/bin/ollama", 6184);
    openListed();
    fixture.store().toggleProtection(fixture.store().running.get().front());
    EXPECT_TRUE(shows(QStringLiteral("ollama, Protected, 6,184 MB, PID 8412")));
}

TEST_F(AIToolsPageTest, onlyACheckThatFoundNoToolSaysThatThereIsNone) {
    open(WorkspacePage::ai);
    EXPECT_FALSE(shows(noTools));
    fixture.settle();
    QApplication::processEvents();
    EXPECT_TRUE(shows(noTools));
}

TEST_F(AIToolsPageTest, refreshChecksAgain) {
    openListed();
    run(8412, "/usr/local/bin/ollama", 6184);
    click(QStringLiteral("Refresh"));
    fixture.settle();
    QApplication::processEvents();
    EXPECT_TRUE(shows(QStringLiteral("ollama, 6,184 MB, PID 8412")));
    EXPECT_FALSE(shows(noTools));
}

TEST_F(AIToolsPageTest, tabGoesThroughItInReadingOrder) {
    fixture.addCache("Hugging Face Hub Cache", 9 * gigabyte);
    fixture.addCache("Ollama Models", 11 * gigabyte);
    run(8412, "/usr/local/bin/ollama", 6184);
    fixture.scan();
    openListed();
    const QStringList order = tabStops();
    const QStringList wanted{QStringLiteral("Pages"),
                             QStringLiteral("Refresh"),
                             QStringLiteral("Scan now"),
                             QStringLiteral("Show in Finder: Ollama Models"),
                             QStringLiteral("Show in Finder: Hugging Face Hub Cache"),
                             QStringLiteral("Review model cleanup"),
                             QStringLiteral("Inspect a custom folder"),
                             QStringLiteral("ollama, 6,184 MB, PID 8412"),
                             QStringLiteral("Review all running apps")};
    EXPECT_EQ(order, wanted) << order.join(QStringLiteral(" | ")).toStdString();
}

TEST_F(AIToolsPageTest, fitsTheSmallestWindow) {
    fixture.addCache("Hugging Face Hub Cache", 9 * gigabyte);
    fixture.scan();
    open(WorkspacePage::ai);
    window().resize(window().minimumSize());
    QApplication::processEvents();
    const QWidget* reveal = named(QStringLiteral("Show in Finder: Hugging Face Hub Cache"));
    ASSERT_NE(reveal, nullptr);
    EXPECT_GE(reveal->width(), reveal->sizeHint().width());
    EXPECT_LE(reveal->geometry().right(), reveal->parentWidget()->width());
}

}  // namespace kestrune
