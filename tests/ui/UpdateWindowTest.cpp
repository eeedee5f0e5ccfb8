#include "ui/UpdateWindow.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include "tests/ui/UpdateFixture.h"
#include "ui/DownloadBar.h"

namespace kestrune {

namespace {

class UpdateWindowTest : public UpdateFixture {
protected:
    [[nodiscard]] QPlainTextEdit* notes() const { return presenter.window()->findChild<QPlainTextEdit*>(); }

    [[nodiscard]] DownloadBar* bar() const { return presenter.window()->findChild<DownloadBar*>(); }

    [[nodiscard]] QString barValue() const {
        return QAccessible::queryAccessibleInterface(bar())->text(QAccessible::Value);
    }
};

}  // namespace

TEST_F(UpdateWindowTest, asksAboutTheNewVersionAndNamesTheRunningOne) {
    ask(item("2.2.0", "Faster scans."));
    EXPECT_TRUE(shows(QStringLiteral("Kestrune 2.2.0 is available")));
    EXPECT_TRUE(shows(QStringLiteral("You are using version 2.1.0. Install replaces it with the new one.")));
    EXPECT_EQ(notes()->toPlainText(), QStringLiteral("Faster scans."));
    EXPECT_EQ(buttons(), QStringList({QStringLiteral("Install"), QStringLiteral("Remind Me Later"),
                                      QStringLiteral("Skip This Version")}));
}

TEST_F(UpdateWindowTest, notesStayPlainAndKeepTheirLines) {
    ask(item("2.2.0", "<b>Bold</b>\r\n\n<img src='http://example.invalid/x'>\n\xE2\x80\xAEgnp.exe\x1b[31m"));
    EXPECT_EQ(notes()->toPlainText(),
              QStringLiteral("<b>Bold</b>\n\n<img src='http://example.invalid/x'>\n\uFFFDgnp.exe\u241B[31m"));
    EXPECT_TRUE(notes()->isReadOnly());
}

TEST_F(UpdateWindowTest, hostileVersionStaysOnOneLineOfPlainText) {
    ask(item("2.2<h1>\n\xE2\x80\xAE"));
    EXPECT_TRUE(shows(QStringLiteral("Kestrune 2.2<h1>\u240A\uFFFD is available")));
    const auto labels = presenter.window()->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
    }
}

TEST_F(UpdateWindowTest, noNotesTakeNoRoom) {
    ask(item("2.2.0", " \n\n"));
    const int without = presenter.window()->height();
    EXPECT_FALSE(notes()->isVisible());
    ask(item("2.2.0", "One line."));
    EXPECT_TRUE(notes()->isVisible());
    const int brief = presenter.window()->height();
    EXPECT_GT(brief, without);
    EXPECT_EQ(notes()->verticalScrollBar()->maximum(), 0);
    ask();
    EXPECT_EQ(presenter.window()->height(), without);
}

TEST_F(UpdateWindowTest, longNotesScrollAndTheButtonsStayInView) {
    std::string lengthy;
    for (int line = 0; line < 3'000; ++line) {
        lengthy += "A change that is told in a line of its own\n";
    }
    ask(item("2.2.0", lengthy));
    EXPECT_LE(presenter.window()->frameGeometry().height(), presenter.window()->screen()->availableSize().height());
    EXPECT_GT(notes()->verticalScrollBar()->maximum(), 0);
    QTest::keyClick(notes(), Qt::Key_PageDown);
    EXPECT_GT(notes()->verticalScrollBar()->value(), 0);
    const Button& install = presenter.window()->button(UpdateWindow::Answer::primary);
    EXPECT_TRUE(presenter.window()->rect().contains(install.geometry()));
    EXPECT_GT(install.geometry().top(), notes()->geometry().bottom());
}

TEST_F(UpdateWindowTest, oneEndlessLineOfNotesIsBrokenAndCut) {
    ask(item("2.2.0", std::string(1'000'000, 'x')));
    EXPECT_LT(notes()->toPlainText().size(), 30'000);
    EXPECT_TRUE(notes()->toPlainText().endsWith(QChar(u'…')));
    EXPECT_GT(notes()->blockCount(), 5);
}

TEST_F(UpdateWindowTest, longVersionIsWrappedInsteadOfCut) {
    ask();
    const int brief = presenter.window()->height();
    ask(item(std::string(64, 'W')));
    EXPECT_GT(presenter.window()->height(), brief);
    EXPECT_TRUE(shows(QStringLiteral("Kestrune %1 is available").arg(QString(64, QLatin1Char('W')))));
}

TEST_F(UpdateWindowTest, downloadTellsHowMuchOfItIsHere) {
    presenter.showDownload(item(), [] {});
    EXPECT_TRUE(shows(QStringLiteral("Zero KB of 48 MB")));
    presenter.setDownloaded(12'000'000, 48'000'000);
    EXPECT_TRUE(shows(QStringLiteral("12 MB of 48 MB")));
    EXPECT_EQ(barValue(), QStringLiteral("25%"));
    const auto* value = QAccessible::queryAccessibleInterface(bar())->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(const_cast<QAccessibleValueInterface*>(value)->currentValue(), QVariant(25.0));
}

TEST_F(UpdateWindowTest, gigabytesMoreThanExpectedAndUnknownTotalsAreShownAsTheyAre) {
    presenter.showDownload(item(), [] {});
    presenter.setDownloaded(900'000'000, 1'000'000'000);
    EXPECT_TRUE(shows(QStringLiteral("900 MB of 1 GB")));
    EXPECT_EQ(bar()->percent(), 90);
    presenter.setDownloaded(2'000'000'000, 1'000'000'000);
    EXPECT_EQ(bar()->percent(), 100);
    presenter.setDownloaded(5'000'000, 0);
    EXPECT_TRUE(shows(QStringLiteral("5 MB")));
    EXPECT_EQ(bar()->percent(), std::nullopt);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(bar())->valueInterface(), nullptr);
}

TEST_F(UpdateWindowTest, checkAndInstallationHaveABarWithoutAnAmount) {
    presenter.showDownload(item(), [] {});
    presenter.setDownloaded(24'000'000, 48'000'000);
    presenter.showInstalling(item());
    EXPECT_TRUE(bar()->isVisible());
    EXPECT_EQ(bar()->percent(), std::nullopt);
    EXPECT_FALSE(shows(QStringLiteral("24 MB of 48 MB")));
    presenter.showChecking([] {});
    EXPECT_TRUE(shows(QStringLiteral("Checking for updates…")));
    EXPECT_EQ(buttons(), QStringList(QStringLiteral("Cancel")));
}

TEST_F(UpdateWindowTest, eachStateIsNamedToScreenReaders) {
    ask();
    QAccessibleInterface* piece = QAccessible::queryAccessibleInterface(presenter.window());
    EXPECT_EQ(piece->role(), QAccessible::Dialog);
    EXPECT_EQ(piece->text(QAccessible::Name), QStringLiteral("Kestrune 2.2.0 is available"));
    presenter.showOutcome("You're up to date", "Kestrune 2.1.0 is the newest version.");
    EXPECT_EQ(piece->text(QAccessible::Name), QStringLiteral("You're up to date"));
    EXPECT_EQ(piece->text(QAccessible::Description), QStringLiteral("Kestrune 2.1.0 is the newest version."));
}

TEST_F(UpdateWindowTest, defaultButtonHasTheFocusInEachState) {
    ask();
    presenter.window()->activateWindow();
    EXPECT_EQ(presenter.window()->focusWidget(), &presenter.window()->button(UpdateWindow::Answer::primary));
    presenter.showDownload(item(), [] {});
    EXPECT_EQ(presenter.window()->focusWidget(), &presenter.window()->button(UpdateWindow::Answer::secondary));
}

TEST_F(UpdateWindowTest, returnThatIsStillHeldDownDoesNotCancelTheDownload) {
    bool isCancelled = false;
    presenter.showDownload(item(), [&] { isCancelled = true; });
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
    QApplication::sendEvent(&presenter.window()->button(UpdateWindow::Answer::secondary), &held);
    QApplication::processEvents();
    EXPECT_FALSE(isCancelled);
    EXPECT_NE(presenter.window(), nullptr);
}

}  // namespace kestrune
