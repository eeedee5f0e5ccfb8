#include "ui/Painted.h"

#include <QAccessibleWidget>

namespace kestrune {

namespace {

class AccessiblePainted final : public QAccessibleWidget {
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

private:
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

}  // namespace kestrune
