#include "ui/Sidebar.h"

#include <QFocusEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "ui/FocusRing.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int symbolRole = Qt::UserRole;
constexpr int spaceAboveRole = Qt::UserRole + 1;
constexpr const char* ringProperty = "keyboardFocus";

bool startsGroup(WorkspacePage page) {
    return page == WorkspacePage::storage || page == WorkspacePage::automation || page == WorkspacePage::settings;
}

class PageDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const override {
        return {0, index.data(spaceAboveRole).toInt() + itemHeight() + 2};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const QRect box(option.rect.left(), option.rect.bottom() - 1 - itemHeight(), option.rect.width(), itemHeight());
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        const bool hovered = (option.state & QStyle::State_MouseOver) != 0;
        if (selected || hovered) {
            Paint::rounded(*painter, box, 8, Theme::colour(selected ? Colour::sideSelected : Colour::sideHover));
        }
        const Mirror::Turn turned(*painter, QRectF(box), option.direction == Qt::RightToLeft);
        const int size = Metrics::px(18);
        const int inset = Metrics::px(10);
        Icons::draw(*painter, QPointF(box.left() + inset, box.top() + (box.height() - size) / 2.0),
                    index.data(symbolRole).toString(), Theme::colour(selected ? Colour::accentText : Colour::text2),
                    size);
        const QRect label = box.adjusted(inset + size + inset, 0, -inset, 0);
        Paint::text(*painter, label, selected ? FontRole::bodyStrong : FontRole::body, Theme::colour(Colour::text1),
                    index.data(Qt::DisplayRole).toString());
        const QWidget* list = option.widget;
        if (selected && list != nullptr && list->hasFocus() && list->property(ringProperty).toBool()) {
            Paint::innerRing(*painter, box, 8);
        }
    }

private:
    [[nodiscard]] static int itemHeight() { return Metrics::px(32); }
};

}  // namespace

Sidebar::Sidebar(QWidget* parent) : QListWidget(parent) {
    setAccessibleName(translated("Pages"));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setViewportMargins(8, 20, 8, 8);
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_Hover);
    setMouseTracking(true);
    setItemDelegate(new PageDelegate(this));
    setFixedWidth(breadth() - 1);
    for (const WorkspacePage page : allWorkspacePages) {
        auto* item = new QListWidgetItem(translated(rawValue(page)), this);
        item->setData(symbolRole, shown(symbol(page)));
        item->setData(spaceAboveRole, startsGroup(page) ? 14 : 0);
    }
    // Assistive technology selects an entry without making it the current one.
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        const QModelIndexList entries = selectedIndexes();
        if (!entries.isEmpty()) {
            Q_EMIT chosen(allWorkspacePages.at(static_cast<std::size_t>(entries.first().row())));
        }
    });
}

int Sidebar::breadth() {
    return Metrics::px(200);
}

void Sidebar::setPage(WorkspacePage page) {
    const QSignalBlocker blocker(this);
    setCurrentRow(static_cast<int>(page));
}

void Sidebar::focusInEvent(QFocusEvent* event) {
    setProperty(ringProperty, FocusRing::isDue(event->reason()));
    QListWidget::focusInEvent(event);
    viewport()->update();
}

void Sidebar::focusOutEvent(QFocusEvent* event) {
    QListWidget::focusOutEvent(event);
    viewport()->update();
}

}  // namespace kestrune
