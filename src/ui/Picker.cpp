#include "ui/Picker.h"

#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "ui/Mirror.h"
#include "ui/UiText.h"

namespace kestrune {

Picker::Picker(QString spokenName, QStringList choices, QWidget* parent)
    : Button(Kind::secondary, QString(), parent), m_spokenName(std::move(spokenName)), m_choices(std::move(choices)) {
    setTrailingSymbol(QStringLiteral("chevron.down"));
    for (int index = 0; index < m_choices.size(); ++index) {
        QAction* action = m_menu.addAction(withoutMnemonic(m_choices.at(index)));
        action->setCheckable(true);
        m_group.addAction(action);
        connect(action, &QAction::triggered, this, [this, index] { choose(index); });
    }
    connect(this, &Button::clicked, this, &Picker::open);
    connect(&m_menu, &QMenu::aboutToHide, this, [this] { update(); });
    choose(0);
}

void Picker::choose(int index) {
    if (index == m_choice || index < 0 || index >= m_choices.size()) {
        return;
    }
    m_choice = index;
    m_menu.actions().at(index)->setChecked(true);
    setLabel(m_choices.at(index));
    setAccessibleName(QStringLiteral("%1: %2").arg(m_spokenName, m_choices.at(index)));
    Q_EMIT chosen(index);
}

void Picker::open() {
    m_menu.setMinimumWidth(width());
    m_menu.setActiveAction(m_menu.actions().at(m_choice));
    Mirror::popUpBelow(m_menu, *this);
    update();
}

void Picker::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Down ? 1 : event->key() == Qt::Key_Up ? -1 : 0;
    if (step != 0) {
        choose(std::clamp(m_choice + step, 0, static_cast<int>(m_choices.size()) - 1));
        return;
    }
    Button::keyPressEvent(event);
}

}  // namespace kestrune
