#include "ui/ExplorerPage.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <functional>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "ui/Button.h"
#include "ui/DropHighlight.h"
#include "ui/DroppedFolder.h"
#include "ui/EmptyState.h"
#include "ui/ExplorerFindings.h"
#include "ui/ExplorerMeasuring.h"
#include "ui/ScrollArea.h"
#include "ui/UiText.h"
#include "workspace/ReadableText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int spaceAbove = 128;
constexpr int aroundRow = 60;  // so that the row is seen to have neighbours

QString folderName(const std::string& path) {
    const std::string name = lastPathComponent(path);
    return shown(ReadableText::name(name.empty() ? "/" : name));
}

}  // namespace

ExplorerPage::ExplorerPage(WorkspaceStore& store, QWidget* parent)
    : Page(store, WorkspacePage::explorer, parent),
      m_rescan(addHeaderButton(translated("Rescan"), QStringLiteral("arrow.clockwise"))),
      m_choose(addHeaderButton(translated("Choose folder…"))),
      m_empty(new EmptyState(body())),
      m_measuring(new ExplorerMeasuring(body())),
      m_findings(new ExplorerFindings(store, body())),
      m_drop(new DropHighlight(translated("Drop the folder here to explore it."), this)) {
    connectButtons();
    addShortcuts();
    setAcceptDrops(true);
    m_empty->setContent(QStringLiteral("folder.badge.questionmark"), translated("Where did the space go?"),
                        translated("Choose your home folder, Downloads, or a project. See what takes the most "
                                   "space, then open anything in Finder."));
    m_empty->setSpaceAbove(spaceAbove);
    m_empty->button()->setKind(Button::Kind::primary);
    m_empty->button()->setLabel(translated("Choose folder…"));
    m_empty->button()->show();
    for (QWidget* part :
         {static_cast<QWidget*>(m_empty), static_cast<QWidget*>(m_measuring), static_cast<QWidget*>(m_findings)}) {
        part->hide();
        content().addWidget(part);
    }
    content().addStretch(1);
    m_soon.setSingleShot(true);
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_soon, &QTimer::timeout, this, &ExplorerPage::showNow);
    connect(&m_patience, &QTimer::timeout, this, &ExplorerPage::showNow);
    connect(m_findings, &ExplorerFindings::rowWanted, this,
            [this](QWidget* row) { scrollArea()->ensureWidgetVisible(row, 0, aroundRow); });
    watch(store.explorerRoot);
    watch(store.explorerResult);
    watch(store.explorerProgress);
    watch(store.isExploring);
}

void ExplorerPage::connectButtons() {
    m_choose->setKind(Button::Kind::primary);
    m_rescan->hide();
    m_choose->hide();
    connect(m_rescan, &Button::clicked, this, [this] { store().rescanExplorer(); });
    for (const Button* choose : {m_choose, m_empty->button()}) {
        connect(choose, &Button::clicked, this, [this] { store().chooseExplorerFolder(); });
    }
    connect(m_measuring->stopButton(), &Button::clicked, this, [this] { store().stopExploring(); });
}

void ExplorerPage::addShortcuts() {
    const auto add = [this](const QList<QKeySequence>& keys, std::function<void()> act) {
        auto* shortcut = new QShortcut(this);
        shortcut->setKeys(keys);
        connect(shortcut, &QShortcut::activated, this, std::move(act));
        return shortcut;
    };
    add({QKeySequence(Qt::ALT | Qt::Key_Up)}, [this] { store().exploreParent(); });
    add({QKeySequence(Qt::ALT | Qt::Key_Left), QKeySequence(Qt::Key_Back)}, [this] { store().goBackInExplorer(); });
    add({QKeySequence(Qt::ALT | Qt::Key_Right), QKeySequence(Qt::Key_Forward)},
        [this] { store().goForwardInExplorer(); });
    add({QKeySequence(Qt::Key_F5), QKeySequence(Qt::CTRL | Qt::Key_R)}, [this] { store().rescanExplorer(); });
    add({QKeySequence(Qt::Key_Escape)}, [this] { store().stopExploring(); });
}

void ExplorerPage::refresh() {
    if (store().isExploring.get() && !m_scanSeen) {
        noteScan();
    }
    m_soon.start(0);
}

void ExplorerPage::noteScan() {
    QWidget* focused = window()->focusWidget();
    m_scanSeen = true;
    m_isRescan = m_folder == store().explorerRoot.get();
    m_cameFrom = isAncestorOf(focused) ? focused : nullptr;
    m_patience.start();
}

ExplorerPage::Stage ExplorerPage::stageNow() const {
    if (!store().explorerRoot.get()) {
        return Stage::empty;
    }
    if (!store().isExploring.get()) {
        return Stage::result;
    }
    if (store().explorerProgress.get()) {
        return Stage::growing;
    }
    return m_patience.isActive() && m_stage != Stage::growing ? m_stage : Stage::measuring;
}

