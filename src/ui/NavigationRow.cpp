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

struct Shape {
    int height;
    int symbol;
    int before;  // the symbol
    int gap;     // behind it
    const char* sign;
};

constexpr Shape toPage{56, 20, 15, 12, "chevron.right"};
constexpr Shape toOutside{48, 22, 16, 14, "arrow.up.right"};
constexpr int signSize = 16;
constexpr int textGap = 12;  // between the texts and the sign

const Shape& shapeOf(bool outside) {
    return outside ? toOutside : toPage;
}

}  // namespace

NavigationRow::NavigationRow(QString symbol, QString title, QString detail, QWidget* parent)
    : ListRow(parent), m_symbol(std::move(symbol)), m_title(std::move(title)), m_detail(std::move(detail)) {
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(m_title);
    setAccessibleDescription(m_detail);
}

void NavigationRow::setLeadsOutside() {
    m_outside = true;
}

int NavigationRow::detailHeight() const {
    return m_detail.isEmpty() ? 0 : 1 + Metrics::lineHeight(FontRole::detail);
}

int NavigationRow::heightFor(int /*width*/) const {
    const int lines = Metrics::lineHeight(FontRole::rowTitle) + detailHeight();
    return std::max(Metrics::px(shapeOf(m_outside).height), lines + 20);
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
    const Shape& shape = shapeOf(m_outside);
    const int symbol = Metrics::px(shape.symbol);
    Icons::draw(painter, QPointF(shape.before, (height() - symbol) / 2.0), m_symbol, Theme::colour(Colour::text2),
                symbol);
    const int sign = Metrics::px(signSize);
    const int signLeft = width() - sidePadding - sign;
    Icons::draw(painter, QPointF(signLeft, (height() - sign) / 2.0), QLatin1String(shape.sign),
                Theme::colour(m_outside ? Colour::text2 : Colour::text3), sign);
    const int left = shape.before + symbol + shape.gap;
    const int room = signLeft - textGap - left;
    const int title = Metrics::lineHeight(FontRole::rowTitle);
    const int top = (height() - title - detailHeight() + 1) / 2;
    Paint::text(painter, QRect(left, top, room, title), FontRole::rowTitle, Theme::colour(Colour::text1), m_title);
    if (!m_detail.isEmpty()) {
        Paint::text(painter, QRect(left, top + title + 1, room, detailHeight() - 1), FontRole::detail,
                    Theme::colour(Colour::text3), m_detail);
    }
    if (m_ring) {
        Paint::innerRing(painter, rect().adjusted(1, 1, -1, -1), Metrics::px(12) - 2);
    }
}

}  // namespace kestrune
