#pragma once

#include <QCheckBox>

namespace kestrune {

/// The check mark of a row. It has no label of its own; its accessible name says what it selects.
class CheckBox final : public QCheckBox {
    Q_OBJECT

public:
    explicit CheckBox(const QString& spokenName, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QRect box() const;
};

}  // namespace kestrune
