#include "ui/ExplorerList.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QEnterEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "tests/ui/SeenPieces.h"
#include "ui/ExplorerRowView.h"
#include "ui/ScrollArea.h"

namespace kestrune {

namespace {

using Texts = std::vector<std::string>;

DiskExplorerResult foldersOf(const std::vector<std::pair<std::string, std::int64_t>>& folders) {
    DiskExplorerResult result;
    for (const auto& [path, bytes] : folders) {
        result.folders.push_back({path, bytes, path.find('.') == std::string::npos});
    }
    return result;
}

std::vector<ExplorerRow> rowsOf(const std::vector<std::pair<std::string, std::int64_t>>& folders) {
    return ExplorerListing::folderRows(foldersOf(folders));
}

std::vector<ExplorerRow> manyRows(int count, const std::string& root = "/r") {
    std::vector<std::pair<std::string, std::int64_t>> folders;
    for (int index = 0; index < count; ++index) {
        folders.emplace_back(root + "/folder " + std::to_string(index), 1'000'000'000LL * (count - index));
    }
    return rowsOf(folders);
}

const std::vector<ExplorerRow> threeRows =
    rowsOf({{"/r/alpha", 60'000'000'000}, {"/r/beta", 30'000'000'000}, {"/r/gamma.bin", 10'000'000'000}});
const std::vector<ExplorerRow> rankedAnew =
    rowsOf({{"/r/delta", 90'000'000'000}, {"/r/beta", 70'000'000'000}, {"/r/alpha", 60'000'000'000}});

/// A list in a scrolling window, below a button that has the keyboard focus at first.
class ExplorerListTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto* body = new QWidget;
        auto* layout = new QVBoxLayout(body);
        m_elsewhere = new QPushButton(QStringLiteral("Elsewhere"), body);
        m_list = new ExplorerList(QStringLiteral("Where the space goes"), body);
        layout->addWidget(m_elsewhere);
        layout->addWidget(m_list);
        layout->addStretch(1);
        m_area.setWidget(body);
        m_area.resize(800, 500);
        m_area.show();
        m_area.activateWindow();
        m_elsewhere->setFocus();
        record("selected ", &ExplorerList::selected);
        record("explored ", &ExplorerList::explored);
        record("revealed ", &ExplorerList::revealed);
        QObject::connect(m_list, &ExplorerList::hovered, [this](const std::string& path) { m_hovered = path; });
        m_list->setFolder("/r");
        settle();
    }

    void record(const std::string& what, void (ExplorerList::*signal)(const std::string&)) {
        QObject::connect(m_list, signal, [this, what](const std::string& path) { m_asked.push_back(what + path); });
    }

    static void settle() {
        QApplication::processEvents();
        QApplication::processEvents();
    }

    void show(const std::vector<ExplorerRow>& rows) {
        m_list->setRows(rows);
        settle();
    }

    /// The pointer comes over the list from elsewhere.
    void pointerComes() {
        QCursor::setPos(QCursor::pos() + QPoint(3, 3));
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(m_list, &enter);
    }

    void pointerLeaves() {
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(m_list, &leave);
        settle();
    }

    /// The rows from the top down, as they lie on the screen.
    [[nodiscard]] Texts paths() const {
        QList<ExplorerRowView*> rows = m_list->findChildren<ExplorerRowView*>();
        rows.erase(std::remove_if(rows.begin(), rows.end(), [](const QWidget* row) { return !row->isVisible(); }),
                   rows.end());
        std::sort(rows.begin(), rows.end(),
                  [](const QWidget* one, const QWidget* other) { return one->y() < other->y(); });
        Texts result;
        for (const ExplorerRowView* row : std::as_const(rows)) {
            result.push_back(row->row().path);
        }
        return result;
    }

    [[nodiscard]] QWidget* control(const QString& name) { return namedIn(m_area, name); }

    [[nodiscard]] ExplorerRowView* rowAt(const std::string& path) const {
        const auto rows = m_list->findChildren<ExplorerRowView*>();
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const ExplorerRowView* row) {
            return row->isVisible() && row->row().path == path;
        });
        return found == rows.end() ? nullptr : *found;
    }

    static void press(Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        settle();
    }

    [[nodiscard]] static QString focused() {
        return QApplication::focusWidget() == nullptr ? QString() : QApplication::focusWidget()->accessibleName();
    }

    Texts m_asked;
    std::string m_hovered;
    ScrollArea m_area;
    QPushButton* m_elsewhere = nullptr;
    ExplorerList* m_list = nullptr;
};

}  // namespace

TEST_F(ExplorerListTest, aRowReadsAsOneSentence) {
    show(threeRows);
    EXPECT_NE(control(QStringLiteral("alpha, folder, 60 GB, 60%")), nullptr);
    EXPECT_NE(control(QStringLiteral("gamma.bin, file, 10 GB, 10%")), nullptr);
    EXPECT_EQ(control(QStringLiteral("beta, folder, 30 GB, 30%"))->accessibleDescription(), QStringLiteral("/r/beta"));
}

TEST_F(ExplorerListTest, aLargestFileTellsItsFolderOnALineOfItsOwn) {
    DiskExplorerResult result = foldersOf({{"/r/alpha", 100}});
    result.largestFiles = {{"/r/alpha/deep/a.bin", 50, false}, {"/r/a.bin", 25, false}};
    show(threeRows);
    const int folders = m_list->height();
    show(ExplorerListing::fileRows(result, "/r"));
    EXPECT_NE(control(QStringLiteral("a.bin, alpha/deep, file, 50 bytes, 50%")), nullptr);
    EXPECT_NE(control(QStringLiteral("Show in Finder: a.bin, alpha/deep")), nullptr);
    EXPECT_NE(control(QStringLiteral("Show in Finder: a.bin, r")), nullptr);
    EXPECT_EQ(folders, 3 * 40 + 2);
    EXPECT_EQ(m_list->height(), 2 * 52 + 2);
}

TEST_F(ExplorerListTest, onlyFoldersCanBeExplored) {
    show(threeRows);
    EXPECT_NE(control(QStringLiteral("Explore: alpha")), nullptr);
    EXPECT_EQ(control(QStringLiteral("Explore: gamma.bin")), nullptr);
    QTest::mouseClick(control(QStringLiteral("Explore: beta")), Qt::LeftButton);
    QTest::mouseClick(control(QStringLiteral("Show in Finder: gamma.bin")), Qt::LeftButton);
    EXPECT_EQ(m_asked, (Texts{"explored /r/beta", "revealed /r/gamma.bin"}));
}

TEST_F(ExplorerListTest, aClickSelectsAndADoubleClickExplores) {
    show(threeRows);
    QTest::mouseClick(rowAt("/r/beta"), Qt::LeftButton, {}, QPoint(60, 20));
    EXPECT_EQ(m_asked, (Texts{"selected /r/beta"}));
    QTest::mouseDClick(rowAt("/r/beta"), Qt::LeftButton, {}, QPoint(60, 20));
    EXPECT_EQ(m_asked.back(), "explored /r/beta");
    m_asked.clear();
    QTest::mouseDClick(rowAt("/r/gamma.bin"), Qt::LeftButton, {}, QPoint(60, 20));
    EXPECT_EQ(std::count(m_asked.begin(), m_asked.end(), "explored /r/gamma.bin"), 0);
}

TEST_F(ExplorerListTest, returnExploresTheFolderUnderTheKeyboard) {
    show(threeRows);
    rowAt("/r/alpha")->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(m_asked, (Texts{"selected /r/alpha"}));
    press(Qt::Key_Return);
    EXPECT_EQ(m_asked.back(), "explored /r/alpha");
    press(Qt::Key_End);
    EXPECT_EQ(m_asked.back(), "selected /r/gamma.bin");
    press(Qt::Key_Return);
    EXPECT_EQ(m_asked.back(), "selected /r/gamma.bin") << "a file holds nothing to explore";
}

TEST_F(ExplorerListTest, nothingIsExploredWhileItCannotBe) {
    show(threeRows);
    m_list->setCanExplore(false);
    ExplorerRowView& first = *m_list->findChildren<ExplorerRowView*>().constFirst();
    QTest::mouseDClick(&first, Qt::LeftButton);
    first.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&first, Qt::Key_Return);
    EXPECT_EQ(std::count(m_asked.begin(), m_asked.end(), "explored /r/alpha"), 0);
    show(manyRows(5));  // rows that are made now are no different
    for (const ExplorerRowView* row : m_list->findChildren<ExplorerRowView*>()) {
        EXPECT_FALSE(row->focusStops().at(1)->isEnabled());
    }
    m_list->setCanExplore(true);
    QTest::keyClick(&first, Qt::Key_Return);
    EXPECT_EQ(m_asked.back(), "explored /r/folder 0");
}

TEST_F(ExplorerListTest, theArrowKeysPassOverAButtonThatCannotBeUsed) {
    show(threeRows);
    const auto rows = m_list->findChildren<ExplorerRowView*>();
    rows.at(0)->focusStops().at(1)->setFocus(Qt::TabFocusReason);
    rows.at(1)->setCanExplore(false);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), rows.at(1));
}

TEST_F(ExplorerListTest, screenReadersExploreAFolderButNotAFile) {
    show(threeRows);
    EXPECT_TRUE(rowAt("/r/alpha")->isActivatable());
    rowAt("/r/alpha")->activate();
    EXPECT_EQ(m_asked, (Texts{"explored /r/alpha"}));
    EXPECT_FALSE(rowAt("/r/gamma.bin")->isActivatable());
}

TEST_F(ExplorerListTest, theTabKeyGoesThroughARowAndItsButtons) {
    show(threeRows);
    QStringList stops;
    for (int step = 0; step < 8; ++step) {
        press(Qt::Key_Tab);
        stops.append(focused());
    }
    EXPECT_EQ(stops, (QStringList{QStringLiteral("alpha, folder, 60 GB, 60%"), QStringLiteral("Explore: alpha"),
                                  QStringLiteral("Show in Finder: alpha"), QStringLiteral("beta, folder, 30 GB, 30%"),
                                  QStringLiteral("Explore: beta"), QStringLiteral("Show in Finder: beta"),
                                  QStringLiteral("gamma.bin, file, 10 GB, 10%"),
                                  QStringLiteral("Show in Finder: gamma.bin")}));
}

TEST_F(ExplorerListTest, arrowKeysGoFromRowToRowAlongOneControl) {
    show(threeRows);
    control(QStringLiteral("Explore: alpha"))->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("Explore: beta"));
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("gamma.bin, file, 10 GB, 10%")) << "there is no Explore there";
    press(Qt::Key_Home);
    EXPECT_EQ(focused(), QStringLiteral("Explore: alpha"));
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), QStringLiteral("Explore: alpha"));
}

