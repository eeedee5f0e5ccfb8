#pragma once

#include "ui/ListRow.h"

namespace kestrune {

/// A row that as a whole leads to a page.
class NavigationRow final : public ListRow {
    Q_OBJECT

public:
    NavigationRow(QString symbol, QString title, QString detail, QWidget* parent = nullptr);

    /// Makes it a row of one line, beside panels, that leads out of the program: to the user's browser.
    void setLeadsOutside();

    [[nodiscard]] int heightFor(int width) const override;
    [[nodiscard]] QList<QWidget*> focusStops() const override;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Button; }

    [[nodiscard]] bool isActivatable() const override { return true; }

    void activate() override;

Q_SIGNALS:
    void activated();

protected:
    void paintRow(QPainter& painter) override;
    void clicked() override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int detailHeight() const;

    QString m_symbol;
    QString m_title;
    QString m_detail;
    bool m_outside = false;
    bool m_ring = false;
};

}  // namespace kestrune
