#include "ui/LoadingRows.h"

#include <QPainter>
#include <array>

#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"

namespace kestrune {

namespace {

struct Blocks {
    int title;
    int detail;
};

constexpr std::array<Blocks, 6> rows{{{148, 252}, {172, 168}, {120, 132}, {104, 120}, {186, 280}, {132, 116}}};
constexpr int rowHeight = 52;
constexpr int side = 16;
constexpr double detailOpacity = 0.6;

}  // namespace

LoadingRows::LoadingRows(QWidget* parent) : Painted(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(translated("Looking for locations"));
}

QSize LoadingRows::sizeHint() const {
    return {0, static_cast<int>(rows.size()) * Metrics::px(rowHeight) + 2};
}

void LoadingRows::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    Paint::card(painter, rect());
    const QColor block = Theme::colour(Colour::control);
    int top = 1;
    for (const Blocks& row : rows) {
        const int middle = top + Metrics::px(rowHeight) / 2;
        if (top > 1) {
            Paint::hairline(painter, side, top, width() - 2 * side);
        }
        Paint::rounded(painter, QRectF(side, middle - 8, 16, 16), 4, block);
        Paint::rounded(painter, QRectF(side + 28, middle - 10, 20, 20), 4, block);
        Paint::rounded(painter, QRectF(side + 60, middle - 14, row.title, 11), 4, block);
        Paint::rounded(painter, QRectF(width() - side - 56, middle - 5, 56, 11), 4, block);
        painter.setOpacity(detailOpacity);
        Paint::rounded(painter, QRectF(side + 60, middle + 4, row.detail, 9), 4, block);
        painter.setOpacity(1);
        top += Metrics::px(rowHeight);
    }
}

}  // namespace kestrune
