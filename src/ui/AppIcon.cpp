#include "ui/AppIcon.h"

#include <QCache>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "ui/Icons.h"
#include "ui/Paint.h"
#include "ui/UiText.h"
#include "workspace/RunningItem.h"

namespace kestrune::AppIcon {

namespace {

constexpr int cachedIcons = 600;
constexpr qint64 largestFile = 4'000'000;  // bytes
constexpr int largestSide = 4096;
constexpr double radius = 7;
constexpr int symbolSize = 18;

struct Ground {
    QRgb light;
    QRgb dark;
};

constexpr std::array<Ground, 8> grounds{{{0xFFB6D3EB, 0xFF1E4F7C},
                                         {0xFFDEBB91, 0xFF865022},
                                         {0xFF7FBA9C, 0xFF266C56},
                                         {0xFFDEA1B9, 0xFF64435A},
                                         {0xFFDEDBAE, 0xFF7D702E},
                                         {0xFFB4A1D2, 0xFF67588E},
                                         {0xFF7DC7D8, 0xFF487888},
                                         {0xFFEFC6C6, 0xFF71351E}}};
constexpr QRgb lightInk = 0xFF1B1C1F;
constexpr QRgb darkInk = 0xFFFFFFFF;

// The same name has the same colour in every run.
const Ground& groundOf(std::string_view name) {
    std::uint32_t mixed = 2'166'136'261U;
    for (const char character : name) {
        mixed = (mixed ^ static_cast<unsigned char>(character)) * 16'777'619U;
    }
    return grounds.at((mixed >> 16U) % grounds.size());
}

QPixmap drawing(const QString& path, int pixels) {
    QSvgRenderer renderer(path);
    if (!renderer.isValid()) {
        return {};
    }
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPixmap result(pixels, pixels);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    return result;
}

QPixmap photo(const QString& path, int pixels) {
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > largestSide || size.height() > largestSide) {
        return {};
    }
    const QImage image = reader.read();
    return image.isNull()
               ? QPixmap()
               : QPixmap::fromImage(image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

QPixmap loaded(const QString& path, int pixels) {
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > largestFile) {
        return {};
    }
    return file.suffix().startsWith(QLatin1String("svg")) ? drawing(path, pixels) : photo(path, pixels);
}

// Nothing when there is no such picture, which is kept in mind as well.
QPixmap icon(const QString& path, int size, double ratio) {
    static QCache<QString, QPixmap> cache(cachedIcons);
    const int pixels = static_cast<int>(std::ceil(size * ratio));
    const QString key = QStringLiteral("%1/%2").arg(pixels).arg(path);
    if (const QPixmap* known = cache.object(key)) {
        return *known;
    }
    QPixmap made = loaded(path, pixels);
    made.setDevicePixelRatio(ratio);
    cache.insert(key, new QPixmap(made));
    return made;
}

void drawSymbol(QPainter& painter, const QRect& box) {
    Paint::rounded(painter, box, radius, Theme::colour(Colour::control));
    const int size = Metrics::px(symbolSize);
    Icons::draw(painter, QPointF(box.left() + (box.width() - size) / 2.0, box.top() + (box.height() - size) / 2.0),
                QStringLiteral("terminal"), Theme::colour(Colour::text2), size);
}

}  // namespace

QString letter(const QString& name) {
    const QList<uint> characters = name.toUcs4();
    for (const uint character : characters) {
        if (QChar::isLetterOrNumber(character)) {
            const char32_t found = character;
            return QString::fromUcs4(&found, 1).toUpper();
        }
    }
    return {};
}

void draw(QPainter& painter, const QRect& box, const RunningItem& item, const std::string& picture) {
    if (!item.app) {
        drawSymbol(painter, box);
        return;
    }
    if (!picture.empty()) {
        const QPixmap own = icon(QString::fromStdString(picture), box.width(), painter.device()->devicePixelRatioF());
        if (!own.isNull()) {
            const QSizeF size = own.deviceIndependentSize();
            painter.drawPixmap(
                QPointF(box.left() + (box.width() - size.width()) / 2, box.top() + (box.height() - size.height()) / 2),
                own);
            return;
        }
    }
    const QString first = letter(shown(item.name));
    if (first.isEmpty()) {
        drawSymbol(painter, box);
        return;
    }
    const Ground& ground = groundOf(item.name);
    Paint::rounded(painter, box, radius, QColor::fromRgb(Theme::isDark() ? ground.dark : ground.light));
    Paint::text(painter, box, FontRole::bodyStrong, QColor::fromRgb(Theme::isDark() ? darkInk : lightInk), first,
                Qt::AlignHCenter);
}

}  // namespace kestrune::AppIcon
