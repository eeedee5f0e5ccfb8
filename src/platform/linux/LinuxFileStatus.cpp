#include "platform/linux/LinuxFileStatus.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cerrno>

namespace kestrune {

namespace {

Result<LinuxFileStatus, int> status(int folder, const char* name, int flags) {
    constexpr unsigned wanted = STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID;
    struct statx found = {};
    if (::statx(folder, name, flags | AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, wanted, &found) != 0) {
        return errno;
    }
    if ((found.stx_mask & STATX_MNT_ID) == 0) {
        return ENOTSUP;
    }
    LinuxFileStatus result;
    result.identity.device = ::makedev(found.stx_dev_major, found.stx_dev_minor);
    result.identity.inode = found.stx_ino;
    if ((found.stx_mask & STATX_BTIME) != 0) {
        result.identity.birthSeconds = found.stx_btime.tv_sec;
        result.identity.birthNanoseconds = found.stx_btime.tv_nsec;
    }
    result.mode = found.stx_mode;
    result.owner = found.stx_uid;
    result.mountId = found.stx_mnt_id;
    result.isMountPoint = (found.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    result.modified = found.stx_mtime.tv_sec;
    return result;
}

}  // namespace

bool LinuxFileStatus::isFolder() const {
    return S_ISDIR(mode);
}

bool LinuxFileStatus::isRegularFile() const {
    return S_ISREG(mode);
}

bool LinuxFileStatus::isLink() const {
    return S_ISLNK(mode);
}

bool LinuxFileStatus::isSticky() const {
    return (mode & S_ISVTX) != 0;
}

bool LinuxFileStatus::othersMayWrite() const {
    return (mode & S_IWOTH) != 0;
}

bool LinuxFileStatus::groupOrOthersMayWrite() const {
    return (mode & (S_IWGRP | S_IWOTH)) != 0;
}

Result<LinuxFileStatus, int> statusOf(int descriptor) {
    return status(descriptor, "", AT_EMPTY_PATH);
}

Result<LinuxFileStatus, int> statusIn(int folder, const std::string& name) {
    return status(folder, name.c_str(), 0);
}

}  // namespace kestrune
