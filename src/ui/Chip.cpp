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

struct Look {
    const char* symbol;  // null for none
    Colour ink;
    Colour ground;
};

Look lookOf(Chip::Kind kind) {
    switch (kind) {
        case Chip::Kind::warning:
            return {"exclamationmark.triangle", Colour::warning, Colour::warningTint};
        case Chip::Kind::success:
            return {"lock.shield", Colour::success, Colour::successTint};
        case Chip::Kind::muted:
            break;
    }
    return {nullptr, Colour::text2, Colour::control};
}

}  // namespace

int Chip::width() const {
    const int symbol = lookOf(kind).symbol != nullptr ? Metrics::px(symbolSize) + symbolGap - 1 : 0;
    return Metrics::width(FontRole::chip, text) + 2 * Metrics::px(side) + symbol;
}

int Chip::height() {
    return std::max(Metrics::px(18), Metrics::lineHeight(FontRole::chip) + 4);
}

void Chip::draw(QPainter& painter, int x, int top, int lineHeight) const {
    const Look look = lookOf(kind);
    const QRect box(x, top + (lineHeight - height()) / 2, width(), height());
    Paint::rounded(painter, box, height() / 2.0, Theme::colour(look.ground));
    int left = box.left() + Metrics::px(side);
    const QColor ink = Theme::colour(look.ink);
    if (look.symbol != nullptr) {
        --left;
        const int size = Metrics::px(symbolSize);
        Icons::draw(painter, QPointF(left, box.top() + (box.height() - size) / 2.0), QLatin1String(look.symbol), ink,
                    size);
        left += size + symbolGap;
    }
    Paint::text(painter, QRect(left, box.top(), box.right() - left, box.height()), FontRole::chip, ink, text);
}

}  // namespace kestrune
