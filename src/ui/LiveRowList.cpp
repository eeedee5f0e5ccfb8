#include "ui/LiveRowList.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "ui/LiveRow.h"
#include "ui/Paint.h"
#include "ui/TabOrder.h"
#include "workspace/ReadableText.h"
#include "workspace/WorkspaceStore.h"

namespace kestrune {

namespace {

constexpr std::size_t allExistUpTo = 200;
constexpr int cardReach = 64;  // beyond what is painted, more than the card's corners take

bool walks(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Home || key == Qt::Key_End ||
           key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

bool holds(const QWidget& widget, const QWidget* focused) {
    return focused != nullptr && (&widget == focused || widget.isAncestorOf(focused));
}

// Two names that look the same are the same.
std::string spokenNameOf(const RunningItem& item) {
    return ReadableText::visible(ReadableText::processName(item.name, item.executable, item.id));
}

}  // namespace

LiveRowList::LiveRowList(WorkspaceStore& store, const QString& spokenName, LiveRowKind kind, QWidget* parent)
    : Painted(parent), m_store(store), m_kind(std::move(kind)) {
    setAccessibleName(spokenName);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFixedHeight(0);
    connect(qApp, &QApplication::focusChanged, this, &LiveRowList::settleSoon);
}

void LiveRowList::setNamesakes(const std::vector<RunningItem>& others) {
    m_namesakes.clear();
    std::transform(others.begin(), others.end(), std::back_inserter(m_namesakes), spokenNameOf);
}

void LiveRowList::setItems(std::vector<RunningItem> now) {
    m_now = std::move(now);
    merge(isHeld());
}

void LiveRowList::replaceItems(std::vector<RunningItem> now) {
    m_now = std::move(now);
    merge(false);
}

void LiveRowList::merge(bool held) {
    m_items = mergedListing(m_items, m_now, held);
    m_behind = held;
    noteSharedNames();
    measure();
    place();
}

void LiveRowList::settleSoon() {
    if (m_behind) {
        QTimer::singleShot(0, this, &LiveRowList::settle);
    }
}

void LiveRowList::settle() {
    if (m_behind && !isHeld()) {
        merge(false);
        Q_EMIT settled();
    }
}

void LiveRowList::refreshRows() {
    measure();
    place();
}

bool LiveRowList::isHeld() const {
    return isVisible() &&
           (underMouse() || m_store.isConfirming() || QApplication::activeModalWidget() != nullptr ||
            holds(*this, QApplication::focusWidget()) ||
            std::any_of(m_placed.begin(), m_placed.end(), [](const Placed& one) { return one.row->isMenuOpen(); }));
}

std::vector<LiveRow*> LiveRowList::rows() const {
    return m_ordered;
}

void LiveRowList::noteSharedNames() {
    m_sharedNames.clear();
    std::unordered_set<std::string> known(m_namesakes.begin(), m_namesakes.end());
    for (const ListedItem& one : m_items) {
        std::string name = spokenNameOf(one.item);
        if (known.count(name) > 0) {
            m_sharedNames.insert(name);
        }
        known.insert(std::move(name));
    }
}

void LiveRowList::measure() {
    m_rowHeight = std::max(1, m_kind.height(width() - 2));
    const auto count = static_cast<int>(m_items.size());
    setFixedHeight(count == 0 ? 0 : std::min(count * m_rowHeight + 2, QWIDGETSIZE_MAX));
}

LiveRowList::Range LiveRowList::visibleRange() const {
    const std::size_t count = m_items.size();
    if (m_area == nullptr) {
        return {0, count};
    }
    const int top = -mapTo(m_area->viewport(), QPoint(0, 0)).y();
    const int bottom = top + m_area->viewport()->height();
    const auto rowAbove = [&](int y) {
        return std::min(count, static_cast<std::size_t>(std::max(0, y) / m_rowHeight));
    };
    return {rowAbove(top), std::min(count, rowAbove(bottom) + 1)};
}

LiveRowList::Range LiveRowList::wantedRange() const {
    const std::size_t count = m_items.size();
    if (count <= allExistUpTo) {
        return {0, count};
    }
    const Range visible = visibleRange();
    const std::size_t page = visible.last - visible.first;
    return {visible.first - std::min(visible.first, page), std::min(count, visible.last + page)};
}

void LiveRowList::followScroll() {
    const Range visible = visibleRange();
    if (visible.first < m_range.first || visible.last > m_range.last) {
        place();
    }
}

std::size_t LiveRowList::indexOf(const RunningItem& item) const {
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [&](const ListedItem& one) { return isSameProcess(one.item, item); });
    return static_cast<std::size_t>(found - m_items.begin());
}

LiveRow* LiveRowList::makeRow() {
    LiveRow* row = m_kind.make(this);
    row->setPictureSource([this](const RunningItem& item) {
        return AppIcon::Picture{m_store.iconOf(item),
                                [this](const std::string& path) { return m_store.iconFile(path); }};
    });
    row->installEventFilter(this);
    const QList<QWidget*> stops = row->focusStops();
    for (QWidget* stop : stops) {
        stop->installEventFilter(this);
    }
    connect(row, &LiveRow::menuClosed, this, &LiveRowList::settleSoon);
    return row;
}

void LiveRowList::place() {
    findScrollArea();
    m_range = wantedRange();
    std::map<std::size_t, LiveRow*> kept;
    std::vector<LiveRow*> spare;
    std::size_t orphaned = m_items.size();
    const QWidget* focused = window()->focusWidget();
    for (const Placed& one : m_placed) {
        const std::size_t index = indexOf(one.row->state().item);
        const bool hasFocus = holds(*one.row, focused);
        // Who scrolls away from the focus finds it where it was.
        if (index < m_items.size() && (m_range.contains(index) || hasFocus) && kept.emplace(index, one.row).second) {
            continue;
        }
        if (hasFocus && !m_items.empty()) {
            orphaned = std::min(one.index, m_items.size() - 1);
        }
        spare.push_back(one.row);
    }
    for (std::size_t index = m_range.first; index < m_range.last; ++index) {
        if (kept.find(index) == kept.end()) {
            LiveRow* row = nullptr;
            if (spare.empty()) {
                row = makeRow();
            } else {
                row = spare.back();
                spare.pop_back();
                row->hide();  // takes the hover and the focus off
            }
            kept.emplace(index, row);
        }
    }
    for (LiveRow* row : spare) {
        row->hide();
        row->deleteLater();
    }
    m_placed.clear();
    for (const auto& [index, row] : kept) {
        m_placed.push_back({index, row});
        bind(m_placed.back());
    }
    order();
    if (orphaned < m_items.size() && kept.count(orphaned) > 0) {
        kept[orphaned]->setFocus(Qt::OtherFocusReason);
    }
}

void LiveRowList::bind(const Placed& placed) {
    const ListedItem& listed = m_items[placed.index];
    const LiveRowState state{listed.item, listed.ended, m_store.isProtected(listed.item),
                             m_sharedNames.count(spokenNameOf(listed.item)) > 0};
    placed.row->setState(state);
    placed.row->setPlace(placed.index == 0, placed.index + 1 == m_items.size());
    placed.row->setGeometry(1, 1 + static_cast<int>(placed.index) * m_rowHeight, width() - 2, m_rowHeight);
    placed.row->show();
}

void LiveRowList::order() {
    std::vector<LiveRow*> now;
    now.reserve(m_placed.size());
    for (const Placed& one : m_placed) {
        now.push_back(one.row);
    }
    if (now == m_ordered) {
        return;
    }
    m_ordered = std::move(now);
    QWidget* before = this;
    for (LiveRow* row : m_ordered) {
        row->raise();
        for (QWidget* next : QList<QWidget*>{row} + row->focusStops()) {
            putBehind(*before, *next);
            before = next;
        }
    }
}

const LiveRowList::Placed* LiveRowList::placedWith(const QWidget* focused) const {
    const auto found =
        std::find_if(m_placed.begin(), m_placed.end(), [&](const Placed& one) { return holds(*one.row, focused); });
    return found == m_placed.end() ? nullptr : &*found;
}

bool LiveRowList::moveFocus(int key) {
    QWidget* focused = QApplication::focusWidget();
    const Placed* from = placedWith(focused);
    if (from == nullptr) {
        return false;
    }
    if (focused != m_landed) {
        m_column = std::max<qsizetype>(0, from->row->focusStops().indexOf(focused));
    }
    const int room = m_area == nullptr ? height() : m_area->viewport()->height();
    const int page = std::max(1, room / m_rowHeight - 1);
    const auto last = static_cast<int>(m_items.size()) - 1;
    const auto at = static_cast<int>(from->index);
    int target = at;
    switch (key) {
        case Qt::Key_Up:
            target = at - 1;
            break;
        case Qt::Key_Down:
            target = at + 1;
            break;
        case Qt::Key_PageUp:
            target = at - page;
            break;
        case Qt::Key_PageDown:
            target = at + page;
            break;
        case Qt::Key_Home:
            target = 0;
            break;
        default:
            target = last;
            break;
    }
    target = std::clamp(target, 0, last);
    if (target != at) {
        focusRow(static_cast<std::size_t>(target));
    }
    return true;
}

void LiveRowList::takeFocus() {
    if (!m_items.empty()) {
        m_column = 0;
        focusRow(0);
    }
}

void LiveRowList::focusRow(std::size_t index) {
    if (m_area != nullptr) {
        const QPoint middle(0, 1 + static_cast<int>(index) * m_rowHeight + m_rowHeight / 2);
        m_area->ensureVisible(0, mapTo(m_area->widget(), middle).y(), 0, m_rowHeight);
    }
    const auto placed =
        std::find_if(m_placed.begin(), m_placed.end(), [&](const Placed& one) { return one.index == index; });
    if (placed == m_placed.end()) {
        return;
    }
    const QList<QWidget*> stops = placed->row->focusStops();
    QWidget* target = m_column < stops.size() && stops.at(m_column)->isEnabled() ? stops.at(m_column) : nullptr;
    if (target == nullptr) {
        const auto usable =
            std::find_if(stops.begin(), stops.end(), [](const QWidget* stop) { return stop->isEnabled(); });
        target = usable == stops.end() ? placed->row : *usable;
    }
    m_landed = target;
    target->setFocus(Qt::TabFocusReason);
}

void LiveRowList::findScrollArea() {
    if (m_area != nullptr) {
        return;
    }
    for (QWidget* ancestor = parentWidget(); ancestor != nullptr && m_area == nullptr;
         ancestor = ancestor->parentWidget()) {
        m_area = qobject_cast<QScrollArea*>(ancestor);
    }
    if (m_area != nullptr) {
        m_area->viewport()->installEventFilter(this);
        connect(m_area->verticalScrollBar(), &QScrollBar::valueChanged, this, &LiveRowList::followScroll);
    }
}

bool LiveRowList::event(QEvent* event) {
    const bool done = Painted::event(event);
    if (event->type() == QEvent::Move) {
        followScroll();
    }
    return done;
}

bool LiveRowList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        return plain && walks(key->key()) && moveFocus(key->key());
    }
    if (event->type() == QEvent::Resize && m_area != nullptr && watched == m_area->viewport()) {
        followScroll();
    }
    return Painted::eventFilter(watched, event);
}

void LiveRowList::paintEvent(QPaintEvent* event) {
    if (m_items.empty()) {
        return;
    }
    // Of a very long card only what lies near is drawn: no painter has to bear the whole.
    const int top = std::max(0, event->rect().top() - cardReach);
    const int bottom = std::min(height(), event->rect().bottom() + cardReach);
    QPainter painter(this);
    Paint::card(painter, QRect(0, top, width(), bottom - top));
}

void LiveRowList::resizeEvent(QResizeEvent* event) {
    Painted::resizeEvent(event);
    if (event->oldSize().width() != event->size().width()) {
        refreshRows();
    }
}

void LiveRowList::showEvent(QShowEvent* event) {
    Painted::showEvent(event);
    refreshRows();
}

void LiveRowList::leaveEvent(QEvent* event) {
    Painted::leaveEvent(event);
    settleSoon();
}

}  // namespace kestrune
