#include "ui/AppIcon.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include "tests/ui/RunningItems.h"

namespace kestrune {

namespace {

std::optional<std::string> contentOf(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll().toStdString()) : std::nullopt;
}

std::shared_ptr<const std::string> pngOf(Qt::GlobalColor colour) {
    QImage image(64, 64, QImage::Format_RGB32);
    image.fill(colour);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return std::make_shared<const std::string>(buffer.data().toStdString());
}

QImage drawn(const RunningItem& item, const ApplicationIcon& icon = {}) {
    QImage image(AppIcon::side, AppIcon::side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    AppIcon::draw(painter, image.rect(), item, {icon, contentOf});
    return image;
}

}  // namespace

TEST(AppIcon, letterIsTheFirstOneOfTheName) {
    EXPECT_EQ(AppIcon::letter(QStringLiteral("xcode")), QStringLiteral("X"));
    EXPECT_EQ(AppIcon::letter(QStringLiteral("  <7zip>")), QStringLiteral("7"));
    EXPECT_EQ(AppIcon::letter(QStringLiteral("日本")), QStringLiteral("日"));
    EXPECT_EQ(AppIcon::letter(QStringLiteral("𝒳-server")), QStringLiteral("𝒳"));
    EXPECT_EQ(AppIcon::letter(QStringLiteral("…")), QString());
}

TEST(AppIcon, drawsTheApplicationsOwnPicture) {
    const QTemporaryDir folder;
    QImage red(64, 64, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(folder.filePath(QStringLiteral("own.png"))));
    const std::string picture = folder.filePath(QStringLiteral("own.png")).toStdString();
    EXPECT_EQ(drawn(runningApp(7, "Notes"), {picture, nullptr}).pixelColor(14, 14), QColor(Qt::red));
}

TEST(AppIcon, drawsAPictureThatIsInNoFile) {
    for (const Qt::GlobalColor colour : {Qt::red, Qt::blue}) {
        EXPECT_EQ(drawn(runningApp(7, "Notes"), {{}, pngOf(colour)}).pixelColor(14, 14), QColor(colour));
    }
    const auto broken = std::make_shared<const std::string>("not a picture");
    EXPECT_EQ(drawn(runningApp(7, "Notes"), {{}, broken}), drawn(runningApp(7, "Notes")));
}

TEST(AppIcon, aPictureThatCannotBeReadGivesTheLetterTile) {
    const QTemporaryDir folder;
    const RunningItem plain = runningApp(7, "Notes");
    for (const char* name : {"missing.png", "broken.png", "broken.svg", "."}) {
        const QString path = folder.filePath(QLatin1String(name));
        if (path.contains(QLatin1String("broken"))) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write("not a picture");
        }
        EXPECT_EQ(drawn(plain, {path.toStdString(), nullptr}), drawn(plain)) << name;
    }
    EXPECT_NE(drawn(plain), drawn(runningProcess(7, "Notes")));
}

TEST(AppIcon, aNameWithoutLettersLooksLikeAProcess) {
    EXPECT_EQ(drawn(runningApp(7, "…")), drawn(runningProcess(7, "…")));
}

}  // namespace kestrune