TEST_F(ExplorerListTest, theKeysScrollToTheRowTheyReach) {
    show(manyRows(200));
    rowAt("/r/folder 0")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    EXPECT_TRUE(focused().startsWith(QStringLiteral("folder 199,")));
    EXPECT_GT(m_area.verticalScrollBar()->value(), 7000);
    press(Qt::Key_PageUp);
    EXPECT_TRUE(focused().startsWith(QStringLiteral("folder 18"))) << focused().toStdString();
}

TEST_F(ExplorerListTest, rowsRankAnewInPlaceWhileNobodyIsThere) {
    show(threeRows);
    const auto before = m_list->findChildren<ExplorerRowView*>();
    show(rankedAnew);
    EXPECT_EQ(paths(), (Texts{"/r/delta", "/r/beta", "/r/alpha"}));
    EXPECT_EQ(m_list->findChildren<ExplorerRowView*>(), before) << "no row is built anew";
    show({});
    EXPECT_TRUE(paths().empty());
    EXPECT_EQ(m_list->height(), 0);
}

TEST_F(ExplorerListTest, noRowMovesUnderThePointerButFiguresChange) {
    show(threeRows);
    pointerComes();
    show(rankedAnew);
    EXPECT_EQ(paths(), (Texts{"/r/alpha", "/r/beta", "/r/gamma.bin"}));
    EXPECT_NE(control(QStringLiteral("beta, folder, 70 GB, 32%")), nullptr);
    pointerLeaves();
    EXPECT_EQ(paths(), (Texts{"/r/delta", "/r/beta", "/r/alpha"}));
}

