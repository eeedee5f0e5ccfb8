#include "ui/TreemapView.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QImage>
#include <QMouseEvent>
#include <QTest>
#include <QToolTip>
#include <utility>

#include "tests/ui/TreemapFixture.h"
#include "ui/Theme.h"

namespace kestrune {

namespace {

const std::string projects = "/home/anna/Projects";
const std::string music = "/home/anna/Music";
const std::string image = "/home/anna/disk.img";

class PaintCounter final : public QObject {
public:
    int paints = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

void move(QWidget& view, const QPoint& place) {
    QMouseEvent event(QEvent::MouseMove, place, view.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &event);
}

void askForMenu(QWidget& view, QContextMenuEvent::Reason reason, const QPoint& place) {
    QContextMenuEvent event(reason, place, view.mapToGlobal(place));
    QApplication::sendEvent(&view, &event);
}

QColor colourAt(TreemapView& view, const QPoint& place) {
    return view.grab().toImage().pixelColor(place);
}

// Below the label and off the edge.
QPoint groundOf(const TreemapView& view, std::size_t index) {
    return view.tileRect(index).bottomLeft() + QPoint(12, -12);
}

// Whether place, in the tile at rank, has text in it.
bool hasInk(TreemapView& view, int rank, const QRect& place) {
    const QImage picture = view.grab().toImage();
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            if (Theme::contrast(picture.pixelColor(x, y), Theme::rankFill(rank)) > 4) {
                return true;
            }
        }
    }
    return false;
}

QColor edgeOf(TreemapView& view, std::size_t index) {
    const QRect box = view.tileRect(index);
    return colourAt(view, QPoint(box.left() + box.width() / 2, box.bottom()));
}

}  // namespace

class TreemapViewTest : public TreemapFixture {};

TEST_F(TreemapViewTest, isHiddenWhileItHasNoTiles) {
    EXPECT_TRUE(view.isVisible());
    view.setTiles({});
    EXPECT_FALSE(view.isVisible());
    view.setTiles(treemapTiles());
    EXPECT_TRUE(view.isVisible());
}

TEST_F(TreemapViewTest, tilesFillThePictureWithGapsOfTwoPixels) {
    EXPECT_EQ(view.tileRect(0).topLeft(), QPoint(0, 0));
    EXPECT_EQ(view.tileRect(0).bottom(), 199);
    EXPECT_EQ(view.tileRect(1).left() - view.tileRect(0).right(), 3);
    int right = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        right = std::max(right, view.tileRect(index).right());
        for (std::size_t other = 0; other < index; ++other) {
            EXPECT_FALSE(view.tileRect(index).adjusted(-1, -1, 1, 1).intersects(view.tileRect(other)));
        }
    }
    EXPECT_EQ(right, 775);
}

TEST_F(TreemapViewTest, everyPlaceBelongsToATileAlsoBetweenThem) {
    for (int x = 0; x < view.width(); x += 3) {
        EXPECT_TRUE(view.indexAt(QPoint(x, 100)).has_value()) << x;
    }
    EXPECT_EQ(view.indexAt(QPoint(-1, 100)), std::nullopt);
    EXPECT_EQ(view.indexAt(QPoint(100, 200)), std::nullopt);
}

TEST_F(TreemapViewTest, rightToLeftTheLargestTileLiesAtTheTopRight) {
    const QRect largest = view.tileRect(0);
    view.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(view.tileRect(0), QRect(QPoint(776 - largest.width(), 0), largest.size()));
    EXPECT_EQ(view.indexAt(QPoint(770, 10)), std::optional<std::size_t>(0));
}

TEST_F(TreemapViewTest, aTileHasTheColourOfItsRankInLightAndDark) {
    for (const bool dark : {false, true}) {
        Theme::setDark(dark);
        EXPECT_EQ(colourAt(view, groundOf(view, 0)), Theme::rankFill(0));
        EXPECT_EQ(colourAt(view, groundOf(view, 1)), Theme::rankFill(1));
        EXPECT_EQ(colourAt(view, groundOf(view, 3)), Theme::rankFill(8));
        EXPECT_EQ(edgeOf(view, 1), Theme::rankStrong(1));
    }
    Theme::setDark(false);
}

