#include "ui/QtFolderChooser.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <functional>

#include "tests/fakes/TemporaryFolder.h"
#include "tests/ui/SeenPieces.h"
#include "ui/Theme.h"

namespace kestrune {

namespace {

const std::string message = "Choose a folder to inspect. Disk Explorer only reads files.";

/// Makes a folder below base and gives its path.
std::string make(const TemporaryFolder& base, const std::string& name) {
    std::filesystem::create_directories(base.path(name));
    return base.path(name);
}

/// Opens the panel at start, lets act use it, and gives what the person chose with it.
std::optional<std::string> choose(const std::string& start, const std::function<void(QFileDialog&)>& act) {
    QTimer::singleShot(0, [&act] {
        auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(panel, nullptr);
        QApplication::processEvents();
        act(*panel);
        if (panel->isVisible()) {
            panel->reject();
        }
    });
    QtFolderChooser chooser([] { return nullptr; });
    return chooser.chooseFolder(message, start);
}

void press(Qt::Key key) {
    QTest::keyClick(QApplication::focusWidget(), key);
}

void type(const std::string& text) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(text));
}

void confirm(QFileDialog& panel) {
    panel.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
}

QAbstractItemView& list(QFileDialog& panel) {
    return *panel.findChild<QAbstractItemView*>(QStringLiteral("listView"));
}

QStringList listed(QFileDialog& panel) {
    const QAbstractItemView& view = list(panel);
    QStringList names;
    for (int row = 0; row < view.model()->rowCount(view.rootIndex()); ++row) {
        names.append(view.model()->index(row, 0, view.rootIndex()).data().toString());
    }
    return names;
}

/// The listing is read on a thread of the panel's own.
void waitForListing(QFileDialog& panel, qsizetype folders) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return listed(panel).size() == folders; })) << listed(panel).size();
}

/// Marks a row as a click on it does.
void mark(QFileDialog& panel, const QString& name) {
    QAbstractItemView& view = list(panel);
    const auto row = static_cast<int>(listed(panel).indexOf(name));
    ASSERT_GE(row, 0) << name.toStdString();
    const QModelIndex index = view.model()->index(row, 0, view.rootIndex());
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
    ASSERT_TRUE(view.selectionModel()->isSelected(index));
}

}  // namespace

class QtFolderChooserTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(QtFolderChooserTest, startsAtTheGivenFolderAndAnswersItUnchanged) {
    const std::string start = make(folder, "Größe & <b>");
    EXPECT_EQ(choose(start,
                     [&](QFileDialog& panel) {
                         EXPECT_EQ(panel.directory().path().toStdString(), start);
                         press(Qt::Key_Return);
                     }),
              start);
}

TEST_F(QtFolderChooserTest, messageIsSeenInThePanelAndReadByScreenReaders) {
    choose(folder.path(), [](QFileDialog& panel) {
        const QWidget* strip = namedIn(panel, QString::fromStdString(message));
        ASSERT_NE(strip, nullptr);
        EXPECT_TRUE(panel.rect().contains(strip->geometry().translated(strip->parentWidget()->pos())));
        QAccessibleInterface* piece = QAccessible::queryAccessibleInterface(&panel);
        EXPECT_EQ(piece->text(QAccessible::Description), QString::fromStdString(message));
    });
}

TEST_F(QtFolderChooserTest, whoeverCompletesTheDesktopsPanelIsToldTheMessageWhileItIsOpen) {
    std::string told;
    QtFolderChooser chooser(
        [] { return nullptr; },
        [&told](const std::string& said) { told = QApplication::activeModalWidget() == nullptr ? "" : said; });
    QTimer::singleShot(0, [] { qobject_cast<QFileDialog*>(QApplication::activeModalWidget())->reject(); });
    EXPECT_EQ(chooser.chooseFolder(message, folder.path()), std::nullopt);
    EXPECT_EQ(told, message);
}

TEST_F(QtFolderChooserTest, typedFolderIsAnsweredOnReturn) {
    const std::string wanted = make(folder, "Projects/app");
    EXPECT_EQ(choose(folder.path(),
                     [&](QFileDialog&) {
                         type(wanted + "/../app/");
                         press(Qt::Key_Return);
                     }),
              wanted);
}

TEST_F(QtFolderChooserTest, whatThePanelCompletesAfterTheAnswerDoesNotChangeIt) {
    const std::string wanted = make(folder, "Projects");
    EXPECT_EQ(choose(folder.path(),
                     [&](QFileDialog& panel) {
                         auto* field = panel.findChild<QLineEdit*>();
                         QObject::connect(&panel, &QDialog::finished, field,
                                          [field] { field->setText(QStringLiteral("\"one\" \"two\"")); });
                         type(wanted);
                         press(Qt::Key_Return);
                     }),
              wanted);
}

TEST_F(QtFolderChooserTest, escapeAnswersNothing) {
    EXPECT_EQ(choose(folder.path(), [](QFileDialog&) { press(Qt::Key_Escape); }), std::nullopt);
}

TEST_F(QtFolderChooserTest, listsFoldersOnlyAndHiddenOnesToo) {
    make(folder, "Downloads");
    const std::string hidden = make(folder, ".cache");
    folder.write("letter.odt", "mine");
    EXPECT_EQ(choose(folder.path(),
                     [](QFileDialog& panel) {
                         waitForListing(panel, 2);
                         EXPECT_EQ(listed(panel), QStringList({QStringLiteral(".cache"), QStringLiteral("Downloads")}));
                         EXPECT_EQ(list(panel).selectionMode(), QAbstractItemView::SingleSelection);
                         mark(panel, QStringLiteral(".cache"));
                         panel.findChild<QLineEdit*>()->setFocus();
                         press(Qt::Key_Return);
                     }),
              hidden);
}

TEST_F(QtFolderChooserTest, panelCanChangeNothing) {
    choose(folder.path(), [](QFileDialog& panel) {
        EXPECT_TRUE(panel.testOption(QFileDialog::ReadOnly));
        EXPECT_TRUE(panel.findChild<QFileSystemModel*>()->isReadOnly());
    });
}

TEST_F(QtFolderChooserTest, linkIsAnsweredAsItselfAndNotAsItsTarget) {
    make(folder, "target");
    std::filesystem::create_directory_symlink(folder.path("target"), folder.path("link"));
    EXPECT_EQ(choose(folder.path("link"), [](QFileDialog&) { press(Qt::Key_Return); }), folder.path("link"));
    EXPECT_EQ(choose(folder.path(),
                     [](QFileDialog& panel) {
                         waitForListing(panel, 2);
                         mark(panel, QStringLiteral("link"));
                         confirm(panel);
                     }),
              folder.path("link"));
}

TEST_F(QtFolderChooserTest, startThatIsGoneOrHasNoReadableNameGivesTheFolderAbove) {
    const std::string unreadable = make(folder, "\xFF");
    make(folder, "\xEF\xBF\xBD");  // what the unreadable name turns into as text
    for (const std::string& start : {folder.path("gone/long ago"), unreadable, unreadable + "/deeper"}) {
        EXPECT_EQ(choose(start, [](QFileDialog&) { press(Qt::Key_Return); }), folder.path());
    }
}

TEST_F(QtFolderChooserTest, nameThatIsNoTextIsNotListedAndItsTwinIsAnsweredExactly) {
    make(folder, "\xFF");
    const std::string twin = make(folder, "\xEF\xBF\xBD");
    EXPECT_EQ(choose(folder.path(),
                     [](QFileDialog& panel) {
                         waitForListing(panel, 1);
                         mark(panel, QString(QChar::ReplacementCharacter));
                         confirm(panel);
                     }),
              twin);
}

TEST_F(QtFolderChooserTest, nameWithQuotationMarksNeverAnswersAnotherFolder) {
    const std::string quoted = make(folder, "a\"b\"c");
    const auto chooseQuoted = [&] {
        return choose(folder.path(), [](QFileDialog& panel) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return listed(panel).contains(QStringLiteral("a\"b\"c")); }));
            mark(panel, QStringLiteral("a\"b\"c"));
            confirm(panel);
        });
    };
    EXPECT_EQ(chooseQuoted(), quoted);
    make(folder, "b");
    EXPECT_EQ(chooseQuoted().value_or(quoted), quoted);
    const auto typed = choose(folder.path(), [](QFileDialog& panel) {
        waitForListing(panel, 2);
        type("a\"b\"c");
        press(Qt::Key_Return);
    });
    EXPECT_EQ(typed.value_or(quoted), quoted);
}

TEST_F(QtFolderChooserTest, whatIsNoFolderIsNotAnswered) {
    const std::string file = folder.write("letter.odt", "mine");
    for (const std::string& typed : {file, folder.path("missing"), std::string("$HOME")}) {
        EXPECT_EQ(choose(folder.path(),
                         [&](QFileDialog& panel) {
                             // Qt's panel may say in a box of its own that there is no such folder.
                             QTimer::singleShot(0, &panel, [] {
                                 if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                                     box->close();
                                 }
                             });
                             type(typed);
                             press(Qt::Key_Return);
                         }),
                  std::nullopt)
            << typed;
    }
}

TEST_F(QtFolderChooserTest, panelFitsTheScreenAndWearsTheThemesColours) {
    Theme::setDark(true);
    choose(folder.path(), [](QFileDialog& panel) {
        const QSize room = panel.screen()->availableSize();
        EXPECT_LE(panel.frameGeometry().width(), room.width());
        EXPECT_LE(panel.frameGeometry().height(), room.height());
        EXPECT_EQ(panel.palette().color(QPalette::Window), Theme::colour(Colour::window));
        EXPECT_EQ(list(panel).palette().color(QPalette::Base), Theme::colour(Colour::card));
    });
    Theme::setDark(false);
}

TEST_F(QtFolderChooserTest, panelBelongsToTheWindowAndGoesAwayWithIt) {
    auto* window = new QWidget;
    window->show();
    bool wasModal = false;
    QTimer::singleShot(0, [&] {
        const QWidget* panel = QApplication::activeModalWidget();
        ASSERT_NE(panel, nullptr);
        wasModal = panel->windowModality() == Qt::WindowModal && panel->parentWidget() == window;
        delete window;
    });
    QtFolderChooser chooser([window] { return window; });
    EXPECT_EQ(chooser.chooseFolder(message, folder.path()), std::nullopt);
    EXPECT_TRUE(wasModal);
}

TEST_F(QtFolderChooserTest, secondRequestLeavesTheOpenPanelAsItIs) {
    QtFolderChooser chooser([] { return nullptr; });
    std::optional<std::string> second = "not asked";
    QTimer::singleShot(0, [&] {
        QWidget* panel = QApplication::activeModalWidget();
        second = chooser.chooseFolder(message, "/");
        EXPECT_EQ(QApplication::activeModalWidget(), panel);
        QApplication::processEvents();
        press(Qt::Key_Return);
    });
    EXPECT_EQ(chooser.chooseFolder(message, folder.path()), folder.path());
    EXPECT_EQ(second, std::nullopt);
    QTimer::singleShot(0, [] {
        QApplication::processEvents();
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(chooser.chooseFolder(message, folder.path()), std::nullopt);
}

}  // namespace kestrune
