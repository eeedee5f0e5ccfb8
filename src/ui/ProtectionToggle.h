#pragma once

#include <QCheckBox>

namespace kestrune {

/// The shield of a row: outlined while off, with a lock while on.
class ProtectionToggle final : public QCheckBox {
    Q_OBJECT

public:
    explicit ProtectionToggle(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

}  // namespace kestrune