TEST_F(TreemapViewTest, thePointerOutlinesTheTileAndTellsItsItemOnce) {
    move(view, middleOf(1));
    move(view, middleOf(1) + QPoint(3, 0));
    EXPECT_EQ(hovers, Paths{music});
    EXPECT_EQ(edgeOf(view, 1), Theme::colour(Colour::text1));
    EXPECT_EQ(edgeOf(view, 0), Theme::rankStrong(0));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view, &leave);
    EXPECT_EQ(hovers, (Paths{music, ""}));
    EXPECT_EQ(edgeOf(view, 1), Theme::rankStrong(1));
}

TEST_F(TreemapViewTest, aRowUnderThePointerOutlinesItsTile) {
    view.setHighlighted(music);
    EXPECT_EQ(edgeOf(view, 1), Theme::colour(Colour::text1));
    view.setHighlighted("");
    EXPECT_EQ(edgeOf(view, 1), Theme::rankStrong(1));
    EXPECT_EQ(edgeOf(view, 3), Theme::rankStrong(8)) << "no row is no tile, not the one without a path";
}

TEST_F(TreemapViewTest, aClickSelectsAndADoubleClickExplores) {
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, middleOf(0));
    EXPECT_EQ(selections, Paths{projects});
    EXPECT_EQ(view.selectedIndex(), std::optional<std::size_t>(0));
    EXPECT_TRUE(explorations.empty());
    QTest::mouseDClick(&view, Qt::LeftButton, Qt::NoModifier, middleOf(0));
    EXPECT_EQ(explorations, Paths{projects});
}

TEST_F(TreemapViewTest, aFileIsSelectedAndNeverExplored) {
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, middleOf(2));
    QTest::mouseDClick(&view, Qt::LeftButton, Qt::NoModifier, middleOf(2));
    EXPECT_EQ(selections.front(), image);
    EXPECT_TRUE(explorations.empty());
}

TEST_F(TreemapViewTest, theTileOfSmallerItemsIsNeitherSelectedNorExploredAndHasNoMenu) {
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, middleOf(3));
    QTest::mouseDClick(&view, Qt::LeftButton, Qt::NoModifier, middleOf(3));
    askForMenu(view, QContextMenuEvent::Mouse, middleOf(3));
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_End);
    QTest::keyClick(&view, Qt::Key_Return);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_TRUE(selections.empty());
    EXPECT_TRUE(explorations.empty());
    EXPECT_TRUE(menus.empty());
}

TEST_F(TreemapViewTest, aDoubleClickDoesNotExploreATileThatCameUnderThePointerBetweenItsPresses) {
    const QPoint place = middleOf(0);
    QTest::mouseClick(&view, Qt::LeftButton, Qt::NoModifier, place);
    view.setTiles({treemapTile("Downloads", 90, 0), treemapTile("Projects", 10, 1)});
    QMouseEvent second(QEvent::MouseButtonDblClick, place, view.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                       Qt::NoModifier);
    QApplication::sendEvent(&view, &second);
    EXPECT_TRUE(explorations.empty());
    EXPECT_EQ(selections.back(), "/home/anna/Downloads");
}

TEST_F(TreemapViewTest, keysWalkTheRanksAndTellTheItem) {
    view.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(0));
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(2));
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(1));
    EXPECT_EQ(edgeOf(view, 1), Theme::colour(Colour::text1));
    QTest::keyClick(&view, Qt::Key_End);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(3));
    QTest::keyClick(&view, Qt::Key_Home);
    QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(0));
    EXPECT_EQ(hovers, (Paths{projects, music, image, music, "", projects}));
    EXPECT_TRUE(selections.empty());
}

TEST_F(TreemapViewTest, rightToLeftTheLeftKeyGoesOn) {
    view.setLayoutDirection(Qt::RightToLeft);
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(1));
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(0));
}

TEST_F(TreemapViewTest, returnExploresAFolderAndSpaceSelects) {
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(explorations, Paths{music});
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Enter);
    EXPECT_EQ(explorations, Paths{music}) << "a file";
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(selections, Paths{image});
}

