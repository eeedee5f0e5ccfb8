#pragma once

#include <QProcessEnvironment>

namespace kestrune {

/// The environment for a program that is not part of this one: without what was set for this program alone, by the
/// runtime of an AppImage, whose libraries fit no other program, and by whoever started it.
[[nodiscard]] QProcessEnvironment environmentForOthers();

}  // namespace kestrune
