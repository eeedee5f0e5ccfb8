#include "ui/SettingRow.h"

#include <algorithm>

#include "ui/Mirror.h"
#include "ui/TextLabel.h"
#include "ui/Toggle.h"

namespace kestrune {

namespace {

constexpr int smallestContent = 20;  // the switch
constexpr int aboveAndBelow = 23;
constexpr int noteGap = 2;
constexpr int noteLine = 17;

}  // namespace

SettingRow::SettingRow(const QString& label, QWidget* parent) : QWidget(parent), m_toggle(new Toggle(label, this)) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    m_toggle->setStretched();
    connect(m_toggle, &Toggle::asked, this, &SettingRow::asked);
}

void SettingRow::setNote(const QString& note) {
    if (m_note == nullptr) {
        m_note = new TextLabel(FontRole::detail, Colour::text3, this);
        m_note->setFit(TextLabel::Fit::wrap);
        m_note->setLineHeight(Metrics::px(noteLine));
        m_note->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    m_note->setText(note);
    m_toggle->setAccessibleDescription(note);
    place();
    updateGeometry();
}

void SettingRow::setOn(bool on) {
    m_toggle->setOn(on);
}

int SettingRow::noteHeight(int width) const {
    return m_note == nullptr ? 0 : noteGap + m_note->heightForWidth(m_toggle->labelWidth(width));
}

int SettingRow::heightForWidth(int width) const {
    const int content = m_toggle->labelHeight(width) + noteHeight(width);
    return std::max(Metrics::px(smallestContent), content) + aboveAndBelow;
}

QSize SettingRow::sizeHint() const {
    const int width = m_toggle->sizeHint().width();
    return {width, heightForWidth(width)};
}

QSize SettingRow::minimumSizeHint() const {
    return {Metrics::px(120), Metrics::px(smallestContent) + aboveAndBelow};
}

void SettingRow::place() {
    const int note = noteHeight(width());
    m_toggle->setSpaceBelow(note);
    m_toggle->setGeometry(rect());
    if (m_note != nullptr) {
        const int label = m_toggle->labelHeight(width());
        const int top = (height() - label - note) / 2 + label + noteGap;
        m_note->setGeometry(Mirror::shown(*this, QRect(0, top, m_toggle->labelWidth(width()), note - noteGap)));
    }
}

void SettingRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

}  // namespace kestrune
