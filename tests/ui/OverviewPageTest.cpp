#include "ui/OverviewPage.h"

#include "tests/ui/WindowFixture.h"

namespace kestrune {

namespace {

class OverviewPageTest : public WindowFixture {
protected:
    [[nodiscard]] bool anyNameHolds(const QString& text) {
        for (const Seen& piece : seen()) {
            if (piece.name.contains(text)) {
                return true;
            }
        }
        return false;
    }
};

}  // namespace

TEST_F(OverviewPageTest, tileReadsAsOneSentence) {
    open(WorkspacePage::overview);
    fixture.store().memoryPercent.set(63);
    fixture.store().availableMemoryGB.set(11.8);
    EXPECT_TRUE(shows(QStringLiteral("Memory usage, 63%, 11.8 GB available")));
    EXPECT_TRUE(shows(QStringLiteral("Memory pressure, Observing, Reported by macOS")));
    EXPECT_TRUE(shows(QStringLiteral("Network, Sampling…, Wi-Fi / Ethernet interfaces")));
}

TEST_F(OverviewPageTest, panelTellsHowFarTheFirstScanIs) {
    fixture.addCache("Gradle Caches", 6 * gigabyte);
    open(WorkspacePage::overview);
    EXPECT_TRUE(anyNameHolds(QStringLiteral("Build cache space to review: Not scanned yet")));
    click(QStringLiteral("Scan now"));
    EXPECT_TRUE(anyNameHolds(QStringLiteral("Build cache space to review: Looking for caches…")));
    fixture.settle();
    EXPECT_TRUE(anyNameHolds(QStringLiteral("Build cache space to review: 6 GB")));
}

TEST_F(OverviewPageTest, panelButtonOpensStorage) {
    open(WorkspacePage::overview);
    click(QStringLiteral("Review storage"));
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::storage);
}

TEST_F(OverviewPageTest, actionRowsOpenTheirPagesByMouseAndKeyboard) {
    open(WorkspacePage::overview);
    click(QStringLiteral("Review developer caches"));
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::storage);
    open(WorkspacePage::overview);
    QTest::keyClick(named(QStringLiteral("Explore local AI models")), Qt::Key_Return);
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::ai);
    open(WorkspacePage::overview);
    QTest::keyClick(named(QStringLiteral("Protect the apps you rely on")), Qt::Key_Space);
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::apps);
}

TEST_F(OverviewPageTest, screenReaderCanPressAnActionRow) {
    open(WorkspacePage::overview);
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(named(QStringLiteral("Review developer caches")));
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->role(), QAccessible::Button);
    ASSERT_NE(row->actionInterface(), nullptr);
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(fixture.store().page.get(), WorkspacePage::storage);
}

}  // namespace kestrune
