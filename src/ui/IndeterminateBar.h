#pragma once

#include "ui/Moving.h"

namespace kestrune {

/// A bar that tells that something runs, not how far it is. It moves only while it is on screen.
class IndeterminateBar final : public Moving {
    Q_OBJECT

public:
    explicit IndeterminateBar(QWidget* parent = nullptr);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ProgressBar; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrune
