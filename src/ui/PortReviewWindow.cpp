#include "ui/PortReviewWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/Button.h"
#include "ui/EmptyState.h"
#include "ui/LiveRowList.h"
#include "ui/PortRow.h"
#include "ui/PortSearch.h"
#include "ui/ScrollArea.h"
#include "ui/SearchField.h"
#include "ui/Strip.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"
#include "workspace/RunningListing.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr QSize initialSize{580, 440};
constexpr QSize smallestSize{480, 320};
constexpr int margin = 24;
constexpr int aboveTitle = 20;
constexpr int belowTitle = 14;
constexpr int partGap = 12;
constexpr int rowsInView = 120;  // room the rows need before the warning may stay in view

LiveRowKind portRows(WorkspaceStore& store, const QLineEdit& search) {
    return {[&store, &search](QWidget* list) {
                auto* row = new PortRow(list);
                row->setSearchSource([&search] { return search.text(); });
                QObject::connect(row, &PortRow::stopWanted, list,
                                 [&store](const RunningItem& item) { store.quitApp(item, false); });
                return row;
            },
            &PortRow::heightAt};
}

}  // namespace

PortReviewWindow::PortReviewWindow(WorkspaceStore& store, QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      m_store(store) {
    Theme::start();
    setWindowTitle(translated("What’s Using a Port?"));
    const QScreen* screen = QGuiApplication::primaryScreen();
    setMinimumSize(screen == nullptr ? smallestSize : smallestSize.boundedTo(screen->availableSize()));
    resize(initialSize);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    outer->addLayout(makeHeader());
    m_warning = new Strip(this);
    m_warning->setSentence(Tone::warning,
                           translated("Stopping a server closes its whole process, including its other work. Save "
                                      "first. Protected apps stay running."));
    m_warning->setClosable(false);
    m_message = new Strip(this);
    m_message->setClosable(true);
    m_message->hide();
    m_search = new SearchField(translated("Find a port or process"), this);
    m_top = new QVBoxLayout;
    m_top->setContentsMargins(margin, 0, margin, partGap);
    m_top->setSpacing(partGap);
    m_top->addWidget(m_warning);
    m_top->addWidget(m_message);
    m_top->addWidget(m_search);
    outer->addLayout(m_top);
    m_scroll = new ScrollArea(this);
    auto* body = new QWidget;
    m_content = new QVBoxLayout(body);
    m_content->setContentsMargins(margin, 0, margin, margin);
    m_content->setSpacing(partGap);
    m_list = new LiveRowList(store, translated("Servers using a port"), portRows(store, *m_search), body);
    m_empty = new EmptyState(body);
    m_empty->setSpaceAbove(32);
    m_content->addWidget(m_list);
    m_content->addWidget(m_empty);
    m_content->addStretch(1);
    m_scroll->setWidget(body);
    body->setAutoFillBackground(false);
    outer->addWidget(m_scroll, 1);
    watchStore();
}

QHBoxLayout* PortReviewWindow::makeHeader() {
    auto* title = new TextLabel(FontRole::emptyTitle, Colour::text1, this);
    title->setText(translated("What’s using your ports?"));
    title->setFit(TextLabel::Fit::wrap);
    auto* again = new Button(Button::Kind::secondary, translated("Refresh"), this);
    again->setSymbol(QStringLiteral("arrow.clockwise"));
    connect(again, &Button::clicked, this, [this] { m_store.refreshProcesses(); });
    auto* header = new QHBoxLayout;
    header->setContentsMargins(margin, aboveTitle, margin, belowTitle);
    header->setSpacing(margin);
    header->addWidget(title, 1, Qt::AlignVCenter);
    header->addWidget(again, 0, Qt::AlignVCenter);
    return header;
}

void PortReviewWindow::watchStore() {
    const auto changed = [this] {
        if (isVisible()) {
            refresh(false);
        }
    };
    m_subscriptions.push_back(m_store.running.observe(changed));
    m_subscriptions.push_back(m_store.processesListed.observe(changed));
    m_subscriptions.push_back(m_store.protectedApps.observe(changed));
    m_subscriptions.push_back(m_store.message.observe([this] {
        if (isVisible()) {
            showMessage();
        }
    }));
    connect(m_message, &Strip::closed, this, [this] { m_store.message.set({}); });
    connect(m_search, &QLineEdit::textChanged, this, [this] { refresh(true); });
}

void PortReviewWindow::present() {
    m_store.refreshProcesses();
    if (!isVisible()) {
        m_message->hide();
        m_search->clear();
        m_scroll->verticalScrollBar()->setValue(0);
        m_search->setFocus(Qt::ActiveWindowFocusReason);
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    centre();
    show();
    raise();
    activateWindow();
}

void PortReviewWindow::centre() {
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    if (screen == nullptr || isMaximized() || isFullScreen()) {
        return;
    }
    const QRect room = screen->availableGeometry();
    resize(size().boundedTo(room.size()));
    QRect frame(QPoint(0, 0), frameGeometry().size().boundedTo(room.size()));
    frame.moveCenter(room.center());
    move(frame.topLeft());
}

void PortReviewWindow::showMessage() {
    const auto& message = m_store.message.get();
    m_message->setVisible(message.has_value());
    if (message) {
        m_message->setSentence(toneOf(*message), shown(*message));
        m_message->announce();
    }
    arrangeWarning();
}

void PortReviewWindow::refresh(bool userChose) {
    std::vector<RunningItem> items = listeningItems(m_store.running.get());
    const auto hidden = std::stable_partition(items.begin(), items.end(), [this](const RunningItem& item) {
        return matchesPortSearch(item, m_search->text());
    });
    m_list->setNamesakes({hidden, items.end()});
    items.erase(hidden, items.end());
    if (userChose) {
        m_list->replaceItems(std::move(items));
    } else {
        m_list->setItems(std::move(items));
    }
    refreshEmpty();
}

void PortReviewWindow::refreshEmpty() {
    const QString wanted = m_search->text().simplified();
    const QString onlyYours =
        translated("Only your own processes are listed. A port may be held by the system or by another user.");
    m_list->setVisible(!m_list->isEmpty());
    m_empty->setVisible(m_list->isEmpty() && m_store.processesListed.get());
    if (wanted.isEmpty()) {
        m_empty->setContent(QStringLiteral("globe"),
                            translated("No servers found using a port. Refresh after starting one."), onlyYours);
    } else {
        m_empty->setContent(QStringLiteral("magnifyingglass"), translated("No server matches “%1”.", {wanted}),
                            onlyYours);
    }
}

void PortReviewWindow::arrangeWarning() {
    const int inside = width() - 2 * margin;
    int taken = aboveTitle + belowTitle + Metrics::px(32) + m_search->sizeHint().height() + 2 * partGap +
                m_warning->heightForWidth(inside);
    if (!m_message->isHidden()) {
        taken += m_message->heightForWidth(inside) + partGap;
    }
    QVBoxLayout* home = height() - taken < Metrics::px(rowsInView) ? m_content : m_top;
    if (home->indexOf(m_warning) < 0) {
        home->insertWidget(0, m_warning);
    }
}

void PortReviewWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh(false);
}

void PortReviewWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrangeWarning();
}

void PortReviewWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close)) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void PortReviewWindow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Theme::colour(Colour::window));
}

}  // namespace kestrune
