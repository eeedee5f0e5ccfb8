#pragma once

#include "ui/LiveRow.h"
#include "ui/Metrics.h"
#include "ui/Theme.h"

namespace kestrune {

/// A running process: its picture, its name, whether it is protected, its identifier and its memory.
class ProcessRow : public LiveRow {
    Q_OBJECT

public:
    explicit ProcessRow(QWidget* parent = nullptr);

    /// Height of every such row that is width wide.
    [[nodiscard]] static int heightAt(int width);

    [[nodiscard]] int heightFor(int width) const override;

protected:
    void stateChanged() override;
    void paintContent(QPainter& painter) override;
    [[nodiscard]] QString toolTipAt(const QPoint& at) const override;

    /// The line under the name.
    [[nodiscard]] virtual QString detail() const;

    /// Right edge of the memory figure.
    [[nodiscard]] virtual int memoryRight() const;

    /// Height of the part that holds name and figures, from the top.
    [[nodiscard]] virtual int mainHeight() const;

    /// Figures that are read after the memory.
    [[nodiscard]] virtual QStringList furtherFigures() const { return {}; }

    [[nodiscard]] static int memoryWidth();
    [[nodiscard]] static int nameLeft();

    /// A figure with its right edge at right, in the middle of the main part.
    void paintFigure(QPainter& painter, int right, FontRole role, Colour colour, const QString& text) const;

private:
    [[nodiscard]] int nameRight() const;
    void paintName(QPainter& painter) const;
};

}  // namespace kestrune
