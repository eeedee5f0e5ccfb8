#pragma once

#include <QLabel>

#include "ui/Metrics.h"
#include "ui/Theme.h"

namespace kestrune {

/// Plain text in one of the type roles: on one line, elided with the full text as its tooltip, or wrapped.
class TextLabel final : public QLabel {
    Q_OBJECT

public:
    enum class Fit { natural, elideEnd, elideMiddle, wrap };

    TextLabel(FontRole role, Colour colour, QWidget* parent = nullptr);

    /// Sentences of body text, wrapped where lines would become too long to read.
    [[nodiscard]] static TextLabel* paragraph(Colour colour, const QString& text, QWidget* parent);

    void setFit(Fit fit);
    void setColour(Colour colour);

    /// Wrapped text is never wider than this.
    void setLongestLine(int width);

    /// Lines further apart than the role's own.
    void setLineHeight(int height);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int line() const;
    [[nodiscard]] const QStringList& lines(int width) const;
    void updateToolTip();

    FontRole m_role;
    Colour m_colour;
    Fit m_fit = Fit::natural;
    int m_longestLine = 0;
    int m_lineHeight = 0;

    /// What wrapping a text anew each time would cost: layouts ask often, and a text may be very long.
    struct Wrapped {
        QString text;
        QFont font;
        int width = -1;
        QStringList lines;
    };

    mutable Wrapped m_wrapped;
};

}  // namespace kestrune
