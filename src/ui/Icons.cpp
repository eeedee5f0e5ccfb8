#include "ui/Icons.h"

#include <QCache>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>

#include "ui/Mirror.h"

namespace kestrune::Icons {

namespace {

constexpr int thinLineFrom = 40;
constexpr int cachedPixels = 300'000;

QByteArray source(const QString& name, const QColor& colour, int size) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray text = file.readAll();
    text.replace("currentColor", colour.name(QColor::HexRgb).toLatin1());
    if (size >= thinLineFrom) {
        text.replace("stroke-width=\"1.75\"", "stroke-width=\"1\"");
    }
    return text;
}

QPixmap rendered(const QString& name, const QColor& colour, int size, double ratio) {
    const int side = static_cast<int>(std::ceil(size * ratio));
    QPixmap result(side, side);
    result.fill(Qt::transparent);
    QSvgRenderer renderer(source(name, colour, size));
    if (renderer.isValid()) {
        QPainter painter(&result);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(0, 0, size * ratio, size * ratio));
    }
    result.setDevicePixelRatio(ratio);
    return result;
}

// What tells where something lies, or comes from, in the direction of reading.
bool pointsSideways(const QString& name) {
    return name == QLatin1String("chevron.left") || name == QLatin1String("chevron.right") ||
           name == QLatin1String("arrow.up.right") || name == QLatin1String("arrow.uturn.backward");
}

QPixmap turned(const QPixmap& symbol) {
    return symbol.transformed(QTransform::fromScale(-1, 1));
}

}  // namespace

QPixmap pixmap(const QString& name, const QColor& colour, int size, double ratio) {
    static QCache<QString, QPixmap> cache(cachedPixels);
    const QString key = QStringLiteral("%1/%2/%3/%4").arg(name, colour.name()).arg(size).arg(ratio);
    if (const QPixmap* known = cache.object(key)) {
        return *known;
    }
    QPixmap made = rendered(name, colour, size, ratio);
    cache.insert(key, new QPixmap(made), made.width() * made.height());
    return made;
}

void draw(QPainter& painter, QPointF place, const QString& name, const QColor& colour, int size) {
    const double ratio = painter.device()->devicePixelRatioF();
    const QPointF whole(std::round(place.x() * ratio) / ratio, std::round(place.y() * ratio) / ratio);
    const bool isMirrored = Mirror::isOn(painter);
    const Mirror::Turn upright(painter, QRectF(whole, QSizeF(size, size)), isMirrored);
    const QPixmap symbol = pixmap(name, colour, size, ratio);
    painter.drawPixmap(whole, isMirrored && pointsSideways(name) ? turned(symbol) : symbol);
}

}  // namespace kestrune::Icons
