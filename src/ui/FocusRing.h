#pragma once

#include <QFocusEvent>
#include <QPointer>
#include <QWidget>

namespace kestrune {

/// The ring around the control that has the keyboard focus. It lies over its neighbours, outside of the control, and
/// moves with it. One for each scrolling area or window; made when first needed.
class FocusRing final : public QWidget {
    Q_OBJECT

public:
    /// True for a focus that came by keyboard, so that a ring belongs there.
    [[nodiscard]] static bool isDue(Qt::FocusReason reason);

    /// Shows the ring around the part of control given by box; radius is the control's own.
    static void follow(QWidget& control, const QRect& box, int radius);
    static void leave(const QWidget& control);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit FocusRing(QWidget* ground);

    void place();
    void watchAncestors(bool on);

    QPointer<QWidget> m_control;
    QRect m_box;
    int m_radius = 0;
};

}  // namespace kestrune
