#include "ui/LiveRowList.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QEnterEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

#include "tests/fakes/StoreFixture.h"
#include "tests/ui/RunningItems.h"
#include "tests/ui/SeenPieces.h"
#include "ui/RunningAppRow.h"
#include "ui/ScrollArea.h"

namespace kestrune {

namespace {

using Names = std::vector<std::string>;

const RunningItem alpha = runningProcess(10, "alpha", 300);
const RunningItem beta = runningProcess(20, "beta", 200);
const RunningItem gammaRay = runningProcess(30, "gamma", 100);
const RunningItem delta = runningProcess(40, "delta", 900);

/// A list in a scrolling window, below a button that has the keyboard focus at first.
class LiveRowListTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto* body = new QWidget;
        auto* layout = new QVBoxLayout(body);
        m_elsewhere = new QPushButton(QStringLiteral("Elsewhere"), body);
        m_list = new LiveRowList(fixture.store(), QStringLiteral("Running"),
                                 {[this](QWidget* parent) { return makeRow(parent); }, &RunningAppRow::heightAt}, body);
        layout->addWidget(m_elsewhere);
        layout->addWidget(m_list);
        layout->addStretch(1);
        m_area.setWidget(body);
        m_area.resize(800, 500);
        m_area.show();
        m_area.activateWindow();
        m_elsewhere->setFocus();
        QApplication::processEvents();
    }

    LiveRow* makeRow(QWidget* parent) {
        auto* row = new RunningAppRow(parent);
        QObject::connect(row, &RunningAppRow::quitWanted, m_list, [this](const RunningItem& item, bool force) {
            asked.push_back((force ? "force " : "") + item.name);
        });
        return row;
    }

    void show(std::vector<RunningItem> items) {
        m_list->setItems(std::move(items));
        // The list asks its surroundings for room, which then ask the scrolling area.
        QApplication::processEvents();
        QApplication::processEvents();
    }

    void pointerComes() {
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(m_list, &enter);
    }

    void pointerLeaves() {
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(m_list, &leave);
        QApplication::processEvents();
    }

    /// The rows from the top down, as they lie on the screen.
    [[nodiscard]] Names names() const {
        std::vector<LiveRow*> rows = m_list->rows();
        std::sort(rows.begin(), rows.end(),
                  [](const LiveRow* one, const LiveRow* other) { return one->y() < other->y(); });
        Names result;
        for (const LiveRow* row : rows) {
            result.push_back(row->state().item.name + (row->state().ended ? " ended" : ""));
        }
        return result;
    }

    [[nodiscard]] QWidget* control(const QString& name) { return namedIn(m_area, name); }

    void press(Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QApplication::processEvents();
    }

    [[nodiscard]] static QString focused() {
        return QApplication::focusWidget() == nullptr ? QString() : QApplication::focusWidget()->accessibleName();
    }

    StoreFixture fixture;
    Names asked;
    ScrollArea m_area;
    QPushButton* m_elsewhere = nullptr;
    LiveRowList* m_list = nullptr;
};

}  // namespace

TEST_F(LiveRowListTest, rowsFollowTheListWhileNobodyIsThere) {
    show({alpha, beta, gammaRay});
    EXPECT_EQ(names(), (Names{"alpha", "beta", "gamma"}));
    show({delta, gammaRay, alpha});
    EXPECT_EQ(names(), (Names{"delta", "gamma", "alpha"}));
    show({});
    EXPECT_TRUE(m_list->isEmpty());
    EXPECT_TRUE(names().empty());
}

TEST_F(LiveRowListTest, noRowMovesUnderThePointer) {
    show({alpha, beta, gammaRay});
    pointerComes();
    show({delta, gammaRay, alpha});
    EXPECT_EQ(names(), (Names{"alpha", "beta ended", "gamma", "delta"}));
    pointerLeaves();
    EXPECT_EQ(names(), (Names{"delta", "gamma", "alpha"}));
}

