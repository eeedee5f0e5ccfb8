#pragma once

#include <QByteArray>
#include <QPixmap>

/// The pictures of applications. Any program may have installed them, so a picture that is dear to draw, or that leads
/// to other files, is not drawn at all. Main thread.
namespace kestrune::IconPicture {

/// A longer file is no icon, bytes.
constexpr qsizetype largestFile = qsizetype{1} << 20U;

/// A PNG file of at most 1024 by 1024 pixels or an SVG file that isHarmless(), as a picture that fits a square of that
/// side. Null for anything else.
[[nodiscard]] QPixmap made(const QByteArray& file, int pixels);

/// True for an SVG file of at most 256 KiB that holds shapes alone: no text, no picture, no link out of the file, no
/// entities, no copies of copies, and not more of anything than an icon needs.
[[nodiscard]] bool isHarmless(const QByteArray& svg);

}  // namespace kestrune::IconPicture
