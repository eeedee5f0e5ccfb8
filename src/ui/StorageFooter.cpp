#include "ui/StorageFooter.h"

#include <QHBoxLayout>
#include <QPainter>
#include <algorithm>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int barHeight = 64;
constexpr int symbolSize = 14;
constexpr int symbolGap = 5;
constexpr int smallestRoom = 160;

QString safetyLine() {
    return translated("Moves to Trash. No permanent deletion.");
}

}  // namespace

StorageFooter::StorageFooter(QWidget* parent)
    : Painted(parent),
      m_clean(new Button(Button::Kind::primary, translated("Review & move to Trash"), this)),
      m_stop(new Button(Button::Kind::secondary, translated("Stop after current item"), this)) {
    m_stop->hide();
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(0);
    layout->addStretch(1);
    layout->addWidget(m_clean);
    layout->addWidget(m_stop);
    setSideMargin(32);
    connect(m_clean, &Button::clicked, this, &StorageFooter::cleanWanted);
    connect(m_stop, &Button::clicked, this, &StorageFooter::stopWanted);
}

void StorageFooter::setSideMargin(int margin) {
    layout()->setContentsMargins(margin, 1, margin, 0);
    arrange();
    update();
}

int StorageFooter::safetyLeft() const {
    return layout()->contentsMargins().left() + Metrics::px(symbolSize) + symbolGap;
}

int StorageFooter::safetyRoom() const {
    const int button = std::max(m_clean->sizeHint().width(), m_stop->sizeHint().width());
    // Before the first layout there is no width yet.
    return std::max(Metrics::px(smallestRoom),
                    width() - layout()->contentsMargins().right() - button - 16 - safetyLeft());
}

int StorageFooter::safetyHeight() const {
    const auto lines = Paint::wrapped(FontRole::detail, safetyLine(), safetyRoom()).size();
    return static_cast<int>(lines) * Metrics::lineHeight(FontRole::detail);
}

void StorageFooter::arrange() {
    const int lines = Metrics::lineHeight(FontRole::heading) + 2 + safetyHeight();
    setFixedHeight(std::max(Metrics::px(barHeight), lines + 24));
}

void StorageFooter::resizeEvent(QResizeEvent* event) {
    Painted::resizeEvent(event);
    arrange();
}

QList<QWidget*> StorageFooter::focusStops() const {
    return {m_clean, m_stop};
}

void StorageFooter::setSelection(std::size_t count, const QString& size) {
    const QString text = translated("%1 selected · %2", {QString::number(count), size});
    if (text != m_count) {
        m_count = text;
        setSpoken(QStringLiteral("%1, %2").arg(m_count, safetyLine()));
        update();
    }
}

void StorageFooter::setAction(bool cleaning, bool enabled) {
    const bool hadFocus = m_clean->hasFocus() || m_stop->hasFocus();
    m_clean->setEnabled(enabled);
    m_clean->setVisible(!cleaning);
    m_stop->setVisible(cleaning);
    if (hadFocus && !m_clean->hasFocus() && !m_stop->hasFocus()) {
        (cleaning ? m_stop : m_clean)->setFocus(Qt::TabFocusReason);
    }
}

void StorageFooter::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    painter.fillRect(rect(), Theme::colour(Colour::card));
    Paint::hairline(painter, 0, 0, width());
    const int left = layout()->contentsMargins().left();
    const int heading = Metrics::lineHeight(FontRole::heading);
    const int detail = Metrics::lineHeight(FontRole::detail);
    const int top = 1 + (height() - heading - 2 - safetyHeight()) / 2;
    painter.setPen(Theme::colour(Colour::text1));
    Metrics::drawTabular(painter, left, Paint::baseline(FontRole::heading, top, heading), FontRole::heading, m_count);
    const int symbol = Metrics::px(symbolSize);
    const int lower = top + heading + 2;
    Icons::draw(painter, QPointF(left, lower + (detail - symbol) / 2.0), QStringLiteral("trash"),
                Theme::colour(Colour::text3), symbol);
    Paint::paragraph(painter, QRect(safetyLeft(), lower, safetyRoom(), safetyHeight()), FontRole::detail,
                     Theme::colour(Colour::text2), safetyLine());
}

}  // namespace kestrune