TEST_F(ExplorerListTest, aPointerThatRestsWhereAnotherFolderWasChosenHoldsNothing) {
    show(threeRows);
    pointerComes();
    m_list->setFolder("/r/alpha");
    show({});
    show(rowsOf({{"/r/alpha/x", 5}}));
    show(rowsOf({{"/r/alpha/y", 9}, {"/r/alpha/x", 5}}));
    EXPECT_EQ(paths(), (Texts{"/r/alpha/y", "/r/alpha/x"}));
    pointerComes();
    show(rowsOf({{"/r/alpha/x", 10}, {"/r/alpha/y", 9}}));
    EXPECT_EQ(paths(), (Texts{"/r/alpha/y", "/r/alpha/x"}));
    pointerLeaves();
}

TEST_F(ExplorerListTest, theKeyboardHoldsTheListAndStaysWithItsRow) {
    show(threeRows);
    rowAt("/r/alpha")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    show(rankedAnew);
    EXPECT_EQ(paths(), (Texts{"/r/alpha", "/r/beta", "/r/gamma.bin"}));
    EXPECT_EQ(focused(), QStringLiteral("beta, folder, 70 GB, 32%"));
    m_elsewhere->setFocus();
    settle();
    EXPECT_EQ(paths(), (Texts{"/r/delta", "/r/beta", "/r/alpha"}));
}

