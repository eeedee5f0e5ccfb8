#include "ui/TreemapView.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <utility>

#include "ui/Metrics.h"
#include "ui/TreemapAccessible.h"
#include "ui/TreemapPaint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int pictureHeight = 200;

// What a tile takes at least, so that the pointer finds it.
constexpr double smallestShare = 0.0075;

bool haveSameItems(const std::vector<ExplorerTile>& one, const std::vector<ExplorerTile>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const ExplorerTile& left, const ExplorerTile& right) { return left.path == right.path; });
}

bool cameByKey(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason ||
           reason == Qt::OtherFocusReason;
}

}  // namespace

TreemapView::TreemapView(QWidget* parent) : QWidget(parent) {
    TreemapAccessible::install();
    setAccessibleName(translated("Picture of the largest items"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFixedHeight(Metrics::px(pictureHeight));
    hide();
}

void TreemapView::setTiles(std::vector<ExplorerTile> tiles) {
    if (m_tiles == tiles) {
        return;
    }
    const bool sameItems = haveSameItems(m_tiles, tiles);
    const std::size_t current = currentIndex().value_or(0);
    m_tiles = std::move(tiles);
    layOut();
    update();
    if (!sameItems) {
        QAccessibleEvent event(this, QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&event);
    }
    keepCurrent(current);
    if (!find(m_hovered)) {
        point(std::nullopt);
    }
    if (m_tiles.empty() != isHidden()) {
        setVisible(!m_tiles.empty());
    }
}

// Where the item that keys act on is gone, they act on the one that took its place.
void TreemapView::keepCurrent(std::size_t before) {
    if (!m_current || find(m_current)) {
        return;
    }
    m_current.reset();
    if (hasFocus() && !m_tiles.empty()) {
        setCurrent(std::min(before, m_tiles.size() - 1));
    }
    tellPointed();
}

void TreemapView::startAt(const std::string& path) {
    const auto start = path.empty() ? std::nullopt : indexOf(path);
    if (!m_tiles.empty() && (start || hasFocus())) {
        setCurrent(start.value_or(0));
    } else {
        updateTile(m_current);
        m_current.reset();
    }
    tellPointed();
}

void TreemapView::layOut() {
    const double all = std::accumulate(m_tiles.begin(), m_tiles.end(), 0.0, [](double sum, const ExplorerTile& tile) {
        return sum + static_cast<double>(tile.bytes);
    });
    std::vector<double> weights;
    weights.reserve(m_tiles.size());
    std::transform(m_tiles.begin(), m_tiles.end(), std::back_inserter(weights), [all](const ExplorerTile& tile) {
        return std::max(static_cast<double>(tile.bytes), all * smallestShare);
    });
    const double across = width() + TreemapPaint::gap;
    m_cells = squarified(weights, {0, 0, across, height() + TreemapPaint::gap});
    if (isRightToLeft()) {
        std::transform(m_cells.begin(), m_cells.end(), m_cells.begin(),
                       [across](const TreemapRectangle& cell) { return TreemapPaint::mirrored(cell, across); });
    }
}

void TreemapView::setSelected(const std::string& path) {
    if (m_selected != path) {
        updateTile(m_selected);
        m_selected = path;
        updateTile(m_selected);
    }
}

void TreemapView::setHighlighted(const std::string& path) {
    if (m_highlighted != path) {
        updateTile(m_highlighted);
        m_highlighted = path;
        updateTile(m_highlighted);
    }
}

QString TreemapView::nameOf(std::size_t index) const {
    return shown(m_tiles[index].name);
}

QString TreemapView::figuresOf(std::size_t index) const {
    return QStringLiteral("%1, %2").arg(shown(m_tiles[index].size), shown(m_tiles[index].percent));
}

QRect TreemapView::tileRect(std::size_t index) const {
    const TreemapRectangle& cell = m_cells[index];
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    const auto gap = static_cast<int>(TreemapPaint::gap);
    const int right = whole(cell.x + cell.width) - gap;
    const int bottom = whole(cell.y + cell.height) - gap;
    const int left = std::max(0, std::min(whole(cell.x), right - 1));
    const int top = std::max(0, std::min(whole(cell.y), bottom - 1));
    return {left, top, std::max(1, right - left), std::max(1, bottom - top)};
}

std::optional<std::size_t> TreemapView::indexAt(const QPoint& place) const {
    const double x = place.x() + 0.5;
    const double y = place.y() + 0.5;
    const auto holds = [x, y](const TreemapRectangle& cell) {
        return x >= cell.x && x < cell.x + cell.width && y >= cell.y && y < cell.y + cell.height;
    };
    const auto found = std::find_if(m_cells.begin(), m_cells.end(), holds);
    if (found == m_cells.end() || !rect().contains(place)) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - m_cells.begin());
}

std::optional<std::size_t> TreemapView::indexOf(const std::string& path) const {
    const auto found =
        std::find_if(m_tiles.begin(), m_tiles.end(), [&](const ExplorerTile& tile) { return tile.path == path; });
    if (found == m_tiles.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - m_tiles.begin());
}

std::optional<std::size_t> TreemapView::find(const Identity& path) const {
    return path ? indexOf(*path) : std::nullopt;
}

TreemapView::Identity TreemapView::identityOf(std::optional<std::size_t> index) const {
    return index ? Identity(m_tiles[*index].path) : std::nullopt;
}

std::optional<std::size_t> TreemapView::currentIndex() const {
    return find(m_current);
}

std::optional<std::size_t> TreemapView::selectedIndex() const {
    return m_selected.empty() ? std::nullopt : indexOf(m_selected);
}

bool TreemapView::isExplorable(std::size_t index) const {
    return m_canExplore && m_tiles[index].isDirectory && !m_tiles[index].path.empty();
}

void TreemapView::explore(std::size_t index) {
    if (isExplorable(index)) {
        const std::string path = m_tiles[index].path;
        Q_EMIT explored(path);
    }
}

void TreemapView::choose(std::size_t index) {
    const std::string path = m_tiles[index].path;
    if (!path.empty()) {
        setSelected(path);
        Q_EMIT selected(path);
    }
}

void TreemapView::setCurrent(std::size_t index) {
    updateTile(m_current);
    m_current = m_tiles[index].path;
    updateTile(m_current);
    if (hasFocus()) {
        QAccessibleEvent event(this, QAccessible::Focus);
        event.setChild(static_cast<int>(index));
        QAccessible::updateAccessibility(&event);
    }
}

void TreemapView::moveCurrent(std::size_t index) {
    m_keyboard = true;
    setCurrent(index);
    point(std::nullopt);
    showFocus();
}

void TreemapView::showFocus() {
    tellPointed();
    const auto current = currentIndex();
    if (current && showsFocus()) {
        showToolTip(*current, mapToGlobal(tileRect(*current).center()));
    }
}

void TreemapView::showToolTip(std::size_t index, const QPoint& globalPlace) {
    const QString text =
        QStringLiteral("%1 · %2 · %3").arg(nameOf(index), shown(m_tiles[index].size), shown(m_tiles[index].percent));
    QToolTip::showText(globalPlace, asToolTip(text), this, tileRect(index));
}

void TreemapView::point(const Identity& path) {
    if (m_hovered != path) {
        updateTile(m_hovered);
        m_hovered = path;
        updateTile(m_hovered);
    }
    tellPointed();
}

// The pointer comes before the keyboard: it moved last, for keys take the hover off.
void TreemapView::tellPointed() {
    const std::string now = m_hovered ? *m_hovered : showsFocus() ? m_current.value_or("") : "";
    if (m_told != now) {
        m_told = now;
        Q_EMIT hovered(now);
    }
}

void TreemapView::updateTile(const Identity& path) {
    if (const auto index = find(path)) {
        update(tileRect(*index).adjusted(-1, -1, 1, 1));
    }
}

bool TreemapView::isOutlined(const std::string& path) const {
    return m_hovered == path || (!path.empty() && m_highlighted == path) || (showsFocus() && m_current == path);
}

void TreemapView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    for (std::size_t index = 0; index < m_tiles.size(); ++index) {
        if (tileRect(index).adjusted(-1, -1, 1, 1).intersects(event->rect())) {
            const std::string& path = m_tiles[index].path;
            TreemapPaint::tile(painter, m_tiles[index], m_cells[index],
                               {isOutlined(path), !path.empty() && path == m_selected, isRightToLeft()});
        }
    }
}

