#include "ui/DropHighlight.h"

#include <QPainter>

#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int inset = 8;
constexpr int radius = 12;
constexpr double outline = 2;
constexpr double veil = 0.85;  // what lies below stays recognisable
constexpr int plateHeight = 36;
constexpr int platePadding = 16;

}  // namespace

DropHighlight::DropHighlight(const QString& sentence, QWidget* parent) : Painted(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setSpoken(sentence);
    hide();
}

void DropHighlight::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    QColor ground = Theme::colour(Colour::window);
    ground.setAlphaF(static_cast<float>(veil));
    painter.setPen(QPen(Theme::colour(Colour::accentText), outline));
    painter.setBrush(ground);
    painter.drawRoundedRect(frame.adjusted(outline / 2, outline / 2, -outline / 2, -outline / 2), radius, radius);
    QRect plate(0, 0, Metrics::width(FontRole::heading, accessibleName()) + 2 * Metrics::px(platePadding),
                Metrics::px(plateHeight));
    plate.moveCenter(rect().center());
    Paint::rounded(painter, plate, 8, Theme::colour(Colour::tint));
    Paint::text(painter, plate, FontRole::heading, Theme::colour(Colour::text1), accessibleName(), Qt::AlignHCenter);
}

}  // namespace kestrune
