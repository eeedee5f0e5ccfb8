#pragma once

#include <string>
#include <vector>

/// The shared data folders of the XDG Base Directory Specification.
namespace kestrune::LinuxXdgFolders {

/// For a home folder: the user's own first, then those of the system and of the package runners.
[[nodiscard]] std::vector<std::string> data(const std::string& home);

}  // namespace kestrune::LinuxXdgFolders
