#include "ui/Disclosure.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>

#include "tests/ui/SeenPieces.h"
#include "ui/Motion.h"

namespace kestrune {

namespace {

const QString title = QStringLiteral("How this scan works");
const QString text = QStringLiteral("We include hidden files, skip linked folders and other mounted drives.");

class DisclosureTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(&m_window);
        layout->addWidget(&m_disclosure);
        layout->addStretch(1);
        m_window.resize(400, 300);
        m_window.show();
        QApplication::processEvents();
    }

    void TearDown() override { Motion::setReduced(true); }

    [[nodiscard]] QWidget* button() { return namedIn(m_window, title); }

    [[nodiscard]] QAccessible::State state() { return QAccessible::queryAccessibleInterface(button())->state(); }

    [[nodiscard]] bool isTextSeen() { return namedIn(m_window, text) != nullptr; }

    QWidget m_window;
    Disclosure m_disclosure{title, text};
};

}  // namespace

TEST_F(DisclosureTest, itIsClosedAtFirstAndSaysSo) {
    ASSERT_NE(button(), nullptr);
    EXPECT_TRUE(state().expandable);
    EXPECT_TRUE(state().collapsed);
    EXPECT_FALSE(state().expanded);
    EXPECT_FALSE(isTextSeen());
}

TEST_F(DisclosureTest, aClickOpensItAndAnotherClosesIt) {
    const int closed = m_disclosure.heightForWidth(400);
    QTest::mouseClick(button(), Qt::LeftButton);
    EXPECT_TRUE(state().expanded);
    EXPECT_TRUE(isTextSeen());
    EXPECT_GT(m_disclosure.heightForWidth(400), closed);
    QTest::mouseClick(button(), Qt::LeftButton);
    EXPECT_FALSE(m_disclosure.isOpen());
    EXPECT_FALSE(isTextSeen());
    EXPECT_EQ(m_disclosure.heightForWidth(400), closed);
}

TEST_F(DisclosureTest, spaceAndReturnOpenAndCloseIt) {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        const bool before = m_disclosure.isOpen();
        QTest::keyClick(button(), key);
        EXPECT_NE(m_disclosure.isOpen(), before) << key;
    }
}

TEST_F(DisclosureTest, aScreenReaderPressesIt) {
    QAccessible::queryAccessibleInterface(button())->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(m_disclosure.isOpen());
}

TEST_F(DisclosureTest, aNarrowWindowBreaksTheTextIntoMoreLines) {
    m_disclosure.setOpen(true);
    EXPECT_GT(m_disclosure.heightForWidth(200), m_disclosure.heightForWidth(600));
}

TEST_F(DisclosureTest, withMotionItUnfoldsFromNothing) {
    Motion::setReduced(false);
    const int closed = m_disclosure.heightForWidth(400);
    m_disclosure.setOpen(true);
    EXPECT_TRUE(m_disclosure.isOpen());
    EXPECT_LE(m_disclosure.heightForWidth(400), closed + 2);
    m_window.hide();
    EXPECT_GT(m_disclosure.heightForWidth(400), closed + 10) << "nothing moves where nobody looks";
}

}  // namespace kestrune
