#include "ui/AlertDialog.h"

#include <QAccessibleWidget>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/Button.h"
#include "ui/Mirror.h"
#include "ui/ScrollArea.h"
#include "ui/ScrollThumb.h"
#include "ui/SymbolPlate.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int dialogWidth = 520;
constexpr int padding = 24;
constexpr int plateGap = 16;
constexpr int itemIndent = 11;
constexpr int belowItem = 8;
constexpr int blockGap = 12;
constexpr int aboveTitle = 2;
constexpr int beforeText = 4;
constexpr int belowLongList = 8;
constexpr int aboveButtons = 20;
constexpr int smallestBody = 3;  // lines
constexpr int frameHeight = 40;  // what a desktop puts around a dialog, at most
constexpr std::size_t itemsWithoutScrolling = 8;

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("kestrune::AlertDialog")) {
        return new QAccessibleWidget(static_cast<AlertDialog*>(object), QAccessible::AlertMessage);
    }
    return nullptr;
}

TextLabel* wrapped(FontRole role, Colour colour, const QString& text, QWidget* parent) {
    auto* label = new TextLabel(role, colour, parent);
    label->setText(text);
    label->setFit(TextLabel::Fit::wrap);
    return label;
}

QWidget* itemBlock(const AlertItem& item) {
    auto* block = new QWidget;
    auto* layout = new QVBoxLayout(block);
    layout->setContentsMargins(0, 0, 0, belowItem);
    layout->setSpacing(0);
    const QString line = item.size.empty() ? QStringLiteral("• %1").arg(shown(item.title))
                                           : QStringLiteral("• %1 — %2").arg(shown(item.title), shown(item.size));
    layout->addWidget(wrapped(FontRole::rowTitle, Colour::text1, line, block));
    auto* detail = wrapped(FontRole::detail, Colour::text2, shown(item.subtitle), block);
    detail->setContentsMargins(0, 0, 0, 0);
    auto* indented = new QHBoxLayout;
    indented->setContentsMargins(Mirror::margins(*block, itemIndent, 0, 0, 0));
    indented->addWidget(detail);
    layout->addLayout(indented);
    return block;
}

QVBoxLayout* plainColumn(QWidget& widget, int right) {
    auto* layout = new QVBoxLayout(&widget);
    layout->setContentsMargins(Mirror::margins(widget, 0, 0, right, 0));
    layout->setSpacing(0);
    return layout;
}

QWidget* itemList(const std::vector<AlertItem>& items) {
    auto* list = new QWidget;
    QVBoxLayout* layout = plainColumn(*list, ScrollThumb::breadth());
    for (const AlertItem& item : items) {
        layout->addWidget(itemBlock(item));
    }
    return list;
}

// A longest line that is the room there is lets a very long text be wrapped once, whatever widths layouts ask for.
QWidget* textBlocks(const QString& text, int room) {
    auto* widget = new QWidget;
    QVBoxLayout* layout = plainColumn(*widget, ScrollThumb::breadth());
    layout->setSpacing(blockGap);
    const QStringList blocks = text.split(QLatin1String("\n\n"));
    for (const QString& block : blocks) {
        TextLabel* label = wrapped(FontRole::body, Colour::text2, block, widget);
        label->setLongestLine(room);
        layout->addWidget(label);
    }
    return widget;
}

// Half a block more, so that it is visible that the list goes on.
int longListHeight() {
    const int block = Metrics::lineHeight(FontRole::rowTitle) + Metrics::lineHeight(FontRole::detail) + belowItem;
    return static_cast<int>(itemsWithoutScrolling) * block + block / 2;
}

}  // namespace

AlertDialog::AlertDialog(const Alert& alert, QWidget* parent)
    : QDialog(parent), m_answer(alert.buttons.empty() ? 0 : alert.buttons.size() - 1) {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
    Theme::start();
    setWindowTitle(QStringLiteral("Kestrune"));
    // A minimised question would leave a window behind that answers nothing.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setAccessibleName(shown(alert.messageText));
    setAccessibleDescription(shownLines(alert.informativeText()));
    const int side = Metrics::px(padding);
    auto* plate = new SymbolPlate(shown(alert.symbol), this);
    const int left = side + plate->width() + Metrics::px(plateGap);
    const QSize room = screen()->availableSize() - QSize(0, Metrics::px(frameHeight));
    setFixedWidth(std::min(Metrics::px(dialogWidth), room.width()));
    const int plateLeft = isRightToLeft() ? width() - side - plate->width() : side;
    plate->move(plateLeft, side);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Mirror::margins(*this, left, side, side - ScrollThumb::breadth(), side));
    column->setSpacing(0);
    column->addSpacing(aboveTitle);
    auto* title = wrapped(FontRole::heading, Colour::text1, shownLines(alert.messageText), this);
    auto* titleRow = new QHBoxLayout;
    titleRow->setContentsMargins(Mirror::margins(*this, 0, 0, ScrollThumb::breadth(), 0));
    titleRow->addWidget(title);
    column->addLayout(titleRow);
    const int belowTitle = alert.items.empty() ? 8 : 12;
    column->addSpacing(belowTitle);
    QLayout* buttons = makeButtons(alert.buttons);
    const int around = 2 * side + aboveTitle + title->heightForWidth(width() - left - side) + belowTitle +
                       aboveButtons + buttons->sizeHint().height();
    addBody(alert, std::max(room.height() - around, smallestBody * Metrics::lineHeight(FontRole::body)), *column);
    column->addStretch(1);
    column->addSpacing(aboveButtons);
    column->addLayout(buttons);
}

