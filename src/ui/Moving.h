#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>

#include "base/Published.h"
#include "ui/Painted.h"

namespace kestrune {

/// A painted piece that moves while it is on screen, and stands still where less movement is wanted.
class Moving : public Painted {
    Q_OBJECT

public:
    explicit Moving(QWidget* parent = nullptr);

protected:
    /// Paints what moved, or stopped moving, since the frame before.
    virtual void nextFrame() { update(); }

    /// How far the present round of so many milliseconds is, 0 to 1.
    [[nodiscard]] double phase(int milliseconds) const;

    /// A segment that passes through bar again and again: something runs, and how far it is nobody knows.
    void paintPassing(QPainter& painter, const QRectF& bar, const QColor& ground) const;

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    /// Moves or stands still, as is wanted now.
    void follow();

    QBasicTimer m_frames;
    QElapsedTimer m_time;
    Subscription m_motionChanged;
};

}  // namespace kestrune
