#include "ui/ModelRow.h"

#include <QPainter>
#include <algorithm>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int rowHeight = 52;
constexpr int columnGap = 12;
constexpr int symbolSize = 18;
constexpr int wideBar = 168;
constexpr int narrowBar = 96;
constexpr int wideFrom = 700;  // width of a row that has room for the wide bar
constexpr int barHeight = 4;
constexpr int sizeWidth = 76;
constexpr int smallestName = 150;  // below it there is no bar
constexpr int buttonPadding = 8;   // between a row button's edge and its label

int sizeColumn() {
    return std::max(Metrics::px(sizeWidth), Metrics::tabularWidth(FontRole::rowTitle, QStringLiteral("999.99 GB")));
}

}  // namespace

/// Where the row has its parts.
struct ModelRow::Columns {
    int nameLeft = 0;
    int nameRight = 0;
    int barWidth = 0;  // 0: no bar
    int barLeft = 0;
    int sizeRight = 0;
    QRect button;
};

ModelRow::ModelRow(const CleanTarget& target, QWidget* parent)
    : ListRow(parent), m_reveal(new Button(Button::Kind::row, translated("Show in Finder"), this)) {
    m_reveal->setAccessibleName(translated("Show in Finder: %1", {shown(target.title)}));
    connect(m_reveal, &Button::clicked, this, &ModelRow::revealWanted);
}

void ModelRow::setState(const ModelRowState& state) {
    if (m_state == state) {
        return;
    }
    m_state = state;
    setSpoken(QStringLiteral("%1, %2").arg(shown(state.target.title), shown(state.target.sizeFormatted())));
    setAccessibleDescription(state.path);
    update();
}

int ModelRow::heightFor(int /*width*/) const {
    const int text = Metrics::lineHeight(FontRole::rowTitle) + 1 + Metrics::lineHeight(FontRole::detail);
    return std::max(Metrics::px(rowHeight), text + 16);
}

QList<QWidget*> ModelRow::focusStops() const {
    return {m_reveal};
}

ModelRow::Columns ModelRow::columns() const {
    Columns result;
    const int gap = Metrics::px(columnGap);
    const QSize button = m_reveal->sizeHint();
    // The button's label ends where the row's content ends.
    const int buttonLeft = width() - sidePadding + Metrics::px(buttonPadding) - button.width();
    result.button = QRect(QPoint(buttonLeft, (height() - button.height()) / 2), button);
    result.sizeRight = buttonLeft - gap;
    const int sizeLeft = result.sizeRight - sizeColumn();
    result.nameLeft = sidePadding + Metrics::px(symbolSize) + gap;
    result.barWidth = Metrics::px(width() >= Metrics::px(wideFrom) ? wideBar : narrowBar);
    result.barLeft = sizeLeft - gap - result.barWidth;
    result.nameRight = result.barLeft - gap;
    if (result.nameRight - result.nameLeft < Metrics::px(smallestName)) {
        result.barWidth = 0;
        result.nameRight = sizeLeft - gap;
    }
    return result;
}

void ModelRow::resizeEvent(QResizeEvent* event) {
    ListRow::resizeEvent(event);
    m_reveal->setGeometry(Mirror::shown(*this, columns().button));
}

void ModelRow::hoverChanged(bool hovered) {
    m_reveal->setRowHovered(hovered);
}

void ModelRow::paintRow(QPainter& painter) {
    const Columns place = columns();
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(sidePadding, (height() - symbol) / 2.0), shown(icon(m_state.target.category)),
                Theme::colour(Colour::text3), symbol);
    const int titleLine = Metrics::lineHeight(FontRole::rowTitle);
    const int detailLine = Metrics::lineHeight(FontRole::detail);
    const int top = (height() - titleLine - detailLine) / 2;
    const int room = place.nameRight - place.nameLeft;
    Paint::text(painter, QRect(place.nameLeft, top, room, titleLine), FontRole::rowTitle, Theme::colour(Colour::text1),
                shown(m_state.target.title));
    Paint::text(painter, QRect(place.nameLeft, top + titleLine + 1, room, detailLine), FontRole::detail,
                Theme::colour(Colour::text3), m_state.path, Qt::AlignLeft, Qt::ElideMiddle);
    if (place.barWidth > 0) {
        const int thickness = Metrics::px(barHeight);
        Paint::bar(painter, QRect(place.barLeft, (height() - thickness) / 2, place.barWidth, thickness), m_state.share,
                   Theme::colour(Colour::chartLine), Theme::colour(Colour::track));
    }
    const QString size = shown(m_state.target.sizeFormatted());
    painter.setPen(Theme::colour(Colour::text1));
    Metrics::drawTabular(painter, place.sizeRight - Metrics::tabularWidth(FontRole::rowTitle, size),
                         Paint::baseline(FontRole::rowTitle, 0, height()), FontRole::rowTitle, size);
}

QString ModelRow::toolTipAt(const QPoint& at) const {
    const Columns place = columns();
    if (at.x() < place.nameLeft || at.x() > place.nameRight) {
        return {};
    }
    const int room = place.nameRight - place.nameLeft;
    if (at.y() >= height() / 2) {
        return Metrics::width(FontRole::detail, m_state.path) > room ? m_state.path : QString();
    }
    const QString title = shown(m_state.target.title);
    return Metrics::width(FontRole::rowTitle, title) > room ? title : shown(m_state.target.subtitle);
}

}  // namespace kestrune
