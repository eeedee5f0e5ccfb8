#include "ui/WorkspaceWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPainter>
#include <QScreen>
#include <QStackedLayout>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/AIToolsPage.h"
#include "ui/ActivityPage.h"
#include "ui/AutomationPage.h"
#include "ui/ExplorerPage.h"
#include "ui/Mirror.h"
#include "ui/OverviewPage.h"
#include "ui/RunningAppsPage.h"
#include "ui/SettingsPage.h"
#include "ui/Sidebar.h"
#include "ui/StoragePage.h"
#include "ui/Theme.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr QSize initialSize{1040, 720};
constexpr QSize smallestSize{880, 620};
constexpr double farthest = 100'000;  // no screen reaches beyond; keeps a damaged record from overflowing

// frame moved and shrunk into the screen that holds most of it, else into the first one. titleBar is the height that
// the desktop adds above it.
QRect onScreen(const QRect& frame, int titleBar) {
    const QScreen* screen = QGuiApplication::screenAt(frame.center());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen == nullptr) {
        return frame;
    }
    const QRect room = screen->availableGeometry().adjusted(0, titleBar, 0, 0);
    QRect result(frame.topLeft(), frame.size().boundedTo(room.size()));
    result.moveLeft(std::clamp(result.left(), room.left(), room.right() + 1 - result.width()));
    result.moveTop(std::clamp(result.top(), room.top(), room.bottom() + 1 - result.height()));
    return result;
}

bool isUsable(const std::vector<double>& frame) {
    return frame.size() == 4 && std::all_of(frame.begin(), frame.end(), [](double value) {
               return std::isfinite(value) && std::abs(value) < farthest;
           });
}

}  // namespace

WorkspaceWindow::WorkspaceWindow(WorkspaceStore& store, WindowMemory memory, QWidget* parent)
    : QWidget(parent, Qt::Window), m_store(store), m_memory(std::move(memory)) {
    Theme::start();
    setWindowTitle(QStringLiteral("Kestrune"));
    const QScreen* screen = QGuiApplication::primaryScreen();
    setMinimumSize(screen == nullptr ? smallestSize : smallestSize.boundedTo(screen->availableSize()));
    m_sidebar = new Sidebar(this);
    m_pages = new QStackedLayout;
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_sidebar);
    layout->addSpacing(1);
    layout->addLayout(m_pages, 1);
    restoreFrame();
    connect(m_sidebar, &Sidebar::chosen, this, [this](WorkspacePage page) { m_store.page.set(page); });
    m_pageChanged = store.page.observe([this] {
        if (isVisible()) {
            showPage();
        }
    });
    m_sidebar->setPage(store.page.get());
}

WorkspaceWindow::~WorkspaceWindow() {
    // The program may end without the window having been closed.
    if (isVisible()) {
        saveFrame();
    }
}

void WorkspaceWindow::restoreFrame() {
    // Before the window is shown, only the style has an idea of it.
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
    const auto kept = m_memory.load ? m_memory.load() : std::nullopt;
    if (kept && isUsable(*kept)) {
        const QRect frame = QRectF(kept->at(0), kept->at(1), kept->at(2), kept->at(3)).toRect();
        setGeometry(onScreen(QRect(frame.topLeft(), frame.size().expandedTo(minimumSize())), titleBar));
    } else {
        resize(onScreen(QRect(QPoint(0, 0), initialSize), titleBar).size());
    }
}

void WorkspaceWindow::saveFrame() {
    if (m_memory.save) {
        const QRect frame = isMaximized() || isFullScreen() ? normalGeometry() : geometry();
        m_memory.save({static_cast<double>(frame.x()), static_cast<double>(frame.y()),
                       static_cast<double>(frame.width()), static_cast<double>(frame.height())});
    }
}

void WorkspaceWindow::present() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    if (focusWidget() == nullptr) {
        m_sidebar->setFocus(Qt::ActiveWindowFocusReason);
    }
}

QWidget* WorkspaceWindow::makePage(WorkspacePage page) {
    switch (page) {
        case WorkspacePage::overview:
            return new OverviewPage(m_store, this);
        case WorkspacePage::storage:
            return new StoragePage(m_store, this);
        case WorkspacePage::explorer:
            return new ExplorerPage(m_store, this);
        case WorkspacePage::ai:
            return new AIToolsPage(m_store, this);
        case WorkspacePage::apps:
            return new RunningAppsPage(m_store, this);
        case WorkspacePage::automation:
            return new AutomationPage(m_store, this);
        case WorkspacePage::activity:
            return new ActivityPage(m_store, this);
        case WorkspacePage::settings:
            return new SettingsPage(m_store, this);
    }
    return nullptr;
}

void WorkspaceWindow::showPage() {
    const WorkspacePage page = m_store.page.get();
    m_sidebar->setPage(page);
    QWidget*& made = m_made.at(static_cast<std::size_t>(page));
    if (made == nullptr) {
        made = makePage(page);
        m_pages->addWidget(made);
    }
    m_pages->setCurrentWidget(made);
    if (showsProcesses(page)) {
        m_store.refreshProcesses();
    } else if (page == WorkspacePage::settings) {
        m_store.refreshSettings();
    }
}

void WorkspaceWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    showPage();
}

void WorkspaceWindow::closeEvent(QCloseEvent* event) {
    saveFrame();
    event->accept();
    hide();
    Q_EMIT closed();
}

void WorkspaceWindow::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    const int edge = Sidebar::breadth() - 1;
    painter.fillRect(rect(), Theme::colour(Colour::window));
    painter.fillRect(QRect(0, 0, edge, height()), Theme::colour(Colour::sidebar));
    painter.fillRect(QRect(edge, 0, 1, height()), Theme::colour(Colour::separator));
}

}  // namespace kestrune
