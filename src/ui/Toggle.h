#pragma once

#include <QCheckBox>
#include <QVariantAnimation>

namespace kestrune {

/// A switch with its label at the left. Where the store decides whether it is on, setOn() shows that and asked() tells
/// what the user wants.
class Toggle final : public QCheckBox {
    Q_OBJECT

public:
    explicit Toggle(const QString& label, QWidget* parent = nullptr);

    /// Takes all the width there is, and breaks its label into lines where that is too little.
    void setStretched();

    /// Room kept under the label, for a note.
    void setSpaceBelow(int height);

    void setOn(bool on);

    /// Where the label ends, for a note under it.
    [[nodiscard]] int labelWidth(int width) const;
    [[nodiscard]] int labelHeight(int width) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user switched it, or a screen reader did.
    void asked(bool on);

protected:
    [[nodiscard]] bool hitButton(const QPoint& place) const override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QRect track() const;
    void moveKnob(bool on);

    QString m_label;
    bool m_stretched = false;
    bool m_following = false;  // setOn() is at work
    int m_spaceBelow = 0;
    QVariantAnimation m_knob;  // 0 off, 1 on
};

}  // namespace kestrune