TEST_F(LiveRowListTest, figuresChangeUnderThePointerAllTheSame) {
    show({alpha, beta});
    pointerComes();
    RunningItem grown = beta;
    grown.memoryMB = 5000;
    show({grown, alpha});
    EXPECT_EQ(names(), (Names{"alpha", "beta"}));
    EXPECT_NE(control(QStringLiteral("beta, 5,000 MB, 1.5% CPU, PID 20")), nullptr);
}

TEST_F(LiveRowListTest, anEndedRowSaysSoAndOffersNothing) {
    show({alpha, beta});
    pointerComes();
    show({beta});
    EXPECT_NE(control(QStringLiteral("alpha, 300 MB, 1.5% CPU, PID 10 · Ended")), nullptr);
    EXPECT_FALSE(control(QStringLiteral("Quit: alpha"))->isEnabled());
    EXPECT_FALSE(control(QStringLiteral("More actions for alpha"))->isEnabled());
    EXPECT_FALSE(control(QStringLiteral("Toggle protection for alpha"))->isEnabled());
    EXPECT_TRUE(control(QStringLiteral("Quit: beta"))->isEnabled());
}

TEST_F(LiveRowListTest, aNewHolderOfAnIdentifierIsAnotherRow) {
    show({alpha});
    pointerComes();
    RunningItem other = alpha;
    other.startTime = 77;
    show({other});
    EXPECT_EQ(names(), (Names{"alpha ended", "alpha"}));
    EXPECT_EQ(m_list->items()[1].item.startTime, 77U);
}

TEST_F(LiveRowListTest, theKeyboardInARowHoldsTheListAndStaysWithItsProcess) {
    show({alpha, beta});
    control(QStringLiteral("Quit: beta"))->setFocus(Qt::TabFocusReason);
    show({delta, beta, alpha});
    EXPECT_EQ(names(), (Names{"alpha", "beta", "delta"}));
    EXPECT_EQ(focused(), QStringLiteral("Quit: beta"));
    press(Qt::Key_Space);
    EXPECT_EQ(asked, (Names{"beta"}));
    m_elsewhere->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(names(), (Names{"delta", "beta", "alpha"}));
}

TEST_F(LiveRowListTest, focusOfAnEndedProcessGoesToNoOtherProcess) {
    show({alpha, beta});
    control(QStringLiteral("Quit: alpha"))->setFocus(Qt::TabFocusReason);
    show({beta});
    EXPECT_EQ(focused(), QStringLiteral("alpha, 300 MB, 1.5% CPU, PID 10 · Ended"));
    press(Qt::Key_Space);
    EXPECT_TRUE(asked.empty());
}

TEST_F(LiveRowListTest, anOpenMenuHoldsTheListAndItsActionGoesToItsProcess) {
    show({alpha, beta});
    QTest::mouseClick(control(QStringLiteral("More actions for alpha")), Qt::LeftButton);
    QMenu* menu = m_list->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().constFirst()->text(), QStringLiteral("Force Quit…"));
    show({delta, beta, alpha});
    EXPECT_EQ(names(), (Names{"alpha", "beta", "delta"}));
    menu->actions().constFirst()->trigger();
    EXPECT_EQ(asked, (Names{"force alpha"}));
    menu->close();
    QApplication::processEvents();
    EXPECT_EQ(names(), (Names{"delta", "beta", "alpha"}));
}

TEST_F(LiveRowListTest, aDialogHoldsTheList) {
    show({alpha, beta});
    QWidget dialog(&m_area, Qt::Dialog);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
    show({beta, alpha});
    EXPECT_EQ(names(), (Names{"alpha", "beta"}));
    dialog.close();
    show({beta, alpha});
    EXPECT_EQ(names(), (Names{"beta", "alpha"}));
}

