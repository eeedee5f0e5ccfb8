#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace kestrune {

/// The environment for a program that is not part of this one: without what was set for this program alone, by the
/// runtime of an AppImage, whose libraries fit no other program, and by whoever started it.
[[nodiscard]] QProcessEnvironment environmentForOthers();

/// Starts program, an absolute path, in that environment and without this program's standard streams. It stays when
/// this one ends. False when it could not be started. Any thread.
[[nodiscard]] bool startDetached(const QString& program, const QStringList& arguments);

}  // namespace kestrune
