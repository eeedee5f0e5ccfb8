#pragma once

#include <QWidget>
#include <vector>

namespace kestrune {

/// Controls one after the other, on further lines where they do not fit on one.
class FlowRow final : public QWidget {
    Q_OBJECT

public:
    /// gap is between neighbours, aboveAndBelow outside of the lines.
    FlowRow(int gap, int aboveAndBelow, QWidget* parent = nullptr);

    void add(QWidget* control);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Where each control lies in a row of this width.
    [[nodiscard]] std::vector<QRect> places(int width) const;

    const int m_gap;
    const int m_aboveAndBelow;
    std::vector<QWidget*> m_controls;
};

}  // namespace kestrune
