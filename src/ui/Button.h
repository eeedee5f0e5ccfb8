#pragma once

#include <QAbstractButton>
#include <QString>

#include "ui/Metrics.h"
#include "ui/Theme.h"

namespace kestrune {

/// A push button of our look. Its label is plain text, "&" included; a screen reader reads the accessible name, which
/// is the label unless another one is set.
class Button : public QAbstractButton {
    Q_OBJECT

public:
    /// success is no more than a word that something is well, in the place of a button; it is not to be enabled.
    enum class Kind { primary, secondary, small, quiet, row, link, success };

    Button(Kind kind, const QString& label, QWidget* parent = nullptr);

    [[nodiscard]] const QString& label() const { return m_label; }

    void setLabel(const QString& label);
    void setKind(Kind kind);

    /// The symbol before the label; empty for none.
    void setSymbol(const QString& symbol);

    /// The symbol after the label; empty for none.
    void setTrailingSymbol(const QString& symbol);

    /// Takes at least this much room for the label, so that changing it moves nothing.
    void setSmallestWidth(int width);

    /// True while the pointer is over the row that a row button belongs to.
    void setRowHovered(bool hovered);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

    [[nodiscard]] virtual bool isOpen() const { return false; }

private:
    [[nodiscard]] QColor fill() const;
    [[nodiscard]] QColor ink() const;
    [[nodiscard]] FontRole fontRole() const;
    [[nodiscard]] int sidePadding() const;
    [[nodiscard]] int radius() const;

    /// From the label's end to the symbol after it, and from there to the button's edge.
    [[nodiscard]] int trailingGap() const;
    [[nodiscard]] int trailingSide() const;

    Kind m_kind;
    QString m_label;
    QString m_symbol;
    QString m_trailing;
    int m_smallestWidth = 0;
    bool m_rowHovered = false;
};

}  // namespace kestrune