TEST_F(ExplorerListTest, aClickedRowKeepsTheFocusWhereverItGoes) {
    show(threeRows);
    QTest::mouseClick(rowAt("/r/alpha"), Qt::LeftButton, {}, QPoint(60, 20));
    rowAt("/r/alpha")->setFocus(Qt::MouseFocusReason);
    m_asked.clear();
    show(rankedAnew);
    EXPECT_EQ(paths(), (Texts{"/r/delta", "/r/beta", "/r/alpha"}));
    EXPECT_EQ(focused(), QStringLiteral("alpha, folder, 60 GB, 27%"));
    EXPECT_TRUE(m_asked.empty());
}

TEST_F(ExplorerListTest, theKeyboardWaitsForTheRowsOfTheFolderItOpened) {
    show(threeRows);
    rowAt("/r/beta")->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    m_list->setFolder("/r/beta");
    show({});
    show(rowsOf({{"/r/beta/x", 5}}));
    EXPECT_EQ(focused(), QStringLiteral("x, folder, 5 bytes, 100%"));
    show(rowsOf({{"/r/beta/y", 15}, {"/r/beta/x", 5}}));
    EXPECT_EQ(focused(), QStringLiteral("y, folder, 15 bytes, 75%"));
}

TEST_F(ExplorerListTest, anOpenMenuHoldsTheList) {
    show(threeRows);
    QMenu menu(m_list);
    std::string asked;
    QObject::connect(m_list, &ExplorerList::menuWanted, [&](const std::string& path, const QPoint& at) {
        asked = path;
        menu.addAction(QStringLiteral("Explore"));
        menu.popup(at);
    });
    QContextMenuEvent wanted(QContextMenuEvent::Mouse, QPoint(60, 20), rowAt("/r/beta")->mapToGlobal(QPoint(60, 20)));
    QApplication::sendEvent(rowAt("/r/beta"), &wanted);
    EXPECT_EQ(asked, "/r/beta");
    EXPECT_EQ(m_asked, (Texts{"selected /r/beta"}));
    show(rankedAnew);
    EXPECT_EQ(paths(), (Texts{"/r/alpha", "/r/beta", "/r/gamma.bin"}));
    menu.close();
    settle();
    EXPECT_EQ(paths(), (Texts{"/r/delta", "/r/beta", "/r/alpha"}));
}