void TreemapView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void TreemapView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        layOut();
        update();
    }
}

bool TreemapView::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        if (const auto index = indexAt(help->pos())) {
            showToolTip(*index, help->globalPos());
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QWidget::event(event);
}

void TreemapView::mouseMoveEvent(QMouseEvent* event) {
    point(identityOf(indexAt(event->pos())));
}

void TreemapView::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    point(std::nullopt);
}

void TreemapView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    point(std::nullopt);
}

void TreemapView::mousePressEvent(QMouseEvent* event) {
    const auto index = indexAt(event->pos());
    m_pressed = identityOf(index);
    if (!index) {
        return;
    }
    setCurrent(*index);
    if (event->button() == Qt::LeftButton) {
        choose(*index);
    }
}

void TreemapView::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto index = indexAt(event->pos());
    if (!index || event->button() != Qt::LeftButton) {
        return;
    }
    // While a scan runs, another tile may come under the pointer between the two presses.
    if (m_pressed == identityOf(index)) {
        explore(*index);
    } else {
        mousePressEvent(event);
    }
}

void TreemapView::keyPressEvent(QKeyEvent* event) {
    const auto current = currentIndex();
    if (!current) {
        QWidget::keyPressEvent(event);
        return;
    }
    const std::size_t last = m_tiles.size() - 1;
    const int onward = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int key = event->key();
    if (key == Qt::Key_Down || key == onward) {
        moveCurrent(std::min(last, *current + 1));
    } else if (key == Qt::Key_Up || key == Qt::Key_Left || key == Qt::Key_Right) {
        moveCurrent(*current - std::min<std::size_t>(1, *current));
    } else if (key == Qt::Key_Home) {
        moveCurrent(0);
    } else if (key == Qt::Key_End) {
        moveCurrent(last);
    } else if (key == Qt::Key_Space) {
        choose(*current);
    } else if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !event->isAutoRepeat()) {
        explore(*current);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void TreemapView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const auto index = byKey ? currentIndex() : indexAt(event->pos());
    if (!index || m_tiles[*index].path.empty()) {
        event->ignore();
        return;
    }
    const std::string path = m_tiles[*index].path;
    Q_EMIT menuWanted(path, byKey ? mapToGlobal(tileRect(*index).center()) : event->globalPos());
}

void TreemapView::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (cameByKey(event->reason())) {
        m_keyboard = true;
    } else if (event->reason() == Qt::MouseFocusReason) {
        m_keyboard = false;
    }
    if (!m_tiles.empty()) {
        setCurrent(currentIndex().value_or(selectedIndex().value_or(0)));
    }
    showFocus();
}

void TreemapView::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    updateTile(m_current);
    QToolTip::hideText();
    tellPointed();
}

}  // namespace kestrune
