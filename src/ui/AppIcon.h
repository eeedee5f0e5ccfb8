#pragma once

#include <QColor>
#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "workspace/RunningItem.h"

class QPainter;
class QRect;

/// The picture before a process's name. Main thread.
namespace kestrune::AppIcon {

/// Side of the picture in the design.
constexpr int side = 28;

/// An application's own icon.
struct Picture {
    ApplicationIcon icon;
    /// What is in the file at path, where the icon is in one; asked once for a size, and nothing when it is no file, or
    /// too large to be an icon.
    std::function<std::optional<std::string>(const std::string& path)> read;
};

/// Draws the application's own icon; without one, or one that IconPicture refuses, a tile with its first letter, and
/// for a process that is no application the symbol of a terminal.
void draw(QPainter& painter, const QRect& box, const RunningItem& item, const Picture& picture);

/// The letter of the tile; empty for a name without letters and digits.
[[nodiscard]] QString letter(const QString& name);

}  // namespace kestrune::AppIcon
