#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune {

/// One line of /proc/self/mountinfo (proc(5)).
struct LinuxMount {
    std::uint64_t id = 0;
    std::uint64_t parentId = 0;
    std::string device;      ///< "major:minor"
    std::string root;        ///< the folder of the file system that is mounted; "/" for all of it
    std::string mountPoint;  ///< where it is mounted

    bool operator==(const LinuxMount&) const = default;
};

/// The mounts in text, in its order, their octal escapes ("\040") resolved. Lines that do not have the form are left
/// out. Pure.
[[nodiscard]] std::vector<LinuxMount> parseMountInfo(std::string_view text);

/// The mount of that number; null when there is none. Pure.
[[nodiscard]] const LinuxMount* mountWithId(const std::vector<LinuxMount>& mounts, std::uint64_t id);

/// Whether path is a mount point or has one below it. path is absolute and lies on the mount of that number. A mount
/// point that is reached through another mount of the same folder (a bind mount) counts too. Pure.
[[nodiscard]] bool holdsMountPoint(const std::vector<LinuxMount>& mounts, std::uint64_t mountId,
                                   const std::string& path);

}  // namespace kestrune
