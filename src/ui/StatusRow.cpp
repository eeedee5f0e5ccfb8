#include "ui/StatusRow.h"

#include <QVBoxLayout>

#include "ui/TextLabel.h"

namespace kestrune {

namespace {

constexpr int aboveAndBelow = 11;
constexpr int noteGap = 2;
constexpr int noteLine = 17;

}  // namespace

StatusRow::StatusRow(QWidget* parent)
    : QWidget(parent),
      m_sentence(new TextLabel(FontRole::body, Colour::text1, this)),
      m_note(new TextLabel(FontRole::detail, Colour::text3, this)) {
    m_sentence->setFit(TextLabel::Fit::wrap);
    m_note->setFit(TextLabel::Fit::wrap);
    m_note->setLineHeight(Metrics::px(noteLine));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, aboveAndBelow, 0, aboveAndBelow);
    layout->setSpacing(noteGap);
    layout->addWidget(m_sentence);
    layout->addWidget(m_note);
}

void StatusRow::setTexts(const QString& sentence, const QString& note) {
    m_sentence->setText(sentence);
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
}

}  // namespace kestrune
