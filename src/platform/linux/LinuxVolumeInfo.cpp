#include "platform/linux/LinuxVolumeInfo.h"

#include <sys/statvfs.h>

#include <cerrno>
#include <limits>

namespace kestrune {

namespace {

std::int64_t bytes(std::uint64_t blocks, std::uint64_t blockSize) {
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(blockSize != 0 && blocks > most / blockSize ? most : blocks * blockSize);
}

}  // namespace

std::optional<VolumeCapacity> LinuxVolumeInfo::capacity(const std::string& path) {
    struct statvfs volume {};

    while (::statvfs(path.c_str(), &volume) != 0) {
        if (errno != EINTR) {
            return std::nullopt;
        }
    }
    return VolumeCapacity{bytes(volume.f_blocks, volume.f_frsize), bytes(volume.f_bavail, volume.f_frsize)};
}

}  // namespace kestrune
