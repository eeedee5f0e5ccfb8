#include "ui/NavigationRow.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int rowHeight = 56;
constexpr int symbolSize = 20;
constexpr int chevronSize = 16;
constexpr int columnGap = 12;

}  // namespace

NavigationRow::NavigationRow(QString symbol, QString title, QString detail, QWidget* parent)
    : ListRow(parent), m_symbol(std::move(symbol)), m_title(std::move(title)), m_detail(std::move(detail)) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(m_title);
    setAccessibleDescription(m_detail);
}

int NavigationRow::heightFor(int /*width*/) const {
    const int lines = Metrics::lineHeight(FontRole::rowTitle) + 1 + Metrics::lineHeight(FontRole::detail);
    return std::max(Metrics::px(rowHeight), lines + 20);
}

QList<QWidget*> NavigationRow::focusStops() const {
    return {const_cast<NavigationRow*>(this)};
}

void NavigationRow::activate() {
    Q_EMIT activated();
}

void NavigationRow::clicked() {
    Q_EMIT activated();
}

void NavigationRow::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            Q_EMIT activated();
            break;
        default:
            ListRow::keyPressEvent(event);
    }
}

void NavigationRow::focusInEvent(QFocusEvent* event) {
    ListRow::focusInEvent(event);
    m_ring = FocusRing::isDue(event->reason());
    update();
}

void NavigationRow::focusOutEvent(QFocusEvent* event) {
    ListRow::focusOutEvent(event);
    m_ring = false;
    update();
}

void NavigationRow::paintRow(QPainter& painter) {
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(sidePadding, (height() - symbol) / 2.0), m_symbol, Theme::colour(Colour::text2),
                symbol);
    const int chevron = Metrics::px(chevronSize);
    const int chevronLeft = width() - sidePadding - chevron;
    Icons::draw(painter, QPointF(chevronLeft, (height() - chevron) / 2.0), QStringLiteral("chevron.right"),
                Theme::colour(Colour::text3), chevron);
    const int left = sidePadding + symbol + columnGap;
    const int room = chevronLeft - columnGap - left;
    const int title = Metrics::lineHeight(FontRole::rowTitle);
    const int detail = Metrics::lineHeight(FontRole::detail);
    const int top = (height() - title - detail) / 2;
    Paint::text(painter, QRect(left, top, room, title), FontRole::rowTitle, Theme::colour(Colour::text1), m_title);
    Paint::text(painter, QRect(left, top + title + 1, room, detail), FontRole::detail, Theme::colour(Colour::text3),
                m_detail);
    if (m_ring) {
        Paint::innerRing(painter, rect().adjusted(1, 1, -1, -1), Metrics::px(12) - 2);
    }
}

}  // namespace kestrune
