#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>

#include "ui/Painted.h"

namespace kestrune {

/// A bar that tells that something runs, not how far it is. It moves only while it is on screen.
class IndeterminateBar final : public Painted {
    Q_OBJECT

public:
    explicit IndeterminateBar(QWidget* parent = nullptr);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ProgressBar; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer m_frames;
    QElapsedTimer m_time;
};

}  // namespace kestrune
