#include "ui/StoragePage.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QScrollBar>

#include "tests/ui/WindowFixture.h"
#include "ui/Page.h"
#include "ui/ScrollArea.h"
#include "ui/StorageRow.h"

namespace kestrune {

namespace {

class StoragePageTest : public WindowFixture {
protected:
    void fill() {
        fixture.addCache("Gradle Caches", 6 * gigabyte);
        fixture.addCache("NPM Global Cache", 2 * gigabyte);
        fixture.addCache("Ollama Models", 11 * gigabyte);
        fixture.scan();
    }

    [[nodiscard]] QStringList rowTitles() {
        QStringList titles;
        for (const Seen& piece : seen()) {
            if (const auto* row = qobject_cast<StorageRow*>(piece.widget)) {
                titles.append(QString::fromStdString(row->state().target.title));
            }
        }
        return titles;
    }
};

}  // namespace

TEST_F(StoragePageTest, invitesToScanBeforeTheFirstScan) {
    open(WorkspacePage::storage);
    EXPECT_TRUE(shows(QStringLiteral("Nothing scanned yet")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Review & move to Trash")));
    click(QStringLiteral("Scan supported locations"));
    EXPECT_TRUE(fixture.store().isScanning.get());
    EXPECT_TRUE(shows(QStringLiteral("Scanning supported locations…")));
}

TEST_F(StoragePageTest, emptyResultSaysThatThereIsNothingToReview) {
    fixture.scan();
    open(WorkspacePage::storage);
    EXPECT_TRUE(shows(QStringLiteral("Nothing to review here")));
    EXPECT_TRUE(shows(QStringLiteral(
        "Try another category or scan again. This scan covers supported locations, not your entire disk.")));
}

TEST_F(StoragePageTest, rowReadsAsOneSentence) {
    fill();
    open(WorkspacePage::storage);
    EXPECT_TRUE(shows(QStringLiteral("Ollama Models, Review carefully, 11 GB, not selected")));
    click(QStringLiteral("Select Ollama Models"));
    EXPECT_TRUE(shows(QStringLiteral("Ollama Models, Review carefully, 11 GB, selected")));
}

TEST_F(StoragePageTest, footerCountsWhatIsSelected) {
    fill();
    open(WorkspacePage::storage);
    EXPECT_TRUE(shows(QStringLiteral("0 selected · Zero KB, Moves to Trash. No permanent deletion.")));
    click(QStringLiteral("Select build caches"));
    EXPECT_TRUE(shows(QStringLiteral("2 selected · 8 GB, Moves to Trash. No permanent deletion.")));
    EXPECT_TRUE(isEnabled(QStringLiteral("Review & move to Trash")));
    click(QStringLiteral("Clear selection"));
    EXPECT_FALSE(isEnabled(QStringLiteral("Review & move to Trash")));
}

TEST_F(StoragePageTest, clickOnTheFreeAreaOfARowTogglesItsCheckBox) {
    fill();
    open(WorkspacePage::storage);
    auto* row = named(QStringLiteral("Gradle Caches, 6 GB, not selected"));
    ASSERT_NE(row, nullptr);
    QTest::mouseClick(row, Qt::LeftButton, {}, QPoint(row->width() / 3, row->height() / 2));
    EXPECT_EQ(fixture.store().selection.get().count(fixture.pathOf("Gradle Caches")), 1U);
    QTest::mouseClick(row, Qt::LeftButton, {}, QPoint(row->width() / 3, row->height() / 2));
    EXPECT_TRUE(fixture.store().selection.get().empty());
}

TEST_F(StoragePageTest, spaceTogglesTheFocusedCheckBox) {
    fill();
    open(WorkspacePage::storage);
    auto* check = qobject_cast<QCheckBox*>(named(QStringLiteral("Select Gradle Caches")));
    ASSERT_NE(check, nullptr);
    QTest::keyClick(check, Qt::Key_Space);
    EXPECT_TRUE(check->isChecked());
    EXPECT_EQ(fixture.store().selected().size(), 1U);
}

TEST_F(StoragePageTest, searchAndCategoryNarrowTheList) {
    fill();
    open(WorkspacePage::storage);
    auto* search = qobject_cast<QLineEdit*>(named(QStringLiteral("Find a cache or model folder")));
    ASSERT_NE(search, nullptr);
    search->setText(QStringLiteral("gradle"));
    EXPECT_EQ(rowTitles(), QStringList{QStringLiteral("Gradle Caches")});
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_EQ(rowTitles().size(), 3);
    QTest::keyClick(named(QStringLiteral("Category: All categories")), Qt::Key_Down);
    EXPECT_EQ(rowTitles(), QStringList{QStringLiteral("Ollama Models")});
    EXPECT_TRUE(shows(QStringLiteral("Category: AI Models & Caches")));
}

TEST_F(StoragePageTest, excludedRowIsHiddenUntilAskedForAndCanBeIncludedAgain) {
    fill();
    open(WorkspacePage::storage);
    click(QStringLiteral("Exclude: Gradle Caches"));
    EXPECT_FALSE(rowTitles().contains(QStringLiteral("Gradle Caches")));
    QWidget* toggle = named(QStringLiteral("Show excluded locations"));
    ASSERT_NE(toggle, nullptr);
    QTest::keyClick(toggle, Qt::Key_Space);
    EXPECT_TRUE(shows(QStringLiteral("Gradle Caches, 6 GB, Excluded")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Select Gradle Caches")));
    click(QStringLiteral("Include again: Gradle Caches"));
    EXPECT_TRUE(fixture.store().excluded.get().empty());
    EXPECT_TRUE(isEnabled(QStringLiteral("Select Gradle Caches")));
}

TEST_F(StoragePageTest, showInFinderRevealsThePath) {
    fill();
    open(WorkspacePage::storage);
    click(QStringLiteral("Show in Finder: NPM Global Cache"));
    EXPECT_EQ(fixture.fileViewer.revealed, std::vector<std::string>{fixture.pathOf("NPM Global Cache")});
}

TEST_F(StoragePageTest, refreshKeepsFocusScrollAndTheRowsThemselves) {
    fill();
    for (const char* title : {"Xcode DerivedData", "Hugging Face Hub Cache", "Cargo Registry Cache",
                              "Bun Install Cache", "Xcode iOS DeviceSupport", "User Logs"}) {
        fixture.addCache(title, gigabyte);
    }
    fixture.scan();
    open(WorkspacePage::storage);
    window().resize(window().minimumSize());
    QApplication::processEvents();
    auto* area = window().findChild<StoragePage*>()->scrollArea();
    area->verticalScrollBar()->setValue(40);
    QWidget* button = named(QStringLiteral("Exclude: NPM Global Cache"));
    ASSERT_NE(button, nullptr);
    button->setFocus(Qt::TabFocusReason);
    fixture.addCache("Gradle Caches", 20 * gigabyte);
    fixture.removeCache("Ollama Models");
    fixture.scan();
    QApplication::processEvents();
    EXPECT_EQ(rowTitles().front(), QStringLiteral("Gradle Caches"));
    EXPECT_EQ(QApplication::focusWidget(), button);
    EXPECT_EQ(named(QStringLiteral("Exclude: NPM Global Cache")), button);
    EXPECT_EQ(area->verticalScrollBar()->value(), 40);
}

TEST_F(StoragePageTest, focusGoesToTheNextRowWhenItsOwnIsGone) {
    fill();
    open(WorkspacePage::storage);
    QWidget* button = named(QStringLiteral("Exclude: Ollama Models"));
    ASSERT_NE(button, nullptr);
    button->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button, Qt::Key_Return);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Exclude: Gradle Caches"));
}

TEST_F(StoragePageTest, cleanupLocksTheListAndOffersToStop) {
    fill();
    open(WorkspacePage::storage);
    click(QStringLiteral("Select build caches"));
    fixture.alerts.answer = 0;
    click(QStringLiteral("Review & move to Trash"));
    ASSERT_TRUE(fixture.store().isCleaning.get());
    EXPECT_FALSE(shows(QStringLiteral("Review & move to Trash")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Select Gradle Caches")));
    EXPECT_FALSE(isEnabled(QStringLiteral("Exclude: Gradle Caches")));
    EXPECT_TRUE(isEnabled(QStringLiteral("Show in Finder: Gradle Caches")));
    click(QStringLiteral("Stop after current item"));
    fixture.settle();
    EXPECT_FALSE(fixture.store().isCleaning.get());
    EXPECT_TRUE(shows(QStringLiteral("Review & move to Trash")));
    EXPECT_TRUE(fixture.store().message.get()->ends_with(" Cleanup stopped; remaining items were kept."));
}

TEST_F(StoragePageTest, failureShowsInItsRowAndNotesAboveTheList) {
    fill();
    open(WorkspacePage::storage);
    fixture.store().failures.set({{fixture.pathOf("Gradle Caches"), "This item is no longer present."}});
    fixture.store().scanNotes.set({"Couldn't inspect Ollama Models. Check access in System Settings."});
    EXPECT_TRUE(shows(QStringLiteral("Gradle Caches, 6 GB, not selected, This item is no longer present.")));
    EXPECT_TRUE(shows(QStringLiteral("Couldn't inspect Ollama Models. Check access in System Settings.")));
    fixture.store().scanNotes.set({});
    QApplication::processEvents();
    EXPECT_FALSE(shows(QStringLiteral("Couldn't inspect Ollama Models. Check access in System Settings.")));
}

TEST_F(StoragePageTest, longFailureMakesItsRowHigherInsteadOfBeingCut) {
    fill();
    open(WorkspacePage::storage);
    const int before = named(QStringLiteral("Gradle Caches, 6 GB, not selected"))->height();
    const std::string sentence(400, 'm');
    fixture.store().failures.set({{fixture.pathOf("Gradle Caches"), sentence}});
    const QWidget* row =
        named(QStringLiteral("Gradle Caches, 6 GB, not selected, ") + QString::fromStdString(sentence));
    ASSERT_NE(row, nullptr);
    EXPECT_GT(row->height(), before + 50);
}

TEST_F(StoragePageTest, savedFoldersComeBackWithTheirButton) {
    fill();
    open(WorkspacePage::storage);
    click(QStringLiteral("Use Saved Folders"));
    ASSERT_EQ(fixture.alerts.alerts.size(), 1U);
    EXPECT_EQ(fixture.alerts.alerts.front().messageText, "No saved items to clean");
    click(QStringLiteral("Select Gradle Caches"));
    click(QStringLiteral("Save for Next Time"));
    click(QStringLiteral("Clear selection"));
    click(QStringLiteral("Use Saved Folders"));
    EXPECT_EQ(fixture.store().selection.get(), std::set<std::string>{fixture.pathOf("Gradle Caches")});
}

TEST_F(StoragePageTest, hiddenWindowIsNotTouchedAndCatchesUpWhenShown) {
    fill();
    open(WorkspacePage::storage);
    window().close();
    fixture.removeCache("Gradle Caches");
    fixture.scan();
    open(WorkspacePage::storage);
    EXPECT_FALSE(rowTitles().contains(QStringLiteral("Gradle Caches")));
}

}  // namespace kestrune
