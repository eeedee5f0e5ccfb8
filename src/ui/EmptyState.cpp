#include "ui/EmptyState.h"

#include <QPainter>
#include <QVBoxLayout>

#include "ui/Button.h"
#include "ui/Icons.h"
#include "ui/TextLabel.h"

namespace kestrune {

namespace {

constexpr int symbolSize = 48;
constexpr int longestLine = 400;

}  // namespace

EmptyState::EmptyState(QWidget* parent)
    : QWidget(parent),
      m_title(new TextLabel(FontRole::emptyTitle, Colour::text1, this)),
      m_sentence(new TextLabel(FontRole::body, Colour::text2, this)),
      m_button(new Button(Button::Kind::secondary, QString(), this)) {
    m_title->setAlignment(Qt::AlignHCenter);
    m_title->setFit(TextLabel::Fit::wrap);
    m_sentence->setAlignment(Qt::AlignHCenter);
    m_sentence->setFit(TextLabel::Fit::wrap);
    m_sentence->setLongestLine(Metrics::px(longestLine));
    m_button->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    layout->addSpacing(Metrics::px(symbolSize) + 16);
    layout->addWidget(m_title);
    layout->addSpacing(6);
    layout->addWidget(m_sentence);
    layout->addSpacing(20);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    setSpaceAbove(72);
}

void EmptyState::setContent(const QString& symbol, const QString& title, const QString& sentence) {
    m_symbol = symbol;
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
    m_sentence->setText(sentence);
    m_sentence->setVisible(!sentence.isEmpty());
    update();
}

void EmptyState::setSpaceAbove(int height) {
    layout()->setContentsMargins(0, height, 0, 24);
}

void EmptyState::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const int size = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF((width() - size) / 2.0, layout()->contentsMargins().top()), m_symbol,
                Theme::colour(Colour::text3), size);
}

}  // namespace kestrune