TEST_F(ExplorerListTest, theMenuKeyOpensTheMenuAtTheRow) {
    show(threeRows);
    QPoint place;
    QObject::connect(m_list, &ExplorerList::menuWanted, [&](const std::string&, const QPoint& at) { place = at; });
    QContextMenuEvent wanted(QContextMenuEvent::Keyboard, QPoint(0, 0), QPoint(0, 0));
    QApplication::sendEvent(rowAt("/r/beta"), &wanted);
    EXPECT_TRUE(rowAt("/r/beta")->rect().contains(rowAt("/r/beta")->mapFromGlobal(place)));
}

TEST_F(ExplorerListTest, hoveringTellsTheRowAndLeavingTellsNone) {
    show(threeRows);
    QEnterEvent enter(QPointF(60, 20), QPointF(60, 20), QPointF(60, 20));
    QApplication::sendEvent(rowAt("/r/beta"), &enter);
    EXPECT_EQ(m_hovered, "/r/beta");
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(rowAt("/r/beta"), &leave);
    EXPECT_EQ(m_hovered, "");
}

TEST_F(ExplorerListTest, selectionAndHighlightGoByPathAndCanBeSeen) {
    show(threeRows);
    const auto look = [this](const std::string& path) { return rowAt(path)->grab().toImage().pixelColor(4, 20); };
    const QColor plain = look("/r/alpha");
    m_list->setHighlighted("/r/beta");
    EXPECT_NE(look("/r/beta"), plain);
    m_list->setHighlighted("");
    EXPECT_EQ(look("/r/beta"), plain);
    m_list->setSelected("/r/alpha");
    const QColor chosen = look("/r/alpha");
    EXPECT_NE(chosen, plain);
    show(rankedAnew);
    EXPECT_EQ(look("/r/alpha"), chosen);
    EXPECT_EQ(look("/r/delta"), plain);
}

TEST_F(ExplorerListTest, scrollingStaysWhereItIsWhenTheListChanges) {
    auto rows = manyRows(200);
    show(rows);
    m_area.verticalScrollBar()->setValue(3000);
    std::swap(rows[0], rows[199]);
    show(rows);
    EXPECT_EQ(m_area.verticalScrollBar()->value(), 3000);
}

TEST_F(ExplorerListTest, foreignTextStaysPlainAndSiblingsThatAreNoTextAreTwoRows) {
    show(rowsOf({{"/r/<b>&x", 4}, {"/r/two\nlines", 3}, {"/r/\xFF", 2}, {"/r/\xFE", 1}}));
    EXPECT_NE(control(QStringLiteral("Explore: <b>&x")), nullptr);
    EXPECT_NE(control(QStringLiteral("Explore: two␊lines")), nullptr);
    EXPECT_EQ(paths().size(), 4U);
    rowAt("/r/\xFE")->activate();
    EXPECT_EQ(m_asked, (Texts{"explored /r/\xFE"}));
}

TEST_F(ExplorerListTest, atLargeTextTheButtonsGoBelowTheName) {
    m_area.resize(420, 500);
    show(threeRows);
    const QWidget* button = control(QStringLiteral("Explore: alpha"));
    EXPECT_GE(button->y(), 30);
    EXPECT_TRUE(rowAt("/r/alpha")->rect().contains(button->geometry()));
    EXPECT_GT(rowAt("/r/alpha")->height(), 60);
}

}  // namespace kestrune