TEST_F(TreemapViewTest, isOneStopOfTheTabKey) {
    QWidget after(&window);
    after.setFocusPolicy(Qt::StrongFocus);
    after.show();
    QWidget::setTabOrder(&before, &view);
    QWidget::setTabOrder(&view, &after);
    QTest::keyClick(&before, Qt::Key_Tab);
    EXPECT_TRUE(view.hasFocus());
    EXPECT_EQ(hovers, Paths{projects});
    QTest::keyClick(&view, Qt::Key_Tab);
    EXPECT_TRUE(after.hasFocus());
    EXPECT_EQ(hovers, (Paths{projects, ""}));
    EXPECT_EQ(edgeOf(view, 0), Theme::rankStrong(0));
}

TEST_F(TreemapViewTest, theMenuIsAskedForByPointerAndByKey) {
    askForMenu(view, QContextMenuEvent::Mouse, middleOf(1) + QPoint(5, 5));
    EXPECT_EQ(menuPlace, view.mapToGlobal(middleOf(1) + QPoint(5, 5)));
    view.setFocus(Qt::TabFocusReason);
    askForMenu(view, QContextMenuEvent::Keyboard, QPoint());
    EXPECT_EQ(menuPlace, view.mapToGlobal(middleOf(0)));
    EXPECT_EQ(menus, (Paths{music, projects}));
    EXPECT_TRUE(selections.empty());
}

TEST_F(TreemapViewTest, theTooltipNamesTheItemItsSizeAndItsShare) {
    QHelpEvent event(QEvent::ToolTip, middleOf(1), view.mapToGlobal(middleOf(1)));
    QApplication::sendEvent(&view, &event);
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("Music · 30 GB · 30%"))) << QToolTip::text().toStdString();
    QToolTip::hideText();
}

TEST_F(TreemapViewTest, hoverFocusAndSelectionStayWithTheirItemsWhenTilesMove) {
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_Right);
    view.setSelected(image);
    move(view, middleOf(0));
    hovers.clear();
    view.setTiles({treemapTile("Music", 60, 0), treemapTile("disk.img", 25, 1, false), treemapTile("Projects", 15, 2)});
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(0));
    EXPECT_EQ(view.selectedIndex(), std::optional<std::size_t>(1));
    EXPECT_EQ(edgeOf(view, 2), Theme::colour(Colour::text1)) << "still hovered";
    EXPECT_TRUE(hovers.empty());
}

TEST_F(TreemapViewTest, theKeyboardGoesToTheNeighbourOfAnItemThatIsGone) {
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_Right);
    view.setTiles({treemapTile("Projects", 80, 0), treemapTile("Downloads", 20, 1)});
    EXPECT_EQ(view.currentIndex(), std::optional<std::size_t>(1));
    EXPECT_EQ(hovers.back(), "/home/anna/Downloads");
}

TEST_F(TreemapViewTest, nothingIsExploredWhileItCannotBe) {
    view.setCanExplore(false);
    QTest::mouseDClick(&view, Qt::LeftButton, {}, middleOf(0));
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(explorations, Paths());
    view.setCanExplore(true);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(explorations, Paths({projects}));
}

TEST_F(TreemapViewTest, inAnotherFolderKeysBeginAtTheLargestItemOrWhereTheyAreTold) {
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, Qt::Key_End);
    view.startAt({});
    EXPECT_EQ(view.currentIndex(), 0U);
    view.startAt(music);
    EXPECT_EQ(view.currentIndex(), view.indexOf(music));
    EXPECT_EQ(hovers.back(), music);
    before.setFocus();
    view.startAt("/home/anna/gone");
    EXPECT_EQ(view.currentIndex(), std::nullopt);
}

TEST_F(TreemapViewTest, whatIsGoneIsNoLongerUnderThePointer) {
    move(view, middleOf(1));
    view.setTiles({treemapTile("Projects", 80, 0)});
    EXPECT_EQ(hovers, (Paths{music, ""}));
}

