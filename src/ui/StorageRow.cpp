#include "ui/StorageRow.h"

#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int rowHeight = 52;
constexpr int columnGap = 12;
constexpr int boxSize = 16;
constexpr int symbolSize = 18;
constexpr int barWidth = 88;
constexpr int barHeight = 4;
constexpr int sizeWidth = 76;
constexpr int barFrom = 700;       // width of a row that has room for the bar
constexpr int smallestName = 150;  // below it the buttons go to a line of their own
constexpr int lastButtonSmallest = 60;
constexpr int chipGap = 8;

/// Of all chips, each with the gap before it.
int widthOf(const QList<Chip>& chips) {
    int width = 0;
    for (const Chip& chip : chips) {
        width += chipGap + chip.width();
    }
    return width;
}

}  // namespace

/// Where a row of one width has its parts.
struct StorageRow::Columns {
    int symbolLeft = 0;
    int nameLeft = 0;
    int nameRight = 0;
    int barLeft = 0;  // 0: no bar
    int sizeLeft = 0;
    int sizeRight = 0;
    int buttonsLeft = 0;
    bool buttonsBelow = false;
    QStringList failureLines;
    int firstHeight = 0;  // of the part with the name
    int buttonsHeight = 0;
};

StorageRow::StorageRow(const CleanTarget& target, QWidget* parent)
    : ListRow(parent),
      m_check(new CheckBox(translated("Select %1", {shown(target.title)}), this)),
      m_reveal(new Button(Button::Kind::row, translated("Show in Finder"), this)),
      m_exclude(new Button(Button::Kind::row, translated("Exclude"), this)) {
    m_state.target = target;
    m_reveal->setAccessibleName(translated("Show in Finder: %1", {shown(target.title)}));
    connect(m_check, &CheckBox::toggled, this, &StorageRow::selectionWanted);
    connect(m_reveal, &Button::clicked, this, &StorageRow::revealWanted);
    connect(m_exclude, &Button::clicked, this, &StorageRow::exclusionWanted);
    speak();
}

int StorageRow::lastButtonWidth(bool anyExcluded) {
    const QString widest = anyExcluded ? translated("Include again") : translated("Exclude");
    return std::max(Metrics::px(lastButtonSmallest), Metrics::width(FontRole::detail, widest) + 2 * Metrics::px(8));
}

QList<QWidget*> StorageRow::focusStops() const {
    return {m_check, m_reveal, m_exclude};
}

QList<Chip> StorageRow::chips() const {
    QList<Chip> chips;
    if (m_state.target.requiresReview()) {
        chips.append({Chip::Kind::warning, translated("Review carefully")});
    }
    if (m_state.excluded) {
        chips.append({Chip::Kind::muted, translated("Excluded")});
    }
    return chips;
}

void StorageRow::setState(const StorageRowState& state) {
    if (m_state == state && !accessibleName().isEmpty() && m_check->isChecked() == state.selected) {
        return;
    }
    m_state = state;
    {
        const QSignalBlocker blocker(m_check);
        m_check->setChecked(state.selected && !state.excluded);
    }
    m_check->setEnabled(!state.excluded && !state.locked);
    m_exclude->setEnabled(!state.locked);
    m_exclude->setLabel(state.excluded ? translated("Include again") : translated("Exclude"));
    m_exclude->setAccessibleName(QStringLiteral("%1: %2").arg(m_exclude->label(), shown(state.target.title)));
    m_exclude->setSmallestWidth(state.lastButtonWidth);
    speak();
    arrangeControls();
    update();
}

void StorageRow::speak() {
    QStringList parts{shown(m_state.target.title)};
    if (m_state.target.requiresReview()) {
        parts.append(translated("Review carefully"));
    }
    parts.append(shown(m_state.target.sizeFormatted()));
    if (m_state.excluded) {
        parts.append(translated("Excluded"));
    } else {
        parts.append(m_state.selected ? translated("selected") : translated("not selected"));
    }
    if (!m_state.failure.isEmpty()) {
        parts.append(m_state.failure);
    }
    setSpoken(parts.join(QStringLiteral(", ")));
    setAccessibleDescription(m_state.path);
}

StorageRow::Columns StorageRow::columns(int width) const {
    Columns result;
    const int gap = Metrics::px(columnGap);
    result.symbolLeft = sidePadding + Metrics::px(boxSize) + gap;
    result.nameLeft = result.symbolLeft + Metrics::px(symbolSize) + gap;
    // The last button's label ends where the row's content ends.
    const int buttonsRight = width - sidePadding + Metrics::px(8);
    const int buttons = m_reveal->sizeHint().width() + m_exclude->sizeHint().width();
    result.buttonsLeft = buttonsRight - buttons;
    const int sizeColumn =
        std::max(Metrics::px(sizeWidth), Metrics::tabularWidth(FontRole::rowTitle, QStringLiteral("999.99 GB")));
    const auto placeSize = [&](int right) {
        result.sizeRight = right;
        result.sizeLeft = right - sizeColumn;
        result.barLeft = width >= Metrics::px(barFrom) ? result.sizeLeft - gap - Metrics::px(barWidth) : 0;
        result.nameRight = (result.barLeft > 0 ? result.barLeft : result.sizeLeft) - gap;
    };
    placeSize(result.buttonsLeft - gap);
    if (result.nameRight - result.nameLeft < Metrics::px(smallestName)) {
        result.buttonsBelow = true;
        placeSize(width - sidePadding);
    }
    const int detailLine = Metrics::lineHeight(FontRole::detail);
    if (!m_state.failure.isEmpty()) {
        const int room = result.nameRight - result.nameLeft - Metrics::px(14) - 4;
        result.failureLines = Paint::wrapped(FontRole::detail, m_state.failure, room);
    }
    const int details = std::max(1, static_cast<int>(result.failureLines.size()));
    result.firstHeight =
        std::max(Metrics::px(rowHeight), Metrics::lineHeight(FontRole::rowTitle) + 1 + details * detailLine + 16);
    result.buttonsHeight = result.buttonsBelow ? m_reveal->sizeHint().height() + 8 : 0;
    return result;
}