void AlertDialog::addBody(const Alert& alert, int room, QVBoxLayout& column) {
    QWidget* items = alert.items.empty() ? nullptr : itemList(alert.items);
    const int inside = width() - column.contentsMargins().left() - column.contentsMargins().right();
    QWidget* text = alert.text.empty() ? nullptr : textBlocks(shownLines(alert.text), inside - ScrollThumb::breadth());
    const auto heightOf = [inside](const QWidget* part) {
        return part == nullptr ? 0 : part->layout()->heightForWidth(inside);
    };
    const bool isLongList = alert.items.size() > itemsWithoutScrolling;
    const int listHeight = isLongList ? longListHeight() + belowLongList : heightOf(items);
    const int gap = items != nullptr && text != nullptr ? beforeText : 0;
    if (listHeight + gap + heightOf(text) > room) {
        auto* all = new QWidget;
        QVBoxLayout* layout = plainColumn(*all, 0);
        for (QWidget* part : {items, text}) {
            if (part != nullptr) {
                layout->addWidget(part);
            }
        }
        layout->insertSpacing(1, gap);
        // Half a line at the end, so that it is visible that the text goes on.
        const int line = Metrics::lineHeight(FontRole::body);
        column.addWidget(scrolling(*all, inside, room - (room - line / 2) % line));
        return;
    }
    if (items != nullptr) {
        column.addWidget(isLongList ? scrolling(*items, inside, longListHeight()) : items);
        column.addSpacing((isLongList ? belowLongList : 0) + gap);
    }
    if (text != nullptr) {
        column.addWidget(text);
    }
}

QWidget* AlertDialog::scrolling(QWidget& content, int inside, int height) {
    m_scroll = new ScrollArea(this);
    content.setAutoFillBackground(false);
    // The area would ask for the height at its own first width, and a very long text would be wrapped for that as well.
    content.setMinimumWidth(inside);
    m_scroll->setWidget(&content);
    m_scroll->setFixedHeight(height);
    return m_scroll;
}

QLayout* AlertDialog::makeButtons(const std::vector<std::string>& titles) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Mirror::margins(*this, 0, 0, ScrollThumb::breadth(), 0));
    row->setSpacing(8);
    row->addStretch(1);
    // KDE puts the default first, everybody else at the right.
    const int layout = style()->styleHint(QStyle::SH_DialogButtonLayout, nullptr, this);
    const bool defaultFirst = layout == QDialogButtonBox::KdeLayout;
    m_buttons.resize(titles.size());
    for (std::size_t place = 0; place < titles.size(); ++place) {
        const std::size_t index = defaultFirst ? place : titles.size() - 1 - place;
        auto* button =
            new Button(index == 0 ? Button::Kind::primary : Button::Kind::secondary, shown(titles[index]), this);
        connect(button, &Button::clicked, this, [this, index] {
            m_answer = index;
            accept();
        });
        m_buttons[index] = button;
        row->addWidget(button);
    }
    return row;
}

void AlertDialog::reject() {
    m_answer = m_buttons.empty() ? 0 : m_buttons.size() - 1;
    QDialog::reject();
}

void AlertDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    layout()->activate();
    resize(width(), layout()->heightForWidth(width()));
    if (!m_buttons.empty()) {
        m_buttons.front()->setFocus(Qt::TabFocusReason);
    }
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void AlertDialog::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !m_buttons.empty()) {
        m_buttons.front()->click();
        return;
    }
    if (m_scroll != nullptr && (event->key() == Qt::Key_PageDown || event->key() == Qt::Key_PageUp)) {
        m_scroll->verticalScrollBar()->triggerAction(
            event->key() == Qt::Key_PageDown ? QAbstractSlider::SliderPageStepAdd : QAbstractSlider::SliderPageStepSub);
        return;
    }
    QDialog::keyPressEvent(event);
}

void AlertDialog::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), Theme::colour(Colour::window));
}

}  // namespace kestrune
