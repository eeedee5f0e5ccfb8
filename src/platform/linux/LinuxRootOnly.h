#pragma once

#include <string>

namespace kestrune {

/// Whether path is an executable file that nobody but root can change or put another in the place of: it and every
/// folder above it belong to root, no group and nobody else may write them, and no link is on the way. Any thread.
[[nodiscard]] bool onlyRootCanChangeProgram(const std::string& path);

}  // namespace kestrune