int StorageRow::heightFor(int width) const {
    const Columns place = columns(width);
    return place.firstHeight + place.buttonsHeight;
}

void StorageRow::arrangeControls() {
    const Columns place = columns(width());
    const QPoint check(sidePadding - (m_check->width() - Metrics::px(boxSize)) / 2,
                       (place.firstHeight - m_check->height()) / 2);
    m_check->setGeometry(Mirror::shown(*this, QRect(check, m_check->size())));
    const QSize reveal = m_reveal->sizeHint();
    const QSize exclude = m_exclude->sizeHint();
    const int top = place.buttonsBelow ? place.firstHeight - 4 : (place.firstHeight - reveal.height()) / 2;
    m_reveal->setGeometry(Mirror::shown(*this, QRect(QPoint(place.buttonsLeft, top), reveal)));
    const QPoint beside(place.buttonsLeft + reveal.width(), top);
    m_exclude->setGeometry(Mirror::shown(*this, QRect(beside, exclude)));
}

void StorageRow::resizeEvent(QResizeEvent* event) {
    ListRow::resizeEvent(event);
    arrangeControls();
}

void StorageRow::hoverChanged(bool hovered) {
    m_reveal->setRowHovered(hovered);
    m_exclude->setRowHovered(hovered);
}

void StorageRow::clicked() {
    if (m_check->isEnabled()) {
        Q_EMIT selectionWanted(!m_state.selected);
    }
}

void StorageRow::paintRow(QPainter& painter) {
    const Columns place = columns(width());
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(place.symbolLeft, (place.firstHeight - symbol) / 2.0),
                shown(icon(m_state.target.category)), Theme::colour(Colour::text3), symbol);

    const int titleLine = Metrics::lineHeight(FontRole::rowTitle);
    const int detailLine = Metrics::lineHeight(FontRole::detail);
    const int details = std::max(1, static_cast<int>(place.failureLines.size()));
    int top = (place.firstHeight - titleLine - details * detailLine) / 2;
    int titleRoom = place.nameRight - place.nameLeft;
    const QString title = shown(m_state.target.title);
    const QList<Chip> shownChips = chips();
    if (!shownChips.isEmpty()) {
        titleRoom = std::min(titleRoom - widthOf(shownChips), Metrics::width(FontRole::rowTitle, title));
    }
    int chipLeft = place.nameLeft + titleRoom + chipGap;
    for (const Chip& chip : shownChips) {
        chip.draw(painter, chipLeft, top, titleLine);
        chipLeft += chip.width() + chipGap;
    }
    Paint::text(painter, QRect(place.nameLeft, top, titleRoom, titleLine), FontRole::rowTitle,
                Theme::colour(Colour::text1), title);
    top += titleLine + 1;
    if (place.failureLines.isEmpty()) {
        Paint::text(painter, QRect(place.nameLeft, top, place.nameRight - place.nameLeft, detailLine), FontRole::detail,
                    Theme::colour(Colour::text3), m_state.path, Qt::AlignLeft, Qt::ElideMiddle);
    } else {
        const int sign = Metrics::px(14);
        Icons::draw(painter, QPointF(place.nameLeft, top + (detailLine - sign) / 2.0),
                    QStringLiteral("exclamationmark.circle"), Theme::colour(Colour::danger), sign);
        const int left = place.nameLeft + sign + 4;
        Paint::paragraph(painter, QRect(left, top, place.nameRight - left, details * detailLine), FontRole::detail,
                         Theme::colour(Colour::danger), m_state.failure);
    }
    if (place.barLeft > 0) {
        const int thickness = Metrics::px(barHeight);
        const QRect bar(place.barLeft, (place.firstHeight - thickness) / 2, Metrics::px(barWidth), thickness);
        Paint::bar(painter, bar, m_state.share, Theme::colour(Colour::chartLine), Theme::colour(Colour::track));
    }
    const QString size = shown(m_state.target.sizeFormatted());
    painter.setPen(Theme::colour(Colour::text1));
    Metrics::drawTabular(painter, place.sizeRight - Metrics::tabularWidth(FontRole::rowTitle, size),
                         Paint::baseline(FontRole::rowTitle, 0, place.firstHeight), FontRole::rowTitle, size);
}

QString StorageRow::toolTipAt(const QPoint& at) const {
    const Columns place = columns(width());
    if (at.x() < place.nameLeft || at.x() > place.nameRight) {
        return {};
    }
    const int room = place.nameRight - place.nameLeft;
    const bool upper = at.y() < place.firstHeight / 2;
    const QString title = shown(m_state.target.title);
    if (upper) {
        return Metrics::width(FontRole::rowTitle, title) + widthOf(chips()) > room ? title
                                                                                   : shown(m_state.target.subtitle);
    }
    const bool pathHidden = !m_state.failure.isEmpty() || Metrics::width(FontRole::detail, m_state.path) > room;
    return pathHidden ? m_state.path : QString();
}

}  // namespace kestrune
