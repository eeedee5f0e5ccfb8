#include <QBuffer>
#include <QByteArray>
#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QStringList>
#include <QSvgRenderer>
#include <QTextStream>
#include <QtEndian>

#include <array>

// kestrune-icns SVG ICNS: draws the program's icon in every size that macOS asks for, into one file.

namespace {

struct Entry {
    const char* type;  ///< the four characters that stand for a size at a scale
    int pixels;
};

// en.wikipedia.org/wiki/Apple_Icon_Image_format: the types whose data is PNG.
constexpr std::array<Entry, 10> entries = {{{"icp4", 16},
                                            {"ic11", 32},  // 16 at twice the resolution
                                            {"icp5", 32},
                                            {"ic12", 64},
                                            {"ic07", 128},
                                            {"ic13", 256},
                                            {"ic08", 256},
                                            {"ic14", 512},
                                            {"ic09", 512},
                                            {"ic10", 1024}}};

// The drawing's rounded square is 224 of 256 wide; on Apple's grid for application icons it is 824 of 1024
// (developer.apple.com/design/human-interface-guidelines/app-icons, the template for macOS).
constexpr double gridScale = (824.0 / 1024.0) / (224.0 / 256.0);

QByteArray png(QSvgRenderer& drawing, int pixels) {
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = pixels * gridScale;
    const double margin = (pixels - side) / 2;
    drawing.render(&painter, QRectF(margin, margin, side, side));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::WriteOnly) && picture.save(&buffer, "PNG") ? bytes : QByteArray();
}

/// Type, length of the whole block in big-endian order, data.
QByteArray block(const char* type, const QByteArray& data) {
    std::array<char, 4> length{};
    qToBigEndian(static_cast<quint32>(data.size() + 8), length.data());
    return QByteArray(type, 4) + QByteArray(length.data(), length.size()) + data;
}

QByteArray iconFile(QSvgRenderer& drawing) {
    QByteArray blocks;
    for (const Entry& entry : entries) {
        const QByteArray picture = png(drawing, entry.pixels);
        if (picture.isEmpty()) {
            return {};
        }
        blocks += block(entry.type, picture);
    }
    return block("icns", blocks);
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication toolkit(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream complaint(stderr);
    if (arguments.size() != 3) {
        complaint << "Usage: kestrune-icns SVG ICNS\n";
        return 2;
    }
    QSvgRenderer drawing(arguments.at(1));
    const QByteArray bytes = drawing.isValid() ? iconFile(drawing) : QByteArray();
    if (bytes.isEmpty()) {
        complaint << arguments.at(1) << " could not be drawn\n";
        return 1;
    }
    QSaveFile file(arguments.at(2));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        complaint << arguments.at(2) << ": " << file.errorString() << '\n';
        return 1;
    }
    return 0;
}
