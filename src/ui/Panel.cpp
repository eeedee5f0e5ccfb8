#include "ui/Panel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/TextLabel.h"

namespace kestrune {

namespace {

constexpr int edge = 1;  // of the card
constexpr int side = 16;
constexpr int topPadding = 20;
constexpr int symbolSize = 22;
constexpr int symbolGap = 14;
constexpr int actionGap = 24;
constexpr int textGap = 4;
constexpr int aboveRows = 16;
constexpr int belowRows = 4;
constexpr int hairline = 1;
constexpr int longestLine = 600;

}  // namespace

Panel::Panel(QString symbol, const QString& title, QWidget* parent)
    : Painted(parent),
      m_symbol(std::move(symbol)),
      m_outer(new QVBoxLayout(this)),
      m_head(new QHBoxLayout),
      m_words(new QVBoxLayout),
      m_title(new TextLabel(FontRole::heading, Colour::text1, this)) {
    setAccessibleName(title);
    m_title->setText(title);
    m_title->setFit(TextLabel::Fit::wrap);
    m_words->setSpacing(0);
    m_words->addWidget(m_title);
    m_words->addStretch(1);
    m_head->setSpacing(actionGap);
    m_head->addLayout(m_words, 1);
    m_outer->setSpacing(0);
    m_outer->addLayout(m_head);
    setBottom(topPadding);
}

void Panel::setBottom(int padding) {
    const int before = edge + side + Metrics::px(symbolSize) + symbolGap;
    m_outer->setContentsMargins(Mirror::margins(*this, before, edge + topPadding, side + edge, padding + edge));
}

TextLabel* Panel::addText(const QString& text) {
    TextLabel* label = TextLabel::paragraph(Colour::text2, text, this);
    label->setLongestLine(Metrics::px(longestLine));
    addPiece(label, textGap);
    return label;
}

void Panel::addPiece(QWidget* widget, int above) {
    const int end = m_words->count() - 1;  // before the stretch
    const bool keepsItsWidth = widget->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
    m_words->insertSpacing(end, above);
    m_words->insertWidget(end + 1, widget, 0, keepsItsWidth ? Qt::AlignLeft : Qt::Alignment());
}

void Panel::setAction(QWidget* button) {
    m_head->addWidget(button, 0, Qt::AlignTop);
}

void Panel::addRow(QWidget* row) {
    m_outer->addSpacing(m_rows.empty() ? aboveRows + hairline : hairline);
    m_outer->addWidget(row);
    m_rows.push_back(row);
    setBottom(belowRows);
}

void Panel::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    Paint::card(painter, rect());
    const int symbol = Metrics::px(symbolSize);
    const int line = Metrics::lineHeight(FontRole::heading);
    Icons::draw(painter, QPointF(edge + side, m_title->y() + (line - symbol) / 2.0), m_symbol,
                Theme::colour(Colour::accentText), symbol);
    for (const QWidget* row : m_rows) {
        const QRect place = Mirror::shown(*this, row->geometry());
        Paint::hairline(painter, place.left(), place.top() - hairline, place.width());
    }
}

}  // namespace kestrune
