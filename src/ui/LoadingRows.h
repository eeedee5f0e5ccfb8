#pragma once

#include "ui/Painted.h"

namespace kestrune {

/// Flat blocks in the shape of rows, for a list that has nothing older to show while it is being made.
class LoadingRows final : public Painted {
    Q_OBJECT

public:
    explicit LoadingRows(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrune
