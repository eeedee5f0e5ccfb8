#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinuxMounts.h"

namespace kestrune {

/// Whether nothing lies in any Trash that this user's "empty Trash" is about: the one of the home folder (in dataHome
/// when that is not empty), and the user's own at the top of the file system the home lies on and of every volume on a
/// disk. Network and other volumes without a disk are not looked at, because one that does not answer would never let
/// go. Nothing when the home folder's Trash cannot be seen or is refused, as a move to it would be. mounts are those of
/// this moment. Any thread.
[[nodiscard]] std::optional<bool> isTrashEmpty(const std::string& home, const std::string& dataHome,
                                               const std::vector<LinuxMount>& mounts);

}  // namespace kestrune
