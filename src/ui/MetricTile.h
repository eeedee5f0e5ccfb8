#pragma once

#include <variant>

#include "ui/Painted.h"
#include "ui/Sparkline.h"

namespace kestrune {

/// A filled share of a whole, 0 to 1.
struct TileBar {
    double share = 0;

    bool operator==(const TileBar&) const = default;
};

/// How many of three steps are lit; 0 none.
struct TileLevel {
    int steps = 0;

    bool operator==(const TileLevel&) const = default;
};

struct TileContent {
    QString symbol;
    QString title;
    QString value;
    QString unit;  ///< drawn small after the value; empty for none
    QString detail;
    bool isKnown = true;  ///< false: value is a word that stands for a missing figure
    std::variant<std::monostate, Sparkline, TileBar, TileLevel> drawing;

    bool operator==(const TileContent&) const = default;
};

/// One figure of the machine: its title, its value, a line about it and a small drawing of it.
class MetricTile final : public Painted {
    Q_OBJECT

public:
    explicit MetricTile(QWidget* parent = nullptr);

    void setContent(const TileContent& content);

    [[nodiscard]] const TileContent& content() const { return m_content; }

    void setNarrow(bool narrow);

    [[nodiscard]] QString accessibleValue() const override;
    [[nodiscard]] static int fixedHeight();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintValue(QPainter& painter, const QRect& line) const;
    void paintDrawing(QPainter& painter, const QRect& line, int valueWidth) const;
    [[nodiscard]] int valueWidth() const;

    TileContent m_content;
    bool m_narrow = false;
};

}  // namespace kestrune
