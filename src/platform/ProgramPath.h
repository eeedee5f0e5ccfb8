#pragma once

#include <string_view>

namespace kestrune {

/// Whether a desktop entry, a systemd unit or a launch agent can hold path, that of a program: absolute, UTF-8, no
/// control character.
[[nodiscard]] bool isPlainProgramPath(std::string_view path);

}  // namespace kestrune