TEST_F(TreemapViewTest, equalTilesSetAgainDrawNothing) {
    PaintCounter counter;
    view.installEventFilter(&counter);
    view.setTiles(treemapTiles());
    view.setSelected("");
    view.setHighlighted("");
    QApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
    auto grown = treemapTiles();
    grown[0].bytes += 10;
    view.setTiles(grown);
    QApplication::processEvents();
    EXPECT_EQ(counter.paints, 1);
}

TEST_F(TreemapViewTest, aRememberedFolderShowsItsInsideBelowItsLabel) {
    auto tiles = treemapTiles();
    tiles[0].inside = {treemapTile("client", 30, 0), treemapTile("server", 20, 1)};
    view.setTiles(tiles);
    const QImage picture = view.grab().toImage();
    const QRect box = view.tileRect(0);
    EXPECT_NE(picture.pixelColor(groundOf(view, 0)), Theme::rankFill(0));
    EXPECT_EQ(picture.pixelColor(box.left() + 3, box.bottom() - 12), Theme::rankFill(0)) << "around the inside";
    EXPECT_EQ(picture.pixelColor(box.right() - 12, box.top() + 12), Theme::rankFill(0)) << "beside the label";
}

TEST_F(TreemapViewTest, aTileHasAsMuchOfItsLabelAsFits) {
    const auto linesOf = [this](std::int64_t bytes) {
        view.setTiles({treemapTile("Projects", 1000 - bytes, 0), treemapTile("Music", bytes, 1)});
        const QRect box = view.tileRect(1).adjusted(2, 2, -2, -2);
        const bool first = hasInk(view, 1, QRect(box.topLeft(), QSize(box.width(), 19)));
        const bool second = hasInk(view, 1, QRect(box.left(), box.top() + 22, box.width(), 18));
        return std::pair(first, second);
    };
    EXPECT_EQ(linesOf(110), std::pair(true, true)) << "name and size";
    EXPECT_EQ(linesOf(80), std::pair(true, false)) << "size";
    EXPECT_EQ(linesOf(60), std::pair(false, false)) << "too narrow for any";
}

TEST_F(TreemapViewTest, theSmallestItemStillHasATileThatThePointerFinds) {
    view.setTiles({treemapTile("Projects", 1'000'000'000, 0), treemapTile("tiny", 1, 1)});
    const QRect box = view.tileRect(1);
    EXPECT_TRUE(view.rect().contains(box));
    EXPECT_GE(box.width(), 3);
    EXPECT_LE(box.width(), 8);
    EXPECT_EQ(view.indexAt(box.center()), std::optional<std::size_t>(1));
    EXPECT_EQ(colourAt(view, box.center()), Theme::rankFill(1));
}

TEST_F(TreemapViewTest, tilesThatAreSmallerThanTheGapStayInsideThePicture) {
    std::vector<ExplorerTile> many;
    many.reserve(10'000);
    for (int index = 0; index < 10'000; ++index) {
        many.push_back(treemapTile(std::to_string(index), 1, index));
    }
    view.setTiles(many);
    view.resize(20, 200);
    for (std::size_t index = 0; index < many.size(); ++index) {
        ASSERT_TRUE(view.rect().contains(view.tileRect(index))) << index;
        ASSERT_FALSE(view.tileRect(index).isEmpty());
    }
    const QColor ground = Theme::colour(Colour::window);
    const QImage picture = view.grab().toImage();
    for (const QPoint corner : {QPoint(0, 0), QPoint(19, 0), QPoint(0, 199), QPoint(19, 199)}) {
        EXPECT_NE(picture.pixelColor(corner), ground) << corner.x() << ", " << corner.y();
    }
}

TEST_F(TreemapViewTest, rightToLeftLabelsStartAtTheRight) {
    const auto cornerOf = [this](bool right) {
        const QRect box = view.tileRect(0);
        return QRect(right ? box.right() - 60 : box.left() + 9, box.top() + 8, 50, 14);
    };
    EXPECT_TRUE(hasInk(view, 0, cornerOf(false)));
    EXPECT_FALSE(hasInk(view, 0, cornerOf(true)));
    view.setLayoutDirection(Qt::RightToLeft);
    EXPECT_FALSE(hasInk(view, 0, cornerOf(false)));
    EXPECT_TRUE(hasInk(view, 0, cornerOf(true)));
}

}  // namespace kestrune
