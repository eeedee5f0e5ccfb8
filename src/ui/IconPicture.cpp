#include "ui/IconPicture.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSet>
#include <QStringList>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QtEndian>
#include <algorithm>
#include <array>

namespace kestrune::IconPicture {

namespace {

constexpr qsizetype largestDrawing = qsizetype{1} << 18U;  // bytes
constexpr quint32 largestSide = 1024;
constexpr int mostElements = 5'000;
constexpr int mostNested = 64;
constexpr int mostCopied = 20'000;  // elements of the file times the copies it makes
constexpr int mostDashed = 64;      // elements of a file that dashes lines

constexpr std::array<QLatin1String, 4> refused{QLatin1String("image"), QLatin1String("text"), QLatin1String("textArea"),
                                               QLatin1String("tspan")};

// True when what sets a style may ask for dashed lines.
bool asksForDashes(QStringView style) {
    const QLatin1String property("stroke-dasharray");
    for (qsizetype at = style.indexOf(property); at >= 0; at = style.indexOf(property, at + 1)) {
        const QStringView rest = style.mid(at + property.size()).trimmed();
        if (!rest.startsWith(u':') || !rest.mid(1).trimmed().startsWith(QLatin1String("none"))) {
            return true;
        }
    }
    return false;
}

/// What there is in a drawing, piece by piece.
class Census final {
public:
    /// False as soon as there is something that no icon needs.
    [[nodiscard]] bool enter(const QXmlStreamReader& reader) {
        const QXmlStreamAttributes attributes = reader.attributes();
        m_ids.append(attributes.value(QLatin1String("id")).toString());
        ++m_elements;
        const bool isCopy = reader.name() == QLatin1String("use");
        if (isCopy) {
            ++m_copies;
            m_copying.unite(QSet<QString>(m_ids.begin(), m_ids.end()));
        }
        return m_elements <= mostElements && m_ids.size() <= mostNested &&
               std::find(refused.begin(), refused.end(), reader.name()) == refused.end() &&
               std::all_of(attributes.begin(), attributes.end(),
                           [&](const QXmlStreamAttribute& attribute) { return take(attribute, isCopy); });
    }

    void leave() { m_ids.removeLast(); }

    void takeText(QStringView text) { m_isDashed = m_isDashed || asksForDashes(text); }

    /// Whether all of it together is still an icon.
    [[nodiscard]] bool isSmall() const {
        return m_copies * m_elements <= mostCopied && !m_copied.intersects(m_copying) &&
               (!m_isDashed || m_elements <= mostDashed);
    }

private:
    bool take(const QXmlStreamAttribute& attribute, bool isCopy) {
        const QStringView value = attribute.value();
        if (attribute.name() == QLatin1String("stroke-dasharray")) {
            m_isDashed = m_isDashed || value.trimmed() != QLatin1String("none");
        } else if (attribute.name() == QLatin1String("style")) {
            takeText(value);
        } else if (attribute.name() == QLatin1String("href")) {
            if (isCopy) {
                m_copied.insert(value.mid(1).toString());
            }
            return value.startsWith(u'#');
        }
        return true;
    }

    QStringList m_ids;  ///< of the element and those around it, outermost first; empty where there is none
    QSet<QString> m_copied;
    QSet<QString> m_copying;  ///< ids of what holds a copy
    int m_elements = 0;
    int m_copies = 0;
    bool m_isDashed = false;
};

QPixmap drawing(const QByteArray& file, int pixels) {
    QSvgRenderer renderer;
    if (!isHarmless(file) || !renderer.load(file)) {
        return {};
    }
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPixmap result(pixels, pixels);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    return result;
}

// The size stands right behind the signature, and the name of the chunk it is in.
bool isSmallPhoto(const QByteArray& png) {
    constexpr qsizetype width = 16;
    constexpr qsizetype height = 20;
    if (png.size() < height + 4) {
        return false;
    }
    const auto side = [&png](qsizetype at) { return qFromBigEndian<quint32>(png.constData() + at); };
    return png.mid(12, 4) == "IHDR" && side(width) <= largestSide && side(height) <= largestSide;
}

QPixmap photo(const QByteArray& file, int pixels) {
    if (!isSmallPhoto(file)) {
        return {};
    }
    QBuffer buffer;
    buffer.setData(file);
    QImageReader reader(&buffer, QByteArrayLiteral("png"));
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read();
    return image.isNull()
               ? QPixmap()
               : QPixmap::fromImage(image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

}  // namespace

QPixmap made(const QByteArray& file, int pixels) {
    if (file.size() > largestFile) {
        return {};
    }
    return file.startsWith("\x89PNG\r\n\x1a\n") ? photo(file, pixels) : drawing(file, pixels);
}

bool isHarmless(const QByteArray& svg) {
    if (svg.size() > largestDrawing) {
        return false;
    }
    QXmlStreamReader reader(svg);
    Census census;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::DTD:
                if (reader.text().contains(QLatin1String("ENTITY"))) {
                    return false;
                }
                break;
            case QXmlStreamReader::EntityReference:
                return false;
            case QXmlStreamReader::StartElement:
                if (!census.enter(reader)) {
                    return false;
                }
                break;
            case QXmlStreamReader::EndElement:
                census.leave();
                break;
            case QXmlStreamReader::Characters:
                census.takeText(reader.text());
                break;
            default:
                break;
        }
    }
    return !reader.hasError() && census.isSmall();
}

}  // namespace kestrune::IconPicture
