#include "ui/RowList.h"

#include <QPainter>

#include "ui/ListRow.h"
#include "ui/Paint.h"
#include "ui/TabOrder.h"

namespace kestrune {

RowList::RowList(const QString& spokenName, QWidget* parent) : Painted(parent) {
    setAccessibleName(spokenName);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void RowList::setRows(const std::vector<ListRow*>& rows) {
    m_rows = rows;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (rows[index]->parentWidget() != this) {
            rows[index]->setParent(this);
        }
        rows[index]->setPlace(index == 0, index + 1 == rows.size());
        rows[index]->show();
    }
    stack();
    arrange();
}

void RowList::stack() {
    // Screen readers go through the rows in the order of the children.
    std::size_t next = 0;
    for (const QObject* child : children()) {
        if (next < m_rows.size() && child == m_rows[next]) {
            ++next;
        }
    }
    if (next < m_rows.size()) {
        for (ListRow* row : m_rows) {
            row->raise();
        }
    }
}

QWidget* RowList::chainFocus(QWidget* before) const {
    for (const ListRow* row : m_rows) {
        const QList<QWidget*> stops = row->focusStops();
        for (QWidget* stop : stops) {
            putBehind(*before, *stop);
            before = stop;
        }
    }
    return before;
}

void RowList::arrange() {
    int top = 1;
    for (ListRow* row : m_rows) {
        const int height = row->heightFor(width() - 2);
        row->setGeometry(1, top, width() - 2, height);
        top += height;
    }
    setFixedHeight(top + 1);
}

void RowList::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Paint::card(painter, rect());
}

void RowList::resizeEvent(QResizeEvent* event) {
    Painted::resizeEvent(event);
    if (event->oldSize().width() != event->size().width()) {
        arrange();
    }
}

}  // namespace kestrune
