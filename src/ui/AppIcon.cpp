#include "ui/AppIcon.h"

#include <QCache>
#include <QPainter>
#include <QPixmap>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "ui/IconPicture.h"
#include "ui/Icons.h"
#include "ui/Mirror.h"
#include "ui/Paint.h"
#include "ui/UiText.h"
#include "workspace/RunningItem.h"

namespace kestrune::AppIcon {

namespace {

constexpr int cachedIcons = 600;
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

// The bytes an icon was drawn from live as long as it is kept: their address stands for them.
struct Drawn {
    QPixmap pixmap;
    std::shared_ptr<const std::string> png;
};

// A path begins with "/", so that no address looks like one.
QString nameOf(const ApplicationIcon& icon) {
    return icon.png ? QStringLiteral("@%1").arg(reinterpret_cast<quintptr>(icon.png.get()))
                    : QString::fromStdString(icon.path);
}

std::optional<std::string> contentOf(const Picture& picture) {
    return picture.icon.png ? std::optional(*picture.icon.png) : picture.read(picture.icon.path);
}

// Nothing when there is no such picture, which is kept in mind as well.
QPixmap iconPixmap(const Picture& picture, int size, double ratio) {
    static QCache<QString, Drawn> cache(cachedIcons);
    const int pixels = static_cast<int>(std::ceil(size * ratio));
    const QString key = QString::number(pixels) + nameOf(picture.icon);
    if (const Drawn* known = cache.object(key)) {
        return known->pixmap;
    }
    const std::optional<std::string> file = contentOf(picture);
    QPixmap made = file ? IconPicture::made(QByteArray::fromStdString(*file), pixels) : QPixmap();
    made.setDevicePixelRatio(ratio);
    cache.insert(key, new Drawn{made, picture.icon.png});
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

void draw(QPainter& painter, const QRect& box, const RunningItem& item, const Picture& picture) {
    if (!item.app) {
        drawSymbol(painter, box);
        return;
    }
    if (!picture.icon.isEmpty()) {
        const QPixmap own = iconPixmap(picture, box.width(), painter.device()->devicePixelRatioF());
        if (!own.isNull()) {
            const QSizeF size = own.deviceIndependentSize();
            const Mirror::Turn upright(painter, QRectF(box), Mirror::isOn(painter));
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
