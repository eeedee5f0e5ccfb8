#pragma once

#include "ui/Painted.h"

namespace kestrune {

/// Lies over a place that would take what is being dragged, and says what happens there.
class DropHighlight final : public Painted {
    Q_OBJECT

public:
    DropHighlight(const QString& sentence, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrune
