#include "ui/QtUpdatePresenter.h"

#include <QTest>
#include <optional>

#include "tests/ui/UpdateFixture.h"

namespace kestrune {

namespace {

using Answer = UpdateWindow::Answer;

class QtUpdatePresenterTest : public UpdateFixture {};

}  // namespace

TEST_F(QtUpdatePresenterTest, interfaceIsMadeReadyOnceAndOnlyWhenSomethingIsShown) {
    presenter.bringToFront();
    presenter.setDownloaded(1, 2);
    presenter.close();
    EXPECT_EQ(prepared, 0);
    EXPECT_EQ(presenter.window(), nullptr);
    presenter.showChecking([] {});
    presenter.showOutcome("Title", "Text.");
    EXPECT_EQ(prepared, 1);
}

TEST_F(QtUpdatePresenterTest, everyStateUsesTheSameWindow) {
    presenter.showChecking([] {});
    const UpdateWindow* first = presenter.window();
    ask();
    EXPECT_EQ(presenter.window(), first);
    presenter.close();
    EXPECT_EQ(presenter.window(), nullptr);
    presenter.showInstalling(item());
    EXPECT_EQ(presenter.window(), first);
}

TEST_F(QtUpdatePresenterTest, everyButtonAnswersItsChoice) {
    for (const auto& [button, choice] :
         {std::pair(Answer::primary, UpdateChoice::install), std::pair(Answer::secondary, UpdateChoice::dismiss),
          std::pair(Answer::quiet, UpdateChoice::skip)}) {
        answers.clear();
        ask();
        press(button);
        EXPECT_TRUE(answers.empty());
        QApplication::processEvents();
        EXPECT_EQ(answers, std::vector{choice});
    }
}

TEST_F(QtUpdatePresenterTest, choiceIsAnsweredOnceHoweverOftenItIsPressed) {
    ask();
    press(Answer::primary);
    press(Answer::primary);
    presenter.window()->close();
    QApplication::processEvents();
    EXPECT_EQ(answers, std::vector{UpdateChoice::install});
}

TEST_F(QtUpdatePresenterTest, closingTheQuestionAndEscapePutItOff) {
    ask();
    presenter.window()->close();
    QApplication::processEvents();
    EXPECT_EQ(answers, std::vector{UpdateChoice::dismiss});
    EXPECT_EQ(presenter.window(), nullptr);
    ask();
    QTest::keyClick(presenter.window(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(answers, (std::vector{UpdateChoice::dismiss, UpdateChoice::dismiss}));
}

TEST_F(QtUpdatePresenterTest, returnInstalls) {
    ask();
    QTest::keyClick(presenter.window(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(answers, std::vector{UpdateChoice::install});
}

TEST_F(QtUpdatePresenterTest, closingTheCheckOrTheDownloadCancelsIt) {
    int cancelled = 0;
    presenter.showChecking([&] { ++cancelled; });
    presenter.window()->close();
    QApplication::processEvents();
    EXPECT_EQ(cancelled, 1);
    presenter.showDownload(item(), [&] { ++cancelled; });
    press(Answer::secondary);
    QApplication::processEvents();
    EXPECT_EQ(cancelled, 2);
    EXPECT_EQ(presenter.window(), nullptr);
}

TEST_F(QtUpdatePresenterTest, answerMayShowTheNextStateOrEndTheWindow) {
    presenter.showUpdate(item(), "2.1.0", [this](UpdateChoice) { presenter.showDownload(item(), [] {}); });
    press(Answer::primary);
    QApplication::processEvents();
    EXPECT_TRUE(shows(QStringLiteral("Downloading Kestrune 2.2.0")));
    auto own = std::make_optional<QtUpdatePresenter>([] {});
    own->showReadyToRelaunch(item(), [&own] { own.reset(); });
    own->window()->button(Answer::primary).click();
    QApplication::processEvents();
    EXPECT_FALSE(own.has_value());
}

TEST_F(QtUpdatePresenterTest, answerOfAStateThatIsOverIsNotCalled) {
    bool isCancelled = false;
    presenter.showDownload(item(), [&] { isCancelled = true; });
    press(Answer::secondary);
    presenter.showInstalling(item());
    QApplication::processEvents();
    EXPECT_FALSE(isCancelled);
    EXPECT_TRUE(shows(QStringLiteral("Installing Kestrune 2.2.0")));
    ask();
    press(Answer::quiet);
    presenter.close();
    QApplication::processEvents();
    EXPECT_TRUE(answers.empty());
}

TEST_F(QtUpdatePresenterTest, programThatClosesTheWindowAnswersNothing) {
    ask();
    presenter.close();
    QApplication::processEvents();
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(presenter.window(), nullptr);
}

TEST_F(QtUpdatePresenterTest, nothingStopsTheInstallation) {
    presenter.showInstalling(item());
    EXPECT_TRUE(buttons().isEmpty());
    presenter.window()->close();
    QApplication::processEvents();
    presenter.showOutcome("Update couldn't finish", "The disk is full.");
    EXPECT_TRUE(shows(QStringLiteral("The disk is full.")));
}

TEST_F(QtUpdatePresenterTest, restartingIsOfferedAndMayWait) {
    int relaunches = 0;
    presenter.showReadyToRelaunch(item(), [&] { ++relaunches; });
    EXPECT_EQ(buttons(), QStringList({QStringLiteral("Restart Now"), QStringLiteral("Later")}));
    press(Answer::secondary);
    QApplication::processEvents();
    EXPECT_EQ(relaunches, 0);
    EXPECT_EQ(presenter.window(), nullptr);
    presenter.showReadyToRelaunch(item(), [&] { ++relaunches; });
    press(Answer::primary);
    QApplication::processEvents();
    EXPECT_EQ(relaunches, 1);
}

TEST_F(QtUpdatePresenterTest, outcomeIsClosedByItsOneButton) {
    presenter.showOutcome("You're up to date", "Kestrune 2.1.0 is the newest version.");
    EXPECT_EQ(buttons(), QStringList(QStringLiteral("OK")));
    press(Answer::primary);
    EXPECT_EQ(presenter.window(), nullptr);
}

TEST_F(QtUpdatePresenterTest, windowThatIsMinimisedComesBackToTheFront) {
    presenter.showDownload(item(), [] {});
    presenter.window()->showMinimized();
    presenter.bringToFront();
    EXPECT_FALSE(presenter.window()->isMinimized());
}

}  // namespace kestrune
