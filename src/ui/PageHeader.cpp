#include "ui/PageHeader.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/Button.h"
#include "ui/TextLabel.h"

namespace kestrune {

namespace {

constexpr int above = 24;
constexpr int below = 20;

}  // namespace

PageHeader::PageHeader(const QString& title, const QString& subtitle, QWidget* parent)
    : QWidget(parent), m_layout(new QHBoxLayout(this)), m_buttons(new QHBoxLayout) {
    auto* titleLabel = new TextLabel(FontRole::pageTitle, Colour::text1, this);
    titleLabel->setText(title);
    titleLabel->setFit(TextLabel::Fit::elideEnd);
    auto* subtitleLabel = new TextLabel(FontRole::body, Colour::text2, this);
    subtitleLabel->setText(subtitle);
    subtitleLabel->setFit(TextLabel::Fit::wrap);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(titleLabel);
    words->addWidget(subtitleLabel);
    m_buttons->setSpacing(8);
    m_buttons->setContentsMargins(0, 6, 0, 0);
    m_layout->setSpacing(24);
    m_layout->addLayout(words, 1);
    m_layout->addLayout(m_buttons);
    m_layout->setAlignment(m_buttons, Qt::AlignTop);
    setSideMargin(32);
}

Button* PageHeader::addButton(const QString& label, const QString& symbol) {
    auto* button = new Button(Button::Kind::secondary, label, this);
    button->setSymbol(symbol);
    m_buttons->addWidget(button);
    return button;
}

void PageHeader::setSideMargin(int margin) {
    m_layout->setContentsMargins(margin, above, margin, below);
}

}  // namespace kestrune