TEST_F(LiveRowListTest, aClickLeavesTheKeyboardWhereItIs) {
    show({alpha, beta});
    QTest::mouseClick(control(QStringLiteral("Quit: alpha")), Qt::LeftButton);
    EXPECT_EQ(asked, (Names{"alpha"}));
    EXPECT_EQ(QApplication::focusWidget(), m_elsewhere);
}

TEST_F(LiveRowListTest, whatTheUserChoseToSeeIsShownAtOnce) {
    show({alpha, beta});
    pointerComes();
    m_list->replaceItems({beta});
    EXPECT_EQ(names(), (Names{"beta"}));
}

TEST_F(LiveRowListTest, readingOrderAndTabOrderFollowTheRows) {
    show({alpha, beta});
    show({delta, beta, alpha});
    QStringList read;
    for (const Seen& piece : seenIn(m_area)) {
        if (piece.name.startsWith(QStringLiteral("Quit: "))) {
            read.append(piece.name);
        }
    }
    EXPECT_EQ(read, (QStringList{QStringLiteral("Quit: delta"), QStringLiteral("Quit: beta"),
                                 QStringLiteral("Quit: alpha")}));
    QStringList stops;
    for (int step = 0; step < 9; ++step) {
        press(Qt::Key_Tab);
        stops.append(focused());
    }
    EXPECT_EQ(stops.at(0), QStringLiteral("Toggle protection for delta"));
    EXPECT_EQ(stops.at(1), QStringLiteral("Quit: delta"));
    EXPECT_EQ(stops.at(2), QStringLiteral("More actions for delta"));
    EXPECT_EQ(stops.at(4), QStringLiteral("Quit: beta"));
    EXPECT_EQ(stops.at(7), QStringLiteral("Quit: alpha"));
}

TEST_F(LiveRowListTest, aControlBelowTheListComesAfterItsRows) {
    auto* below = new QPushButton(QStringLiteral("Below"), m_area.widget());
    below->setAccessibleName(below->text());
    m_area.widget()->layout()->addWidget(below);
    show({alpha, beta});
    show({delta, alpha, beta});
    QStringList stops;
    for (int step = 0; step < 10; ++step) {
        press(Qt::Key_Tab);
        stops.append(focused());
    }
    EXPECT_EQ(stops.at(0), QStringLiteral("Toggle protection for delta"));
    EXPECT_EQ(stops.at(8), QStringLiteral("More actions for beta"));
    EXPECT_EQ(stops.at(9), QStringLiteral("Below"));
}

TEST_F(LiveRowListTest, arrowKeysGoFromRowToRowAlongOneControl) {
    fixture.store().protectedApps.set({"beta"});
    ASSERT_TRUE(fixture.store().isProtected(beta));
    show({alpha, beta, gammaRay});
    control(QStringLiteral("Quit: alpha"))->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("Toggle protection for beta")) << "Quit is disabled there";
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("Quit: gamma"));
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("Quit: gamma"));
    press(Qt::Key_Home);
    EXPECT_EQ(focused(), QStringLiteral("Quit: alpha"));
}

TEST_F(LiveRowListTest, controlsOfNamesakesAreToldApart) {
    show({runningProcess(5, "node"), runningProcess(6, "node"), alpha});
    EXPECT_NE(control(QStringLiteral("Quit: node, PID 5")), nullptr);
    EXPECT_NE(control(QStringLiteral("Quit: node, PID 6")), nullptr);
    EXPECT_NE(control(QStringLiteral("Quit: alpha")), nullptr);
    QStringList all;
    for (const Seen& piece : seenIn(*m_list)) {
        all.append(piece.name);
    }
    EXPECT_EQ(all.removeDuplicates(), 0);
    EXPECT_FALSE(all.contains(QString()));
}

TEST_F(LiveRowListTest, onAnOrdinaryMachineEveryRowExists) {
    show(manyProcesses(200));
    EXPECT_EQ(m_list->rows().size(), 200U);
}

