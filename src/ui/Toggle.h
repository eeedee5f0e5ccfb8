#pragma once

#include <QCheckBox>
#include <QVariantAnimation>

namespace kestrune {

/// A switch with its label at the left.
class Toggle final : public QCheckBox {
    Q_OBJECT

public:
    explicit Toggle(const QString& label, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QRect track() const;

    QString m_label;
    QVariantAnimation m_knob;  // 0 off, 1 on
};

}  // namespace kestrune
