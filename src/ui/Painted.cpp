#include "ui/Painted.h"

#include <QAccessibleWidget>

namespace kestrune {

namespace {

class AccessiblePainted final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessiblePainted(Painted* widget) : QAccessibleWidget(widget, widget->accessibleRole()) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? painted().accessibleValue() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (painted().isActivatable() && painted().isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction() && painted().isActivatable()) {
            painted().activate();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) {
            return painted().accessibleAmount() ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
        }
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QVariant currentValue() const override { return amount().value; }

    [[nodiscard]] QVariant maximumValue() const override { return amount().most; }

    [[nodiscard]] QVariant minimumValue() const override { return 0.0; }

    [[nodiscard]] QVariant minimumStepSize() const override { return 0.0; }

    void setCurrentValue(const QVariant& /*value*/) override {}

private:
    [[nodiscard]] Painted::Amount amount() const { return painted().accessibleAmount().value_or(Painted::Amount()); }

    [[nodiscard]] Painted& painted() const { return *static_cast<Painted*>(widget()); }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("kestrune::Painted")) {
        return new AccessiblePainted(static_cast<Painted*>(object));
    }
    return nullptr;
}

}  // namespace

Painted::Painted(QWidget* parent) : QWidget(parent) {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

void Painted::setSpoken(const QString& sentence) {
    if (accessibleName() != sentence) {
        setAccessibleName(sentence);
    }
}

void Painted::tellAmount() {
    const std::optional<Amount> amount = accessibleAmount();
    QAccessibleValueChangeEvent event(this, amount ? QVariant(amount->value) : QVariant(accessibleValue()));
    QAccessible::updateAccessibility(&event);
}

}  // namespace kestrune
