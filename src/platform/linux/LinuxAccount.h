#pragma once

#include <string>

namespace kestrune::LinuxAccount {

/// The account's home folder: HOME when it is absolute and leads to a folder, else what the user database says. Links
/// are resolved, so that later checks can refuse every link below it.
[[nodiscard]] std::string homeDirectory();

/// The environment variable when it is set to an absolute path, as the base directory rules ask; else empty.
[[nodiscard]] std::string absoluteVariable(const char* name);

}  // namespace kestrune::LinuxAccount
