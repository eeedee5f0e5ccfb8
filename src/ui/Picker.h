#pragma once

#include <QActionGroup>
#include <QMenu>
#include <QStringList>

#include "ui/Button.h"

namespace kestrune {

/// A button that shows one of several choices and opens a menu of them.
class Picker final : public Button {
    Q_OBJECT

public:
    /// spokenName says what is chosen; a screen reader reads it together with the choice.
    Picker(QString spokenName, QStringList choices, QWidget* parent = nullptr);

    [[nodiscard]] int choice() const { return m_choice; }

    void choose(int index);

Q_SIGNALS:
    void chosen(int index);

protected:
    void keyPressEvent(QKeyEvent* event) override;

    [[nodiscard]] bool isOpen() const override { return m_menu.isVisible(); }

private:
    void open();

    QString m_spokenName;
    QStringList m_choices;
    int m_choice = -1;
    QMenu m_menu;
    QActionGroup m_group{&m_menu};
};

}  // namespace kestrune
