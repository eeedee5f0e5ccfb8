#include "ui/Breadcrumb.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <algorithm>

#include "tests/ui/SeenPieces.h"

namespace kestrune {

namespace {

const QString counts = QStringLiteral("184,236 inspected · 161,902 files");

class BreadcrumbTest : public ::testing::Test {
protected:
    void SetUp() override {
        QObject::connect(&m_path, &Breadcrumb::chosen, [this](const std::string& path) { m_asked.push_back(path); });
        QObject::connect(&m_path, &Breadcrumb::upWanted, [this] { m_asked.emplace_back("up"); });
        QObject::connect(&m_path, &Breadcrumb::backWanted, [this] { m_asked.emplace_back("back"); });
        QObject::connect(&m_path, &Breadcrumb::forwardWanted, [this] { m_asked.emplace_back("forward"); });
        m_path.resize(776, m_path.sizeHint().height());
        m_path.show();
        m_path.activateWindow();
        QApplication::processEvents();
    }

    void show(const std::string& folder) { m_path.setFolder(ExplorerListing::crumbs(folder, "/home/anna")); }

    [[nodiscard]] QWidget* control(const QString& name) { return namedIn(m_path, name); }

    void press(const QString& name) {
        QWidget* found = control(name);
        ASSERT_NE(found, nullptr) << name.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
    }

    Breadcrumb m_path;
    std::vector<std::string> m_asked;
};

}  // namespace

TEST_F(BreadcrumbTest, eachFolderAboveIsAButtonAndTheCurrentOneIsNot) {
    show("/home/anna/Projects/lab");
    press(QStringLiteral("Explore: /home/anna"));
    press(QStringLiteral("Explore: /home/anna/Projects"));
    EXPECT_EQ(m_asked, (std::vector<std::string>{"/home/anna", "/home/anna/Projects"}));
    EXPECT_EQ(control(QStringLiteral("Explore: /home/anna/Projects/lab")), nullptr);
    EXPECT_NE(control(QStringLiteral("lab")), nullptr);
}

TEST_F(BreadcrumbTest, keysChooseAFolderAbove) {
    show("/home/anna/Projects/lab");
    QTest::keyClick(control(QStringLiteral("Explore: /home/anna/Projects")), Qt::Key_Return);
    QTest::keyClick(control(QStringLiteral("Explore: /home/anna")), Qt::Key_Space);
    EXPECT_EQ(m_asked, (std::vector<std::string>{"/home/anna/Projects", "/home/anna"}));
}

TEST_F(BreadcrumbTest, theWaysOutWorkOnlyWhereTheyLeadSomewhere) {
    const QStringList names{QStringLiteral("Back"), QStringLiteral("Forward"), QStringLiteral("Up one folder")};
    for (const QString& name : names) {
        EXPECT_FALSE(control(name)->isEnabled()) << name.toStdString();
        press(name);
    }
    EXPECT_TRUE(m_asked.empty());
    m_path.setCanGoBack(true);
    m_path.setCanGoForward(true);
    m_path.setCanGoUp(true);
    for (const QString& name : names) {
        press(name);
    }
    EXPECT_EQ(m_asked, (std::vector<std::string>{"back", "forward", "up"}));
}

TEST_F(BreadcrumbTest, whileNothingCanBeExploredTheFoldersAboveCannotBeChosen) {
    show("/home/anna/Projects/lab");
    m_path.setCanChoose(false);
    show("/home/anna/Projects/lab/deeper");
    press(QStringLiteral("Explore: /home/anna/Projects"));
    press(QStringLiteral("Explore: /home/anna/Projects/lab"));
    EXPECT_TRUE(m_asked.empty());
    m_path.setCanChoose(true);
    press(QStringLiteral("Explore: /home/anna/Projects/lab"));
    EXPECT_EQ(m_asked, (std::vector<std::string>{"/home/anna/Projects/lab"}));
}

TEST_F(BreadcrumbTest, whatDoesNotFitIsLeftOutFromTheLeftAndStandsInAMenu) {
    show("/home/anna/a-rather-long-name/another-rather-long-name/yet-another-long-name/the-fourth-long-name/here");
    m_path.setCounts(counts);
    EXPECT_EQ(control(QStringLiteral("Explore: /home/anna")), nullptr);
    EXPECT_NE(control(QStringLiteral("here")), nullptr);
    press(QStringLiteral("Folders above"));
    auto* menu = m_path.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().constLast()->text(), QStringLiteral("~"));
    menu->actions().constLast()->trigger();
    EXPECT_EQ(m_asked, (std::vector<std::string>{"/home/anna"}));
    menu->close();
    m_path.resize(2000, m_path.height());
    EXPECT_NE(control(QStringLiteral("Explore: /home/anna")), nullptr);
    EXPECT_EQ(control(QStringLiteral("Folders above")), nullptr);
}

TEST_F(BreadcrumbTest, noPieceLiesOverAnother) {
    m_path.setCounts(counts);
    for (const int width : {632, 776, 1200}) {
        m_path.resize(width, m_path.height());
        show("/home/anna/Projects/" + std::string(120, 'w') + "/client-app/" + std::string(200, 'x'));
        std::vector<QRect> boxes;
        for (const Seen& piece : seenIn(m_path)) {
            if (piece.widget != &m_path) {
                boxes.push_back(piece.widget->geometry());
            }
        }
        std::sort(boxes.begin(), boxes.end(), [](const QRect& a, const QRect& b) { return a.left() < b.left(); });
        for (std::size_t index = 1; index < boxes.size(); ++index) {
            EXPECT_LT(boxes[index - 1].right(), boxes[index].left()) << width << " " << index;
        }
        EXPECT_EQ(boxes.back().right() + 1, width);
    }
}

TEST_F(BreadcrumbTest, theCountsGiveWayBeforeThePathDoes) {
    show("/home/anna/Projects");
    m_path.setCounts(counts);
    EXPECT_NE(control(counts), nullptr);
    m_path.resize(420, m_path.height());
    EXPECT_EQ(control(counts), nullptr);
    EXPECT_NE(control(QStringLiteral("Projects")), nullptr);
    m_path.resize(776, m_path.height());
    EXPECT_NE(control(counts), nullptr);
}

TEST_F(BreadcrumbTest, hostileNamesStayWhatTheyAre) {
    show("/h/&File/\xFF");
    EXPECT_NE(control(QStringLiteral("Explore: /h/&File")), nullptr);
    show("/h/\xFE/x");
    press(QStringLiteral("Explore: /h/\uFFFD"));
    EXPECT_EQ(m_asked, (std::vector<std::string>{"/h/\xFE"}));
}

TEST_F(BreadcrumbTest, theTabKeyGoesThroughItFromLeftToRight) {
    show("/home/anna/Projects/lab");
    m_path.setCanGoBack(true);
    m_path.setCanGoUp(true);
    control(QStringLiteral("Back"))->setFocus(Qt::TabFocusReason);
    QStringList stops;
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        stops.append(QApplication::focusWidget()->accessibleName());
    }
    EXPECT_EQ(stops, (QStringList{QStringLiteral("Up one folder"), QStringLiteral("Explore: /home/anna"),
                                  QStringLiteral("Explore: /home/anna/Projects")}));
}

TEST_F(BreadcrumbTest, theKeyboardStaysOnTheLineWhenItsFolderGoes) {
    show("/home/anna/Projects/lab");
    m_path.setCanGoUp(true);
    control(QStringLiteral("Explore: /home/anna/Projects"))->setFocus(Qt::TabFocusReason);
    show("/home/anna");
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Up one folder"));
}

}  // namespace kestrune
