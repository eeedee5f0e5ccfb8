#include "ui/Chip.h"

#include <QPainter>
#include <algorithm>

#include "ui/Icons.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int side = 7;
constexpr int symbolSize = 12;
constexpr int symbolGap = 4;

}  // namespace

int Chip::width() const {
    const int symbol = kind == Kind::warning ? Metrics::px(symbolSize) + symbolGap - 1 : 0;
    return Metrics::width(FontRole::chip, text) + 2 * Metrics::px(side) + symbol;
}

int Chip::height() {
    return std::max(Metrics::px(18), Metrics::lineHeight(FontRole::chip) + 4);
}

void Chip::draw(QPainter& painter, int x, int top, int lineHeight) const {
    const bool warns = kind == Kind::warning;
    const QRect box(x, top + (lineHeight - height()) / 2, width(), height());
    Paint::rounded(painter, box, height() / 2.0, Theme::colour(warns ? Colour::warningTint : Colour::control));
    int left = box.left() + Metrics::px(side);
    const QColor ink = Theme::colour(warns ? Colour::warning : Colour::text2);
    if (warns) {
        --left;
        const int size = Metrics::px(symbolSize);
        Icons::draw(painter, QPointF(left, box.top() + (box.height() - size) / 2.0),
                    QStringLiteral("exclamationmark.triangle"), ink, size);
        left += size + symbolGap;
    }
    Paint::text(painter, QRect(left, box.top(), box.right() - left, box.height()), FontRole::chip, ink, text);
}

}  // namespace kestrune
