#include "ui/IndeterminateBar.h"

#include <QPainter>

#include "ui/Metrics.h"
#include "ui/Mirror.h"
#include "ui/Theme.h"

namespace kestrune {

namespace {

constexpr int length = 200;
constexpr int thickness = 4;

}  // namespace

IndeterminateBar::IndeterminateBar(QWidget* parent) : Moving(parent) {
    setFixedSize(Metrics::px(length), Metrics::px(thickness));
}

void IndeterminateBar::paintEvent(QPaintEvent* /*event*/) {
    MirrorPainter painter(this);
    paintPassing(painter, rect(), Theme::colour(Colour::track));
}

}  // namespace kestrune