void ExplorerPage::showNow() {
    m_soon.stop();
    const Stage stage = stageNow();
    const bool scanning = store().isExploring.get();
    if (!isVisible() || (scanning && stage != Stage::measuring && stage != Stage::growing)) {
        return;
    }
    QWidget* focused = window()->focusWidget();
    const bool ended = m_scanSeen && !scanning;
    if (stage == Stage::measuring) {
        m_measuring->setFolderName(folderName(*store().explorerRoot.get()));
    } else if (stage != Stage::empty) {
        m_findings->refresh();
    }
    if (stage != m_stage || ended) {
        enter(stage, isAncestorOf(focused) ? focused : nullptr);
    }
    scrollToTopOfNewFolder();
    if (ended) {
        m_scanSeen = false;
        m_patience.stop();
        m_findings->announce();
    }
}

void ExplorerPage::enter(Stage stage, QWidget* focused) {
    const bool result = stage == Stage::result;
    const std::vector<std::pair<QWidget*, bool>> parts{
        {m_rescan, result},
        {m_choose, result},
        {m_empty, stage == Stage::empty},
        {m_measuring, stage == Stage::measuring},
        {m_findings, result || stage == Stage::growing},
    };
    for (const auto& [part, wanted] : parts) {
        if (wanted) {
            part->show();
        }
    }
    // Before anything is hidden, which would hand the focus to whatever follows.
    if (QWidget* next = focused == nullptr ? nullptr : focusFor(stage, *focused)) {
        // Whether it came by keyboard stays as it was.
        next->setFocus(Qt::ActiveWindowFocusReason);
    }
    for (const auto& [part, wanted] : parts) {
        part->setVisible(wanted);
    }
    m_stage = stage;
}

QWidget* ExplorerPage::focusFor(Stage stage, const QWidget& focused) const {
    if (stage == Stage::measuring) {
        return m_measuring->stopButton();
    }
    if (stage == Stage::growing) {
        return m_findings->stopButton();
    }
    const bool chosenMeanwhile = m_stage == Stage::growing && focused.isVisible() && focused.isEnabled();
    if (stage != Stage::result || chosenMeanwhile) {
        return nullptr;
    }
    const bool stays = m_cameFrom == m_rescan || m_cameFrom == m_choose || m_findings->isOnPath(m_cameFrom) ||
                       (m_isRescan && m_findings->isAncestorOf(m_cameFrom));
    if (stays && m_cameFrom->isVisible() && m_cameFrom->isEnabled()) {
        return m_cameFrom;
    }
    QWidget* first = m_findings->firstStop();
    return first == nullptr ? m_rescan : first;
}

void ExplorerPage::scrollToTopOfNewFolder() {
    const std::string folder = store().explorerRoot.get().value_or(std::string());
    if (m_folder != folder) {
        m_folder = folder;
        scrollArea()->verticalScrollBar()->setValue(0);
    }
}

void ExplorerPage::showEvent(QShowEvent* event) {
    if (store().isExploring.get()) {
        enter(Stage::blank, nullptr);  // what was shown before belongs to another scan
    }
    Page::showEvent(event);
    showNow();
    qApp->installEventFilter(this);
}

void ExplorerPage::hideEvent(QHideEvent* event) {
    Page::hideEvent(event);
    qApp->removeEventFilter(this);
    m_soon.stop();
    m_patience.stop();
    m_scanSeen = false;
    m_drop->hide();
}

void ExplorerPage::resizeEvent(QResizeEvent* event) {
    Page::resizeEvent(event);
    m_drop->setGeometry(0, scrollArea()->y(), width(), height() - scrollArea()->y());
}

bool ExplorerPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress) {
        return Page::eventFilter(watched, event);
    }
    const auto* press = static_cast<QMouseEvent*>(event);
    const bool back = press->button() == Qt::BackButton;
    const auto* target = qobject_cast<QWidget*>(watched);
    if (target == nullptr || target->window() != window() || (!back && press->button() != Qt::ForwardButton)) {
        return Page::eventFilter(watched, event);
    }
    if (back) {
        store().goBackInExplorer();
    } else {
        store().goForwardInExplorer();
    }
    return true;
}

void ExplorerPage::dragEnterEvent(QDragEnterEvent* event) {
    // Copying and linking leave what is dragged where it is; a move would have its owner take it away.
    const Qt::DropActions harmless = event->possibleActions() & (Qt::CopyAction | Qt::LinkAction);
    if (store().isExploring.get() || !harmless || !droppedFolder(*event->mimeData())) {
        event->ignore();
        return;
    }
    event->setDropAction(harmless.testFlag(Qt::CopyAction) ? Qt::CopyAction : Qt::LinkAction);
    event->accept();
    m_drop->setGeometry(0, scrollArea()->y(), width(), height() - scrollArea()->y());
    m_drop->raise();
    m_drop->show();
}

void ExplorerPage::dragLeaveEvent(QDragLeaveEvent* event) {
    Page::dragLeaveEvent(event);
    m_drop->hide();
}

void ExplorerPage::dropEvent(QDropEvent* event) {
    m_drop->hide();
    const auto folder = droppedFolder(*event->mimeData());
    if (!folder || store().isExploring.get()) {
        event->ignore();
        return;
    }
    event->setDropAction(event->possibleActions().testFlag(Qt::CopyAction) ? Qt::CopyAction : Qt::LinkAction);
    event->accept();
    store().explore(*folder);
}

}  // namespace kestrune
