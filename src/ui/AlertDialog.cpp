#include "ui/AlertDialog.h"

#include <QAccessibleWidget>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/Paint.h"
#include "ui/ScrollArea.h"
#include "ui/TextLabel.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int dialogWidth = 520;
constexpr int padding = 24;
constexpr int plateSize = 48;
constexpr int plateGap = 16;
constexpr int itemIndent = 11;
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
    layout->setContentsMargins(0, 0, 0, 8);
    layout->setSpacing(0);
    const QString line = QStringLiteral("• %1 — %2").arg(shown(item.title), shown(item.size));
    layout->addWidget(wrapped(FontRole::rowTitle, Colour::text1, line, block));
    auto* detail = wrapped(FontRole::detail, Colour::text2, shown(item.subtitle), block);
    detail->setContentsMargins(0, 0, 0, 0);
    auto* indented = new QHBoxLayout;
    indented->setContentsMargins(itemIndent, 0, 0, 0);
    indented->addWidget(detail);
    layout->addLayout(indented);
    return block;
}

// Keeps the line breaks that the text itself has.
QString paragraphs(const std::string& text) {
    QStringList lines;
    const QStringList parts = QString::fromStdString(text).split(QLatin1Char('\n'));
    for (const QString& part : parts) {
        lines.append(shown(part.toStdString()));
    }
    return lines.join(QLatin1Char('\n'));
}

}  // namespace

AlertDialog::AlertDialog(const Alert& alert, QWidget* parent)
    : QDialog(parent), m_symbol(shown(alert.symbol)), m_answer(alert.buttons.empty() ? 0 : alert.buttons.size() - 1) {
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
    setAccessibleDescription(paragraphs(alert.informativeText()));
    const int side = Metrics::px(padding);
    const int left = side + Metrics::px(plateSize) + Metrics::px(plateGap);
    setFixedWidth(Metrics::px(dialogWidth));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(left, side, side, side);
    column->setSpacing(0);
    column->addSpacing(2);
    column->addWidget(wrapped(FontRole::heading, Colour::text1, paragraphs(alert.messageText), this));
    column->addSpacing(alert.items.empty() ? 8 : 12);
    addItems(alert.items, *column);
    if (!alert.text.empty()) {
        column->addSpacing(alert.items.empty() ? 0 : 4);
        column->addWidget(wrapped(FontRole::body, Colour::text2, paragraphs(alert.text), this));
    }
    column->addStretch(1);
    column->addSpacing(20);
    addButtons(alert.buttons, *column);
}

void AlertDialog::addItems(const std::vector<AlertItem>& items, QVBoxLayout& column) {
    if (items.empty()) {
        return;
    }
    auto* list = new QWidget;
    auto* layout = new QVBoxLayout(list);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const AlertItem& item : items) {
        layout->addWidget(itemBlock(item));
    }
    if (items.size() <= itemsWithoutScrolling) {
        column.addWidget(list);
        return;
    }
    m_scroll = new ScrollArea(this);
    list->setAutoFillBackground(false);
    m_scroll->setWidget(list);
    const int block = Metrics::lineHeight(FontRole::rowTitle) + Metrics::lineHeight(FontRole::detail) + 8;
    // Half a block more, so that it is visible that the list goes on.
    m_scroll->setFixedHeight(static_cast<int>(itemsWithoutScrolling) * block + block / 2);
    column.addWidget(m_scroll);
    column.addSpacing(8);
}

void AlertDialog::addButtons(const std::vector<std::string>& titles, QVBoxLayout& column) {
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addStretch(1);
    // KDE and Windows put the default first, everybody else at the right.
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
    column.addLayout(row);
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
    const int side = Metrics::px(padding);
    const int plate = Metrics::px(plateSize);
    Paint::rounded(painter, QRectF(side, side, plate, plate), 12, Theme::colour(Colour::tint));
    const int symbol = Metrics::px(28);
    const double inset = side + (plate - symbol) / 2.0;
    Icons::draw(painter, QPointF(inset, inset), m_symbol, Theme::colour(Colour::accentText), symbol);
}

}  // namespace kestrune
