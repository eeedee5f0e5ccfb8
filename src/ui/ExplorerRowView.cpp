#include "ui/ExplorerRowView.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "base/ByteCount.h"
#include "ui/Button.h"
#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int lowRow = 40;
constexpr int highRow = 52;
constexpr int columnGap = 12;
constexpr int symbolSize = 18;
constexpr int longBar = 168;
constexpr int shortBar = 96;
constexpr int longBarFrom = 712;  // width of a row in a window of 960 and more
constexpr int barHeight = 4;
constexpr int sizeWidth = 76;
constexpr int smallestName = 120;  // below it the bar goes, then the buttons go to a line of their own
constexpr int aroundText = 16;     // above and below together

}  // namespace

/// Where a row of one width has its parts.
struct ExplorerRowView::Columns {
    int nameLeft = 0;
    int nameRight = 0;
    int barLeft = 0;
    int barWidth = 0;  // 0: no bar
    int percentRight = 0;
    int sizeRight = 0;
    int buttonsLeft = 0;
    int firstHeight = 0;  // of the part with the name
    int buttonsHeight = 0;
};

ExplorerRowView::ExplorerRowView(QWidget* parent)
    : ListRow(parent),
      m_explore(new Button(Button::Kind::row, translated("Explore"), this)),
      m_reveal(new Button(Button::Kind::row, translated("Show in Finder"), this)) {
    setFocusPolicy(Qt::StrongFocus);
    for (Button* button : {m_explore, m_reveal}) {
        button->setFocusPolicy(Qt::TabFocus);
    }
    connect(m_explore, &Button::clicked, this, &ExplorerRowView::explored);
    connect(m_reveal, &Button::clicked, this, &ExplorerRowView::revealed);
}

QList<QWidget*> ExplorerRowView::focusStops() const {
    return {const_cast<ExplorerRowView*>(this), m_explore, m_reveal};
}

void ExplorerRowView::setRow(const ExplorerRow& row) {
    if (m_row == row) {
        return;
    }
    const bool other = m_row.path != row.path || m_row.isDirectory != row.isDirectory;
    const bool sameHeight = m_row.detail.empty() == row.detail.empty();
    m_row = row;
    m_size = QString::fromStdString(formatByteCount(row.bytes));
    if (other) {
        m_name = QString::fromStdString(row.name);
        m_detail = QString::fromStdString(row.detail);
        m_explore->setVisible(row.isDirectory);
        const QString spoken = m_detail.isEmpty() ? m_name : QStringLiteral("%1, %2").arg(m_name, m_detail);
        m_explore->setAccessibleName(translated("Explore: %1", {spoken}));
        m_reveal->setAccessibleName(translated("Show in Finder: %1", {spoken}));
        setAccessibleDescription(QString::fromStdString(ExplorerListing::readablePath(row.path)));
    }
    if (!sameHeight) {
        arrangeControls();
    }
    speak();
    update();
}

void ExplorerRowView::speak() {
    QStringList parts{m_name};
    if (!m_detail.isEmpty()) {
        parts.append(m_detail);
    }
    parts.append(m_row.isDirectory ? QStringLiteral("folder") : QStringLiteral("file"));
    parts.append(m_size);
    parts.append(QString::fromStdString(m_row.percent));
    setSpoken(parts.join(QStringLiteral(", ")));
}

void ExplorerRowView::setCanExplore(bool can) {
    m_canExplore = can;
    m_explore->setEnabled(can);
}

void ExplorerRowView::setSelected(bool selected) {
    if (m_selected != selected) {
        m_selected = selected;
        update();
    }
}

void ExplorerRowView::setHighlighted(bool highlighted) {
    if (m_highlighted != highlighted) {
        m_highlighted = highlighted;
        inkButtons();
        update();
    }
}

std::optional<Colour> ExplorerRowView::ground() const {
    if (m_selected) {
        return Colour::tint;
    }
    return m_highlighted ? std::optional(Colour::cardHover) : ListRow::ground();
}

ExplorerRowView::Columns ExplorerRowView::columns(int width) const {
    Columns result;
    const int gap = Metrics::px(columnGap);
    result.nameLeft = sidePadding + Metrics::px(symbolSize) + gap;
    // The last button's label ends where the row's content ends.
    const int buttonsRight = width - sidePadding + Metrics::px(8);
    const int buttons = m_explore->sizeHint().width() + m_reveal->sizeHint().width();
    result.buttonsLeft = buttonsRight - buttons;
    const int sizeColumn =
        std::max(Metrics::px(sizeWidth), Metrics::tabularWidth(FontRole::rowTitle, QStringLiteral("999.99 GB")));
    const int percentColumn = Metrics::tabularWidth(FontRole::detail, translated("%1%", {QStringLiteral("100")}));
    const auto placeFigures = [&](int right, int bar) {
        result.sizeRight = right;
        result.percentRight = right - sizeColumn - gap;
        result.barWidth = bar;
        result.barLeft = result.percentRight - percentColumn - gap - bar;
        result.nameRight = (bar > 0 ? result.barLeft : result.percentRight - percentColumn) - gap;
        return result.nameRight - result.nameLeft >= Metrics::px(smallestName);
    };
    const int bar = Metrics::px(width >= Metrics::px(longBarFrom) ? longBar : shortBar);
    const int besideButtons = result.buttonsLeft - gap;
    const bool beside = placeFigures(besideButtons, bar) || placeFigures(besideButtons, 0);
    if (!beside && !placeFigures(width - sidePadding, bar)) {
        placeFigures(width - sidePadding, 0);
    }
    int text = Metrics::lineHeight(FontRole::rowTitle);
    if (!m_row.detail.empty()) {
        text += 1 + Metrics::lineHeight(FontRole::detail);
    }
    result.firstHeight = std::max(Metrics::px(m_row.detail.empty() ? lowRow : highRow), text + aroundText);
    result.buttonsHeight = beside ? 0 : m_reveal->sizeHint().height() + 8;
    return result;
}

