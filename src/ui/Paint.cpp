#include "ui/Paint.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "ui/Mirror.h"

namespace kestrune::Paint {

namespace {

constexpr double shortestBar = 2;
constexpr qsizetype charactersPerPixel = 4;  // no text has as many

// line with a mark before it where it would be taken for a text that runs the other way than the whole paragraph.
QString runningLike(const QString& paragraph, const QString& line) {
    constexpr char16_t leftToRight = 0x200E;
    constexpr char16_t rightToLeft = 0x200F;
    const bool isRightToLeft = paragraph.isRightToLeft();
    return line.isRightToLeft() == isRightToLeft ? line : QChar(isRightToLeft ? rightToLeft : leftToRight) + line;
}

}  // namespace

int baseline(FontRole role, int top, int height) {
    const QFontMetrics metrics(Metrics::font(role));
    return top + (height - metrics.height()) / 2 + metrics.ascent();
}

void text(QPainter& painter, const QRect& box, FontRole role, const QColor& colour, const QString& text,
          Qt::Alignment alignment, Qt::TextElideMode elide) {
    const QFontMetrics metrics(Metrics::font(role));
    // Of a very long text only the start is measured: each time it is drawn the rest would cost for nothing.
    const qsizetype most = charactersPerPixel * (std::max(0, box.width()) + 1);
    const bool endless = elide == Qt::ElideRight && text.size() > most;
    const QString fitting = metrics.elidedText(endless ? text.left(most) : text, elide, box.width() + 1);
    const bool isMirrored = Mirror::isOn(painter);
    const Mirror::Turn upright(painter, QRectF(box), isMirrored);
    double x = box.left();
    if (alignment & (isMirrored ? Qt::AlignLeft : Qt::AlignRight)) {
        x = box.right() + 1 - metrics.horizontalAdvance(fitting);
    } else if (alignment & Qt::AlignHCenter) {
        x = box.left() + std::floor((box.width() - metrics.horizontalAdvance(fitting)) / 2.0);
    }
    painter.setFont(Metrics::font(role));
    painter.setPen(colour);
    // A text runs, and ends in its ellipsis, the way it is written itself; a path always as paths do.
    painter.setLayoutDirection(elide == Qt::ElideMiddle ? Qt::LeftToRight : Qt::LayoutDirectionAuto);
    painter.drawText(QPointF(x, baseline(role, box.top(), box.height())), fitting);
}

void word(QPainter& painter, double x, double y, FontRole role, const QString& text) {
    const QRectF box(x, y, Metrics::width(role, text), 0);
    const Mirror::Turn upright(painter, box, Mirror::isOn(painter));
    painter.setFont(Metrics::font(role));
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(box.topLeft(), text);
}

QStringList wrapped(FontRole role, const QString& text, int width) {
    QStringList result;
    const QStringList paragraphs = text.split(QLatin1Char('\n'));
    for (const QString& one : paragraphs) {
        QTextLayout layout(one, Metrics::font(role));
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine next = layout.createLine(); next.isValid(); next = layout.createLine()) {
            next.setLineWidth(std::max(1, width));
            result.append(runningLike(one, one.mid(next.textStart(), next.textLength()).trimmed()));
        }
        layout.endLayout();
        if (one.isEmpty()) {
            result.append(QString());
        }
    }
    return result;
}

void paragraph(QPainter& painter, const QRect& box, FontRole role, const QColor& colour, const QString& text) {
    const int line = Metrics::lineHeight(role);
    int top = box.top();
    const QStringList all = wrapped(role, text, box.width());
    for (const QString& one : all) {
        Paint::text(painter, QRect(box.left(), top, box.width(), line), role, colour, one);
        top += line;
    }
}

void rounded(QPainter& painter, const QRectF& box, double radius, const QColor& fill) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(box, radius, radius);
}

void card(QPainter& painter, const QRect& box) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::colour(Colour::separator), 1));
    painter.setBrush(Theme::colour(Colour::card));
    const double radius = Metrics::px(12) - 0.5;
    painter.drawRoundedRect(QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

void hairline(QPainter& painter, int x, int y, int width) {
    painter.fillRect(QRect(x, y, width, 1), Theme::colour(Colour::separator));
}

void innerRing(QPainter& painter, const QRect& box, double radius) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::colour(Colour::accentText), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(box).adjusted(1, 1, -1, -1), radius - 1, radius - 1);
}

QColor darkened(const QColor& colour, double share) {
    return QColor::fromRgbF(colour.redF() * static_cast<float>(1 - share),
                            colour.greenF() * static_cast<float>(1 - share),
                            colour.blueF() * static_cast<float>(1 - share));
}

void bar(QPainter& painter, const QRectF& box, double share, const QColor& fill, const QColor& track) {
    const double radius = box.height() / 2;
    rounded(painter, box, radius, track);
    if (share > 0) {
        QPainterPath clip;
        clip.addRoundedRect(box, radius, radius);
        painter.save();
        painter.setClipPath(clip, Qt::IntersectClip);
        const double width = std::clamp(box.width() * share, shortestBar, box.width());
        rounded(painter, QRectF(box.topLeft(), QSizeF(width, box.height())), width < box.height() ? 0 : radius, fill);
        painter.restore();
    }
}

}  // namespace kestrune::Paint
