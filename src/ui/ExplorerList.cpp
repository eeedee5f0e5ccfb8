#include "ui/ExplorerList.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "ui/ExplorerRowView.h"
#include "ui/Paint.h"
#include "ui/TabOrder.h"

namespace kestrune {

namespace {

bool walks(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Home || key == Qt::Key_End ||
           key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

bool isPlain(const QKeyEvent& key) {
    return (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

QScrollArea* areaAround(const QWidget& widget) {
    QScrollArea* area = nullptr;
    for (QWidget* above = widget.parentWidget(); above != nullptr && area == nullptr; above = above->parentWidget()) {
        area = qobject_cast<QScrollArea*>(above);
    }
    return area;
}

}  // namespace

ExplorerList::ExplorerList(const QString& accessibleName, QWidget* parent) : Painted(parent) {
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFixedHeight(0);
    reset();
    connect(qApp, &QApplication::focusChanged, this, &ExplorerList::settleSoon);
}

void ExplorerList::reset() {
    m_untouched = true;
    m_pointerAtReset = QCursor::pos();
    m_landed = nullptr;
    m_column = 0;
}

void ExplorerList::setFolder(const std::string& folder) {
    if (m_folder != folder) {
        m_folder = folder;
        reset();
    }
}

void ExplorerList::setRows(const std::vector<ExplorerRow>& rows) {
    if (rows.empty() || m_shown.empty()) {
        reset();
    }
    m_now = rows;
    const bool held = isHeld();
    m_behind = held;
    show(ExplorerListing::mergedRows(m_shown, m_now, held));
}

bool ExplorerList::isHeld() const {
    if (!isVisible()) {
        return false;
    }
    if (QApplication::activePopupWidget() != nullptr || QApplication::activeModalWidget() != nullptr) {
        return true;
    }
    const ExplorerRowView* focused = rowWithFocus();
    const bool byKeyboard = focused != nullptr && (focused->isRinged() || !focused->hasFocus());
    const bool moved = !m_untouched || QCursor::pos() != m_pointerAtReset;
    return (moved && underMouse()) || (!m_untouched && byKeyboard);
}

void ExplorerList::settleSoon() {
    if (m_behind) {
        QTimer::singleShot(0, this, &ExplorerList::settle);
    }
}

void ExplorerList::settle() {
    if (m_behind && !isHeld()) {
        m_behind = false;
        show(m_now);
    }
}

ExplorerRowView* ExplorerList::rowWithFocus() const {
    const QWidget* focused = window()->focusWidget();
    if (focused == nullptr || !isAncestorOf(focused)) {
        return nullptr;
    }
    const auto found = std::find_if(m_rows.begin(), m_rows.end(), [&](const ExplorerRowView* row) {
        return row == focused || row->isAncestorOf(focused);
    });
    return found == m_rows.end() ? nullptr : *found;
}

void ExplorerList::makeRow() {
    auto* row = new ExplorerRowView(this);
    QWidget* before = m_rows.empty() ? this : m_rows.back()->focusStops().constLast();
    const QList<QWidget*> stops = row->focusStops();
    for (QWidget* stop : stops) {
        stop->installEventFilter(this);
        putBehind(*before, *stop);
        before = stop;
    }
    connect(row, &ExplorerRowView::hovered, this, [this, row](bool on) {
        m_hovered = on ? row->row().path : std::string();
        Q_EMIT hovered(m_hovered);
    });
    connect(row, &ExplorerRowView::selected, this, [this, row] { choose(row->row().path); });
    connect(row, &ExplorerRowView::explored, this, [this, row] { Q_EMIT explored(std::string(row->row().path)); });
    connect(row, &ExplorerRowView::revealed, this, [this, row] { Q_EMIT revealed(std::string(row->row().path)); });
    connect(row, &ExplorerRowView::menuWanted, this,
            [this, row](const QPoint& global) { askForMenu(row->row().path, global); });
    m_rows.push_back(row);
}

void ExplorerList::choose(const std::string& path) {
    const std::string chosen = path;
    setSelected(chosen);
    Q_EMIT selected(chosen);
}

void ExplorerList::askForMenu(const std::string& path, const QPoint& global) {
    const std::string chosen = path;
    choose(chosen);
    Q_EMIT menuWanted(chosen, global);
    if (QWidget* menu = QApplication::activePopupWidget()) {
        menu->installEventFilter(this);
    }
    settleSoon();
}

void ExplorerList::show(std::vector<ExplorerRow> rows) {
    ExplorerRowView* focused = rowWithFocus();
    const bool follows = focused != nullptr && !m_untouched;
    const std::string focusedPath = focused == nullptr ? std::string() : focused->row().path;
    m_shown = std::move(rows);
    while (m_rows.size() < m_shown.size()) {
        makeRow();
    }
    for (std::size_t index = 0; index < m_shown.size(); ++index) {
        m_rows[index]->setRow(m_shown[index]);
        m_rows[index]->setSelected(m_shown[index].path == m_selected);
        m_rows[index]->setHighlighted(m_shown[index].path == m_highlighted);
    }
    arrange();
    static_cast<void>(follows);
    static_cast<void>(focusedPath);
}

void ExplorerList::setSelected(const std::string& path) {
    m_selected = path;
    for (ExplorerRowView* row : m_rows) {
        row->setSelected(row->row().path == path);
    }
}

void ExplorerList::setHighlighted(const std::string& path) {
    m_highlighted = path;
    for (ExplorerRowView* row : m_rows) {
        row->setHighlighted(row->row().path == path);
    }
}

void ExplorerList::arrange() {
    int top = 1;
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        ExplorerRowView* row = m_rows[index];
        const bool used = index < m_shown.size();
        if (used) {
            const int height = row->heightFor(width() - 2);
            row->setPlace(index == 0, index + 1 == m_shown.size());
            row->setGeometry(1, top, width() - 2, height);
            top += height;
        }
        row->setVisible(used);
    }
    setFixedHeight(m_shown.empty() ? 0 : top + 1);
}

int ExplorerList::rowsInView() const {
    const QScrollArea* area = areaAround(*this);
    const int room = area == nullptr ? height() : area->viewport()->height();
    return m_shown.empty() ? 1 : std::max(1, room * static_cast<int>(m_shown.size()) / std::max(1, height()) - 1);
}

bool ExplorerList::moveFocus(int key) {
    static_cast<void>(key);
    return false;
}

bool ExplorerList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        m_untouched = false;
        return isPlain(*key) && walks(key->key()) && moveFocus(key->key());
    }
    return Painted::eventFilter(watched, event);
}

void ExplorerList::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Paint::card(painter, rect());
}

void ExplorerList::resizeEvent(QResizeEvent* event) {
    Painted::resizeEvent(event);
    if (event->oldSize().width() != event->size().width()) {
        arrange();
    }
}

void ExplorerList::showEvent(QShowEvent* event) {
    Painted::showEvent(event);
    arrange();
}

void ExplorerList::leaveEvent(QEvent* event) {
    Painted::leaveEvent(event);
    settleSoon();
}

}  // namespace kestrune
