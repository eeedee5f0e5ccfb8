#pragma once

#include <QAccessible>
#include <QWidget>

namespace kestrune {

/// A piece drawn by hand that screen readers can read all the same: its accessible name is the widget's
/// accessibleName, its role and value come from here.
class Painted : public QWidget {
    Q_OBJECT

public:
    explicit Painted(QWidget* parent = nullptr);

    [[nodiscard]] virtual QAccessible::Role accessibleRole() const { return QAccessible::StaticText; }

    [[nodiscard]] virtual QString accessibleValue() const { return {}; }

    /// What a screen reader presses; nothing for a piece that only shows something.
    virtual void activate() {}

    [[nodiscard]] virtual bool isActivatable() const { return false; }

protected:
    /// Sets the accessible name and tells screen readers when it is a new one.
    void setSpoken(const QString& sentence);
};

}  // namespace kestrune
