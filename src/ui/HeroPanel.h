#pragma once

#include "ui/Painted.h"

namespace kestrune {

class Button;

/// The Overview's panel with the one large figure and the way to the storage page.
class HeroPanel final : public Painted {
    Q_OBJECT

public:
    explicit HeroPanel(QWidget* parent = nullptr);

    /// The figure with its unit.
    void setFigure(const QString& value, const QString& unit);

    /// A word or a sentence in the place of the figure.
    void setSentence(const QString& sentence);

Q_SIGNALS:
    void reviewWanted();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setContent(const QString& value, const QString& unit, const QString& sentence);
    [[nodiscard]] int figureWidth() const;
    [[nodiscard]] int textWidth() const;
    [[nodiscard]] int wantedHeight() const;
    void arrange();

    QString m_value;
    QString m_unit;
    QString m_sentence;
    Button* m_review;
};

}  // namespace kestrune
