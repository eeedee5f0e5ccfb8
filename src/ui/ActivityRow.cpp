#include "ui/ActivityRow.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int rowHeight = 52;
constexpr int symbolSize = 18;
constexpr int columnGap = 12;
constexpr int timeWidth = 36;

int timeColumn() {
    return std::max(Metrics::px(timeWidth), Metrics::tabularWidth(FontRole::detail, QStringLiteral("00:00")));
}

}  // namespace

ActivityRow::ActivityRow(const ActivityEntry& entry, const QString& day, QString time, const QString& buttonName,
                         QWidget* parent)
    : ListRow(parent),
      m_title(shown(entry.title)),
      m_detail(shown(entry.detail)),
      m_time(std::move(time)),
      m_failed(entry.failed) {
    if (entry.trashPath) {
        m_show = new Button(Button::Kind::row, QStringLiteral("Show in Trash"), this);
        connect(m_show, &Button::clicked, this, &ActivityRow::showInTrashWanted);
    }
    setNames(day, buttonName);
}

void ActivityRow::setNames(const QString& day, const QString& buttonName) {
    const QString outcome = m_failed ? QStringLiteral("failed") : QStringLiteral("done");
    setSpoken(QStringLiteral("%1, %2, %3, %4 %5").arg(m_title, outcome, m_detail, day, m_time));
    if (m_show != nullptr) {
        m_show->setAccessibleName(buttonName);
    }
}

QList<QWidget*> ActivityRow::focusStops() const {
    return m_show == nullptr ? QList<QWidget*>{} : QList<QWidget*>{m_show};
}

int ActivityRow::textLeft() const {
    return sidePadding + Metrics::px(symbolSize) + columnGap;
}

int ActivityRow::textRight(int width) const {
    const int time = width - sidePadding - timeColumn();
    return m_show == nullptr ? time - columnGap : time - 6 - m_show->sizeHint().width() - 4;
}

QStringList ActivityRow::detailLines(int width) const {
    return Paint::wrapped(FontRole::detail, m_detail, textRight(width) - textLeft());
}

int ActivityRow::heightFor(int width) const {
    const auto lines = static_cast<int>(detailLines(width).size());
    const int text = Metrics::lineHeight(FontRole::rowTitle) + 1 + lines * Metrics::lineHeight(FontRole::detail);
    return std::max(Metrics::px(rowHeight), text + 16);
}

void ActivityRow::resizeEvent(QResizeEvent* event) {
    ListRow::resizeEvent(event);
    if (m_show != nullptr) {
        const QSize size = m_show->sizeHint();
        const int right = width() - sidePadding - timeColumn() - 6;
        m_show->setGeometry(QRect(QPoint(right - size.width(), (height() - size.height()) / 2), size));
    }
}

void ActivityRow::hoverChanged(bool hovered) {
    if (m_show != nullptr) {
        m_show->setRowHovered(hovered);
    }
}

QString ActivityRow::toolTipAt(const QPoint& place) const {
    const bool cut = Metrics::width(FontRole::rowTitle, m_title) > textRight(width()) - textLeft();
    return cut && place.x() >= textLeft() && place.x() < textRight(width()) ? m_title : QString();
}

void ActivityRow::paintRow(QPainter& painter) {
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(sidePadding, (height() - symbol) / 2.0),
                m_failed ? QStringLiteral("exclamationmark.circle") : QStringLiteral("checkmark.circle"),
                Theme::colour(m_failed ? Colour::danger : Colour::success), symbol);
    const int title = Metrics::lineHeight(FontRole::rowTitle);
    const int detail = Metrics::lineHeight(FontRole::detail);
    const auto lines = static_cast<int>(detailLines(width()).size());
    const int top = (height() - title - lines * detail) / 2;
    const int room = textRight(width()) - textLeft();
    Paint::text(painter, QRect(textLeft(), top, room, title), FontRole::rowTitle, Theme::colour(Colour::text1),
                m_title);
    Paint::paragraph(painter, QRect(textLeft(), top + title + 1, room, lines * detail), FontRole::detail,
                     Theme::colour(Colour::text3), m_detail);
    painter.setPen(Theme::colour(Colour::text3));
    Metrics::drawTabular(painter, width() - sidePadding - Metrics::tabularWidth(FontRole::detail, m_time),
                         Paint::baseline(FontRole::detail, 0, height()), FontRole::detail, m_time);
}

}  // namespace kestrune
