#pragma once

#include <QAccessible>
#include <QWidget>
#include <optional>

namespace kestrune {

/// A piece drawn by hand that screen readers can read all the same: its accessible name is the widget's
/// accessibleName, its role and value come from here.
class Painted : public QWidget {
    Q_OBJECT

public:
    explicit Painted(QWidget* parent = nullptr);

    [[nodiscard]] virtual QAccessible::Role accessibleRole() const { return QAccessible::StaticText; }

    [[nodiscard]] virtual QString accessibleValue() const { return {}; }

    /// How much of how much; screen readers speak it as a share.
    struct Amount {
        double value = 0;
        double most = 1;
    };

    /// Nothing for a piece that shows no amount, or one that is not known.
    [[nodiscard]] virtual std::optional<Amount> accessibleAmount() const { return std::nullopt; }

    /// What a screen reader presses; nothing for a piece that only shows something.
    virtual void activate() {}

    [[nodiscard]] virtual bool isActivatable() const { return false; }

protected:
    /// Sets the accessible name and tells screen readers when it is a new one.
    void setSpoken(const QString& sentence);

    /// Tells screen readers that the value is another one.
    void tellAmount();
};

}  // namespace kestrune