TEST_F(LiveRowListTest, ofTenThousandRowsOnlyThoseNearTheViewExist) {
    const auto items = manyProcesses(10'000);
    show(items);
    EXPECT_EQ(m_list->height(), 10'000 * RunningAppRow::heightAt(m_list->width() - 2) + 2);
    const std::size_t most = 3 * static_cast<std::size_t>(m_area.height() / RunningAppRow::heightAt(700) + 2);
    QScrollBar& bar = *m_area.verticalScrollBar();
    ASSERT_GT(bar.maximum(), 500'000);
    for (const int place : {0, bar.maximum() / 3, bar.maximum() / 2, bar.maximum(), 0}) {
        bar.setValue(place);
        QApplication::processEvents();
        EXPECT_LE(m_list->rows().size(), most);
        const int middle = m_list->mapFrom(m_area.viewport(), QPoint(0, m_area.height() / 2)).y();
        const auto index = static_cast<std::size_t>(middle / RunningAppRow::heightAt(m_list->width() - 2));
        auto* row = dynamic_cast<LiveRow*>(m_list->childAt(100, middle));
        ASSERT_NE(row, nullptr) << place;
        EXPECT_EQ(row->state().item.name, items[index].name);
    }
    EXPECT_LE(m_list->findChildren<QWidget*>().size(), static_cast<qsizetype>(most * 5));
}

TEST_F(LiveRowListTest, theKeysReachEveryOneOfTenThousandRows) {
    show(manyProcesses(10'000));
    control(QStringLiteral("Quit: process 0"))->setFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    EXPECT_EQ(focused(), QStringLiteral("Quit: process 9999"));
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), QStringLiteral("Quit: process 9998"));
    press(Qt::Key_PageUp);
    EXPECT_TRUE(m_area.viewport()->rect().intersects(QRect(
        QApplication::focusWidget()->mapTo(m_area.viewport(), QPoint(0, 0)), QApplication::focusWidget()->size())));
    press(Qt::Key_Home);
    EXPECT_EQ(focused(), QStringLiteral("Quit: process 0"));
}

TEST_F(LiveRowListTest, focusScrolledOutOfViewIsFoundWhereItWas) {
    show(manyProcesses(10'000));
    control(QStringLiteral("Quit: process 3"))->setFocus(Qt::TabFocusReason);
    m_area.verticalScrollBar()->setValue(m_area.verticalScrollBar()->maximum());
    QApplication::processEvents();
    EXPECT_EQ(focused(), QStringLiteral("Quit: process 3"));
    press(Qt::Key_Space);
    EXPECT_EQ(asked, (Names{"process 3"}));
}

TEST_F(LiveRowListTest, scrollingStaysWhereItIsWhenTheListChanges) {
    auto items = manyProcesses(400);
    show(items);
    ASSERT_GT(m_area.verticalScrollBar()->maximum(), 3000);
    m_area.verticalScrollBar()->setValue(3000);
    std::swap(items[0], items[399]);
    show(items);
    EXPECT_EQ(m_area.verticalScrollBar()->value(), 3000);
}

TEST_F(LiveRowListTest, foreignTextStaysPlain) {
    show({runningProcess(5, "<b>x</b>"), runningProcess(6, "&File"), runningProcess(7, "two\nlines")});
    EXPECT_NE(control(QStringLiteral("Quit: <b>x</b>")), nullptr);
    EXPECT_NE(control(QStringLiteral("Quit: &File")), nullptr);
    EXPECT_NE(control(QStringLiteral("Quit: two␊lines")), nullptr);
}

TEST_F(LiveRowListTest, aNamelessProcessGoesByItsExecutable) {
    RunningItem item = runningProcess(5, "");
    item.executable = "/opt/tools/runner";
    show({item});
    EXPECT_NE(control(QStringLiteral("Quit: runner")), nullptr);
}

}  // namespace kestrune
