#pragma once

#include <QColor>
#include <QString>
#include <string>

class QPainter;
class QRect;

namespace kestrune {

struct RunningItem;

/// The picture before a process's name. Main thread.
namespace AppIcon {

/// Side of the picture in the design.
constexpr int side = 28;

/// Draws the application's own icon, the file at picture; without one, a tile with its first letter, and for a process
/// that is no application the symbol of a terminal.
void draw(QPainter& painter, const QRect& box, const RunningItem& item, const std::string& picture);

/// The letter of the tile; empty for a name without letters and digits.
[[nodiscard]] QString letter(const QString& name);

}  // namespace AppIcon

}  // namespace kestrune
