#include "ui/ActivityRow.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int rowHeight = 52;
constexpr int symbolSize = 18;
constexpr int columnGap = 12;
constexpr int timeWidth = 36;
constexpr int timeGap = 6;  // between the buttons and the time
constexpr int smallestText = 220;
constexpr int buttonsGap = 4;
constexpr int buttonPadding = 8;  // within a button, beside its label
constexpr int verticalPadding = 8;

int timeColumn() {
    return std::max(Metrics::px(timeWidth), Metrics::tabularWidth(FontRole::detail, QStringLiteral("00:00")));
}

}  // namespace

ActivityRow::ActivityRow(const ActivityEntry& entry, const QString& day, QString time, const QString& nameInButtons,
                         QWidget* parent)
    : ListRow(parent),
      m_title(shown(entry.title)),
      m_detail(shown(entry.detail)),
      m_time(std::move(time)),
      m_failed(entry.failed) {
    if (entry.trashPath) {
        m_putBack = new Button(Button::Kind::row, translated("Put Back"), this);
        m_show = new Button(Button::Kind::row, translated("Show in Trash"), this);
        connect(m_putBack, &Button::clicked, this, &ActivityRow::putBackWanted);
        connect(m_show, &Button::clicked, this, &ActivityRow::showInTrashWanted);
    }
    setNames(day, nameInButtons);
}

void ActivityRow::setNames(const QString& day, const QString& nameInButtons) {
    const QString outcome = m_failed ? translated("failed") : translated("done");
    setSpoken(QStringLiteral("%1, %2, %3, %4 %5").arg(m_title, outcome, m_detail, day, m_time));
    if (m_show != nullptr) {
        m_putBack->setAccessibleName(translated("Put Back: %1", {nameInButtons}));
        m_show->setAccessibleName(translated("Show in Trash: %1", {nameInButtons}));
    }
}

QList<QWidget*> ActivityRow::focusStops() const {
    return m_show == nullptr ? QList<QWidget*>{} : QList<QWidget*>{m_putBack, m_show};
}

int ActivityRow::textLeft() const {
    return sidePadding + Metrics::px(symbolSize) + columnGap;
}

int ActivityRow::buttonsWidth() const {
    return m_putBack->sizeHint().width() + m_show->sizeHint().width();
}

bool ActivityRow::areButtonsBelow(int width) const {
    return m_show != nullptr &&
           width - textLeft() - buttonsWidth() - timeColumn() - sidePadding < Metrics::px(smallestText);
}

int ActivityRow::textRight(int width) const {
    const int time = width - sidePadding - timeColumn();
    return m_show == nullptr || areButtonsBelow(width) ? time - columnGap : time - timeGap - buttonsWidth() - 4;
}

int ActivityRow::textHeight(int width) const {
    const auto lines = static_cast<int>(detailLines(width).size());
    return Metrics::lineHeight(FontRole::rowTitle) + 1 + lines * Metrics::lineHeight(FontRole::detail);
}

QStringList ActivityRow::detailLines(int width) const {
    return Paint::wrapped(FontRole::detail, m_detail, textRight(width) - textLeft());
}

int ActivityRow::heightFor(int width) const {
    const int buttons = areButtonsBelow(width) ? buttonsGap + m_show->sizeHint().height() : 0;
    return std::max(Metrics::px(rowHeight), textHeight(width) + buttons + 2 * verticalPadding);
}

void ActivityRow::resizeEvent(QResizeEvent* event) {
    ListRow::resizeEvent(event);
    if (m_show != nullptr) {
        placeButtons();
    }
}

void ActivityRow::placeButtons() {
    const QSize putBack = m_putBack->sizeHint();
    const QSize show = m_show->sizeHint();
    const bool below = areButtonsBelow(width());
    const int end = below ? sidePadding - Metrics::px(buttonPadding) : sidePadding + timeColumn() + timeGap;
    const int left = width() - end - buttonsWidth();
    const int top = below ? height() - verticalPadding - show.height() : (height() - show.height()) / 2;
    m_putBack->setGeometry(Mirror::shown(*this, QRect(QPoint(left, top), putBack)));
    m_show->setGeometry(Mirror::shown(*this, QRect(QPoint(left + putBack.width(), top), show)));
}

void ActivityRow::hoverChanged(bool hovered) {
    if (m_show != nullptr) {
        m_putBack->setRowHovered(hovered);
        m_show->setRowHovered(hovered);
    }
}

QString ActivityRow::toolTipAt(const QPoint& place) const {
    const bool cut = Metrics::width(FontRole::rowTitle, m_title) > textRight(width()) - textLeft();
    return cut && place.x() >= textLeft() && place.x() < textRight(width()) ? m_title : QString();
}

void ActivityRow::paintRow(QPainter& painter) {
    const int texts = textHeight(width());
    const int top = areButtonsBelow(width()) ? verticalPadding : (height() - texts + 1) / 2;
    const int centre = areButtonsBelow(width()) ? 2 * top + texts : height();
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(sidePadding, (centre - symbol) / 2.0),
                m_failed ? QStringLiteral("exclamationmark.circle") : QStringLiteral("checkmark.circle"),
                Theme::colour(m_failed ? Colour::danger : Colour::success), symbol);
    const int title = Metrics::lineHeight(FontRole::rowTitle);
    const int room = textRight(width()) - textLeft();
    Paint::text(painter, QRect(textLeft(), top, room, title), FontRole::rowTitle, Theme::colour(Colour::text1),
                m_title);
    Paint::paragraph(painter, QRect(textLeft(), top + title + 1, room, texts - title - 1), FontRole::detail,
                     Theme::colour(Colour::text3), m_detail);
    painter.setPen(Theme::colour(Colour::text3));
    Metrics::drawTabular(painter, width() - sidePadding - Metrics::tabularWidth(FontRole::detail, m_time),
                         Paint::baseline(FontRole::detail, 0, centre), FontRole::detail, m_time);
}

}  // namespace kestrune
