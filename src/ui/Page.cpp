#include "ui/Page.h"

#include <QShowEvent>
#include <QVBoxLayout>

#include "ui/Button.h"
#include "ui/Metrics.h"
#include "ui/PageHeader.h"
#include "ui/ScrollArea.h"
#include "ui/Strip.h"
#include "ui/UiText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr int wideMargin = 32;
constexpr int narrowMargin = 24;
constexpr int narrowBelow = 760;  // a window of 960 without its sidebar
constexpr int stripGap = 16;

bool startsScans(WorkspacePage page) {
    return page == WorkspacePage::overview || page == WorkspacePage::storage || page == WorkspacePage::ai;
}

}  // namespace

QString Page::subtitle(WorkspacePage page) {
    switch (page) {
        case WorkspacePage::overview:
            return translated("See what’s using your Mac. Choose your next move.");
        case WorkspacePage::storage:
            return translated("Choose what goes. Keep what matters.");
        case WorkspacePage::explorer:
            return translated("Find your biggest folders and files. Nothing gets deleted here.");
        case WorkspacePage::ai:
            return translated("See your AI downloads and what’s still running.");
        case WorkspacePage::apps:
            return translated("See what's running before you close anything.");
        case WorkspacePage::automation:
            return translated("Get a daily reminder. You decide what to clean.");
        case WorkspacePage::activity:
            return translated("A clear record of what happened.");
        case WorkspacePage::settings:
            return translated("Make Kestrune work your way.");
    }
    return {};
}

Page::Page(WorkspaceStore& store, WorkspacePage page, QWidget* parent)
    : QWidget(parent),
      m_store(store),
      m_header(new PageHeader(translated(rawValue(page)), subtitle(page), this)),
      m_lastInHeader(m_header),
      m_message(new Strip(this)),
      m_strips(new QVBoxLayout),
      m_scroll(new ScrollArea(this)),
      m_body(new QWidget),
      m_content(new QVBoxLayout(m_body)),
      m_outer(new QVBoxLayout(this)) {
    if (showsProcesses(page)) {
        addRefreshButton();
    }
    if (startsScans(page)) {
        addScanButtons();
    }
    m_message->setClosable(true);
    m_message->hide();
    m_strips->setSpacing(stripGap);
    m_strips->addWidget(m_message);
    m_content->setSpacing(0);
    m_scroll->setWidget(m_body);
    m_body->setAutoFillBackground(false);
    m_outer->setContentsMargins(0, 0, 0, 0);
    m_outer->setSpacing(0);
    m_outer->addWidget(m_header);
    m_outer->addLayout(m_strips);
    m_outer->addWidget(m_scroll, 1);
    connect(m_message, &Strip::closed, this, [this] { m_store.message.set({}); });
    m_subscriptions.push_back(store.message.observe([this] {
        if (isVisible()) {
            refreshMessage();
        }
    }));
}

void Page::setFooter(QWidget* footer) {
    m_outer->addWidget(footer);
}

Button* Page::addHeaderButton(const QString& label, const QString& symbol) {
    Button* button = m_header->addButton(label, symbol);
    setTabOrder(m_lastInHeader, button);
    m_lastInHeader = button;
    return button;
}

void Page::addRefreshButton() {
    const Button* refresh = addHeaderButton(translated("Refresh"), QStringLiteral("arrow.clockwise"));
    connect(refresh, &Button::clicked, this, [this] { m_store.refreshProcesses(); });
}

void Page::addScanButtons() {
    m_scan = addHeaderButton(translated("Scan now"), QStringLiteral("magnifyingglass"));
    m_stopScan = addHeaderButton(translated("Stop scan"));
    m_stopScan->hide();
    connect(m_scan, &Button::clicked, this, [this] { m_store.scan(); });
    connect(m_stopScan, &Button::clicked, this, [this] { m_store.cancelCleanup(); });
    watch(m_store.isScanning);
    watch(m_store.isCleaning);
}

void Page::changed() {
    if (isVisible()) {
        refreshAll();
    }
}

void Page::refreshAll() {
    if (m_scan != nullptr) {
        const bool scanning = m_store.isScanning.get();
        const bool hadFocus = m_scan->hasFocus() || m_stopScan->hasFocus();
        m_stopScan->setVisible(scanning);
        m_scan->setEnabled(!scanning && !m_store.isCleaning.get());
        // Whoever started a scan by keyboard finds the way to stop it under the same key, and back.
        if (hadFocus) {
            (scanning ? m_stopScan : m_scan)->setFocus(Qt::TabFocusReason);
        }
    }
    refresh();
}

void Page::refreshMessage() {
    const auto& message = m_store.message.get();
    if (!message) {
        m_message->hide();
    } else {
        const bool isNew = m_message->isHidden() || m_message->sentence() != shown(*message);
        m_message->setSentence(toneOf(*message), shown(*message));
        m_message->show();
        if (isNew) {
            m_message->announce();
        }
    }
    arrangeStrips();
}

void Page::arrangeStrips() {
    bool any = false;
    for (int index = 0; index < m_strips->count(); ++index) {
        any = any || !m_strips->itemAt(index)->widget()->isHidden();
    }
    m_strips->setContentsMargins(m_margin, 0, m_margin, any ? stripGap : 0);
}

void Page::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    arrangeFor(width());
    refreshMessage();
    refreshAll();
}

void Page::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrangeFor(width());
}

void Page::arrangeFor(int width) {
    const bool narrow = width < Metrics::px(narrowBelow);
    const int margin = narrow ? narrowMargin : wideMargin;
    if (margin != m_margin) {
        m_margin = margin;
        arrange(margin, narrow);
    }
}

void Page::arrange(int margin, bool /*narrow*/) {
    m_header->setSideMargin(margin);
    arrangeStrips();
    m_content->setContentsMargins(margin, 0, margin, 24);
}

}  // namespace kestrune