int ExplorerRowView::heightFor(int width) const {
    const Columns place = columns(width);
    return place.firstHeight + place.buttonsHeight;
}

void ExplorerRowView::arrangeControls() {
    const Columns place = columns(width());
    const QSize explore = m_explore->sizeHint();
    const QSize reveal = m_reveal->sizeHint();
    const int top = place.buttonsHeight > 0 ? place.firstHeight - 4 : (place.firstHeight - reveal.height()) / 2;
    m_explore->setGeometry(Mirror::shown(*this, QRect(QPoint(place.buttonsLeft, top), explore)));
    const QPoint beside(place.buttonsLeft + explore.width(), top);
    m_reveal->setGeometry(Mirror::shown(*this, QRect(beside, reveal)));
}

void ExplorerRowView::resizeEvent(QResizeEvent* event) {
    ListRow::resizeEvent(event);
    arrangeControls();
}

void ExplorerRowView::changeEvent(QEvent* event) {
    ListRow::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        arrangeControls();
    }
}

void ExplorerRowView::inkButtons() {
    m_explore->setRowHovered(isHovered() || m_highlighted);
    m_reveal->setRowHovered(isHovered() || m_highlighted);
}

void ExplorerRowView::hoverChanged(bool /*hovered*/) {
    inkButtons();
    Q_EMIT hoverMoved();
}

void ExplorerRowView::clicked() {
    Q_EMIT selected();
}

void ExplorerRowView::activate() {
    if (isActivatable()) {
        Q_EMIT explored();
    }
}

void ExplorerRowView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        activate();
    }
}

void ExplorerRowView::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            activate();
            break;
        case Qt::Key_Space:
            Q_EMIT selected();
            break;
        default:
            ListRow::keyPressEvent(event);
    }
}

void ExplorerRowView::contextMenuEvent(QContextMenuEvent* event) {
    const bool pointer = event->reason() == QContextMenuEvent::Mouse;
    const QPoint belowName(columns(width()).nameLeft, columns(width()).firstHeight - 4);
    Q_EMIT menuWanted(pointer ? event->globalPos() : mapToGlobal(Mirror::laidOut(*this, belowName)));
}

void ExplorerRowView::focusInEvent(QFocusEvent* event) {
    ListRow::focusInEvent(event);
    m_ringed = FocusRing::isDue(event->reason());
    update();
    if (m_ringed) {
        Q_EMIT selected();
    }
}

void ExplorerRowView::focusOutEvent(QFocusEvent* event) {
    ListRow::focusOutEvent(event);
    m_ringed = false;
    update();
}

void ExplorerRowView::paintWords(QPainter& painter, const Columns& place) const {
    const int symbol = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(sidePadding, (place.firstHeight - symbol) / 2.0),
                m_row.isDirectory ? QStringLiteral("folder") : QStringLiteral("doc"), Theme::colour(Colour::text3),
                symbol);
    const int room = place.nameRight - place.nameLeft;
    const int nameLine = Metrics::lineHeight(FontRole::rowTitle);
    if (m_detail.isEmpty()) {
        Paint::text(painter, QRect(place.nameLeft, (place.firstHeight - nameLine) / 2, room, nameLine),
                    FontRole::rowTitle, Theme::colour(Colour::text1), m_name);
        return;
    }
    const int detailLine = Metrics::lineHeight(FontRole::detail);
    const int top = (place.firstHeight - nameLine - 1 - detailLine) / 2;
    Paint::text(painter, QRect(place.nameLeft, top, room, nameLine), FontRole::rowTitle, Theme::colour(Colour::text1),
                m_name);
    Paint::text(painter, QRect(place.nameLeft, top + nameLine + 1, room, detailLine), FontRole::detail,
                Theme::colour(Colour::text3), m_detail, Qt::AlignLeft, Qt::ElideMiddle);
}

void ExplorerRowView::paintFigures(QPainter& painter, const Columns& place) const {
    if (place.barWidth > 0) {
        const int thickness = Metrics::px(barHeight);
        const QRect bar(place.barLeft, (place.firstHeight - thickness) / 2, place.barWidth, thickness);
        const QColor fill = m_row.rank < 0 ? Theme::colour(Colour::chartLine) : Theme::rankStrong(m_row.rank);
        Paint::bar(painter, bar, m_row.bar, fill, Theme::colour(Colour::track));
    }
    const auto figure = [&](FontRole role, int right, const QString& text, Colour ink) {
        painter.setPen(Theme::colour(ink));
        Metrics::drawTabular(painter, right - Metrics::tabularWidth(role, text),
                             Paint::baseline(role, 0, place.firstHeight), role, text);
    };
    figure(FontRole::detail, place.percentRight, QString::fromStdString(m_row.percent), Colour::text2);
    figure(FontRole::rowTitle, place.sizeRight, m_size, Colour::text1);
}

void ExplorerRowView::paintRow(QPainter& painter) {
    const Columns place = columns(width());
    paintWords(painter, place);
    paintFigures(painter, place);
    if (m_ringed) {
        Paint::innerRing(painter, rect(), Metrics::px(12) - 1);
    }
}

QString ExplorerRowView::toolTipAt(const QPoint& at) const {
    const Columns place = columns(width());
    const bool overName = at.x() >= place.nameLeft && at.x() <= place.nameRight && at.y() < place.firstHeight;
    return overName ? QString::fromStdString(ExplorerListing::readablePath(m_row.path)) : QString();
}

}  // namespace kestrune
