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
    const QWidget* focused = QApplication::focusWidget();
    const bool byKeyboard = focused != nullptr && isAncestorOf(focused) && focusPlace().byKeyboard;
    const bool moved = !m_untouched || QCursor::pos() != m_pointerAtReset;
    return (moved && underMouse()) || (!m_untouched && byKeyboard);
}

void ExplorerList::settleSoon() const {
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
    row->setCanExplore(m_canExplore);
    QWidget* before = m_rows.empty() ? this : m_rows.back()->focusStops().constLast();
    const QList<QWidget*> stops = row->focusStops();
    for (QWidget* stop : stops) {
        stop->installEventFilter(this);
        putBehind(*before, *stop);
        before = stop;
    }
    connect(row, &ExplorerRowView::hoverMoved, this, &ExplorerList::tellHovered);
    connect(row, &ExplorerRowView::selected, this, [this, row] { choose(std::string(row->row().path)); });
    connect(row, &ExplorerRowView::explored, this, [this, row] { Q_EMIT explored(std::string(row->row().path)); });
    connect(row, &ExplorerRowView::revealed, this, [this, row] { Q_EMIT revealed(std::string(row->row().path)); });
    connect(row, &ExplorerRowView::menuWanted, this,
            [this, row](const QPoint& global) { askForMenu(std::string(row->row().path), global); });
    m_rows.push_back(row);
}

void ExplorerList::choose(const std::string& path) {
    setSelected(path);
    Q_EMIT selected(path);
}

void ExplorerList::askForMenu(const std::string& path, const QPoint& global) {
    choose(path);
    Q_EMIT menuWanted(path, global);
    if (QWidget* menu = QApplication::activePopupWidget()) {
        menu->installEventFilter(this);
    }
    settleSoon();
}

void ExplorerList::show(std::vector<ExplorerRow> rows) {
    const FocusPlace focus = focusPlace();
    const bool sameHeights = std::equal(
        rows.begin(), rows.end(), m_shown.begin(), m_shown.end(),
        [](const ExplorerRow& one, const ExplorerRow& other) { return one.detail.empty() == other.detail.empty(); });
    m_shown = std::move(rows);
    while (m_rows.size() < m_shown.size()) {
        makeRow();
    }
    for (std::size_t index = 0; index < m_shown.size(); ++index) {
        ExplorerRowView& row = *m_rows[index];
        row.setRow(m_shown[index]);
        row.setSelected(m_shown[index].path == m_selected);
        row.setHighlighted(m_shown[index].path == m_highlighted);
    }
    followFocus(focus);
    if (!sameHeights) {
        arrange();
    }
    tellHovered();
}

ExplorerList::FocusPlace ExplorerList::focusPlace() const {
    FocusPlace place;
    const ExplorerRowView* row = rowWithFocus();
    if (row == nullptr) {
        place.isOnList = window()->focusWidget() == this;
        place.byKeyboard = m_awaitsByKeyboard;
        return place;
    }
    place.isOnList = true;
    place.path = row->row().path;
    place.index = static_cast<std::size_t>(std::find(m_rows.begin(), m_rows.end(), row) - m_rows.begin());
    place.stop = std::max<qsizetype>(0, row->focusStops().indexOf(window()->focusWidget()));
    place.byKeyboard = row->isRinged() || place.stop > 0;
    return place;
}

void ExplorerList::followFocus(const FocusPlace& place) {
    if (!place.isOnList) {
        return;
    }
    if (m_shown.empty()) {
        m_awaitsByKeyboard = place.byKeyboard;
        setFocus(Qt::OtherFocusReason);  // kept for the rows to come
        return;
    }
    const auto found =
        std::find_if(m_shown.begin(), m_shown.end(), [&](const ExplorerRow& one) { return one.path == place.path; });
    const bool follows = found != m_shown.end() && !m_untouched;
    const std::size_t last = m_shown.size() - 1;
    const auto index =
        follows ? static_cast<std::size_t>(found - m_shown.begin()) : (m_untouched ? 0 : std::min(place.index, last));
    QWidget* target = m_rows[index]->focusStops().at(follows ? place.stop : 0);
    if (target != window()->focusWidget()) {
        m_rows[index]->show();
        target->setFocus(place.byKeyboard ? Qt::TabFocusReason : Qt::MouseFocusReason);
    }
}

void ExplorerList::tellHovered() {
    const auto over = std::find_if(m_rows.begin(), m_rows.end(), [](const ExplorerRowView* row) {
        return row->isVisible() && row->isUnderPointer();
    });
    const std::string path = over == m_rows.end() ? std::string() : (*over)->row().path;
    if (m_hovered != path) {
        m_hovered = path;
        Q_EMIT hovered(path);
    }
}

void ExplorerList::setCanExplore(bool can) {
    m_canExplore = can;
    for (ExplorerRowView* row : m_rows) {
        row->setCanExplore(can);
    }
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
    QWidget* focused = window()->focusWidget();
    const ExplorerRowView* from = rowWithFocus();
    if (from == nullptr || m_shown.empty()) {
        return false;
    }
    if (focused != m_landed) {
        m_column = std::max<qsizetype>(0, from->focusStops().indexOf(focused));
    }
    const int last = static_cast<int>(m_shown.size()) - 1;
    const auto at = static_cast<int>(std::find(m_rows.begin(), m_rows.end(), from) - m_rows.begin());
    int target = last;
    switch (key) {
        case Qt::Key_Up:
            target = at - 1;
            break;
        case Qt::Key_Down:
            target = at + 1;
            break;
        case Qt::Key_PageUp:
            target = at - rowsInView();
            break;
        case Qt::Key_PageDown:
            target = at + rowsInView();
            break;
        case Qt::Key_Home:
            target = 0;
            break;
        default:
            break;  // End
    }
    target = std::clamp(target, 0, last);
    if (target != at) {
        focusRow(static_cast<std::size_t>(target));
    }
    return true;
}

void ExplorerList::focusRow(std::size_t index) {
    ExplorerRowView* row = m_rows[index];
    if (QScrollArea* area = areaAround(*this)) {
        const QPoint middle = row->mapTo(area->widget(), row->rect().center());
        area->ensureVisible(0, middle.y(), 0, row->height());
    }
    const QList<QWidget*> stops = row->focusStops();
    QWidget* wanted = m_column < stops.size() ? stops.at(m_column) : row;
    m_landed = wanted->isVisible() && wanted->isEnabled() ? wanted : row;
    m_landed->setFocus(Qt::TabFocusReason);
}

bool ExplorerList::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress: {
            const auto* key = static_cast<QKeyEvent*>(event);
            m_untouched = false;
            return isPlain(*key) && walks(key->key()) && moveFocus(key->key());
        }
        case QEvent::MouseButtonPress:
            m_untouched = false;
            break;
        case QEvent::Hide:
            if (qobject_cast<ExplorerRowView*>(watched) == nullptr) {
                settleSoon();
            }
            break;
        default:
            break;
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
