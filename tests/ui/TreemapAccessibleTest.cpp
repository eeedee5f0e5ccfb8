#include "ui/TreemapAccessible.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QTest>

#include "tests/ui/TreemapFixture.h"

namespace kestrune {

class TreemapAccessibleTest : public TreemapFixture {
protected:
    [[nodiscard]] QAccessibleInterface* list() { return QAccessible::queryAccessibleInterface(&view); }
};

TEST_F(TreemapAccessibleTest, thePictureIsAListWithOneItemForEachTile) {
    ASSERT_NE(list(), nullptr);
    EXPECT_EQ(list()->role(), QAccessible::List);
    EXPECT_FALSE(list()->text(QAccessible::Name).isEmpty());
    ASSERT_EQ(list()->childCount(), 4);
    for (int index = 0; index < 4; ++index) {
        QAccessibleInterface* item = list()->child(index);
        ASSERT_NE(item, nullptr);
        EXPECT_TRUE(item->isValid());
        EXPECT_EQ(item->role(), QAccessible::ListItem);
        EXPECT_EQ(item->parent(), list());
        EXPECT_EQ(list()->indexOfChild(item), index);
        EXPECT_EQ(list()->child(index), item) << "the same item is the same piece";
    }
    EXPECT_EQ(list()->child(4), nullptr);
    EXPECT_EQ(list()->child(-1), nullptr);
}

TEST_F(TreemapAccessibleTest, eachItemTellsItsNameSizeAndShare) {
    QAccessibleInterface* item = list()->child(1);
    EXPECT_EQ(item->text(QAccessible::Name), QStringLiteral("Music, 30 GB, 30%"));
    EXPECT_EQ(item->text(QAccessible::Value), QStringLiteral("30 GB, 30%"));
    ASSERT_NE(item->valueInterface(), nullptr);
    EXPECT_DOUBLE_EQ(item->valueInterface()->currentValue().toDouble(), 30.0);
    EXPECT_DOUBLE_EQ(item->valueInterface()->maximumValue().toDouble(), 100.0);
    EXPECT_EQ(list()->child(3)->text(QAccessible::Name), QStringLiteral("7 smaller items, 5 GB, 5%"));
}

TEST_F(TreemapAccessibleTest, anItemLiesWhereItsTileIs) {
    for (int index = 0; index < 4; ++index) {
        const QRect box = view.tileRect(static_cast<std::size_t>(index));
        EXPECT_EQ(list()->child(index)->rect(), QRect(view.mapToGlobal(box.topLeft()), box.size()));
        const QPoint middle = view.mapToGlobal(box.center());
        EXPECT_EQ(list()->childAt(middle.x(), middle.y()), list()->child(index));
    }
}

TEST_F(TreemapAccessibleTest, pressingExploresFoldersOnly) {
    QAccessibleInterface* folder = list()->child(0);
    ASSERT_TRUE(folder->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    folder->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(explorations, Paths{"/home/anna/Projects"});
    for (const int other : {2, 3}) {
        QAccessibleActionInterface* actions = list()->child(other)->actionInterface();
        EXPECT_FALSE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());
    }
    EXPECT_EQ(explorations.size(), 1U);
}

TEST_F(TreemapAccessibleTest, theFocusIsOnTheItemThatKeysActOn) {
    EXPECT_EQ(list()->focusChild(), nullptr);
    list()->child(1)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(view.hasFocus());
    EXPECT_EQ(list()->focusChild(), list()->child(1));
    EXPECT_TRUE(list()->child(1)->state().focused);
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_FALSE(list()->child(1)->state().focused);
    EXPECT_TRUE(list()->child(2)->state().focused);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_TRUE(list()->child(2)->state().selected);
    EXPECT_FALSE(list()->child(1)->state().selected);
}

TEST_F(TreemapAccessibleTest, anItemStaysTheSamePieceWhereverItsTileMoves) {
    QAccessibleInterface* item = list()->child(1);
    view.setTiles({treemapTile("Music", 60, 0), treemapTile("Projects", 40, 1)});
    EXPECT_EQ(list()->child(0), item);
    EXPECT_EQ(item->text(QAccessible::Name), QStringLiteral("Music, 60 GB, 60%"));
    EXPECT_EQ(list()->childCount(), 2);
}

TEST_F(TreemapAccessibleTest, anItemThatIsGoneIsNoLongerValid) {
    QAccessibleInterface* item = list()->child(1);
    view.setTiles({treemapTile("Projects", 40, 0)});
    EXPECT_FALSE(item->isValid());
    EXPECT_TRUE(item->text(QAccessible::Name).isEmpty());
    EXPECT_TRUE(item->state().invisible);
    EXPECT_TRUE(item->rect().isEmpty());
    const QAccessible::Id id = QAccessible::uniqueId(item);
    EXPECT_NE(list()->child(0), nullptr);
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr) << "it is let go of";
}

}  // namespace kestrune
