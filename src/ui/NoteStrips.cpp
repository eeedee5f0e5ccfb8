#include "ui/NoteStrips.h"

#include <QVBoxLayout>
#include <memory>

#include "ui/Strip.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

constexpr int gap = 8;
constexpr int spaceBelow = 16;

}  // namespace

NoteStrips::NoteStrips(QWidget* parent) : QWidget(parent), m_layout(new QVBoxLayout(this)) {
    m_layout->setContentsMargins(0, 0, 0, spaceBelow);
    m_layout->setSpacing(gap);
    hide();
}

void NoteStrips::setNotes(const std::vector<std::string>& notes) {
    while (m_layout->count() > static_cast<int>(notes.size())) {
        const std::unique_ptr<QLayoutItem> item(m_layout->takeAt(m_layout->count() - 1));
        item->widget()->hide();
        item->widget()->deleteLater();
    }
    while (m_layout->count() < static_cast<int>(notes.size())) {
        auto* strip = new Strip(this);
        m_layout->addWidget(strip);
        strip->show();
    }
    for (std::size_t index = 0; index < notes.size(); ++index) {
        auto* strip = static_cast<Strip*>(m_layout->itemAt(static_cast<int>(index))->widget());
        strip->setSentence(Tone::warning, shown(notes[index]));
    }
    setVisible(!notes.empty());
}

}  // namespace kestrune
