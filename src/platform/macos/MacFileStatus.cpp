#include "platform/macos/MacFileStatus.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace kestrune {

namespace {

MacFileStatus statusFrom(const struct stat& found) {
    MacFileStatus status;
    status.identity.device = static_cast<std::uint64_t>(found.st_dev);
    status.identity.inode = found.st_ino;
    status.identity.birthSeconds = found.st_birthtimespec.tv_sec;
    status.identity.birthNanoseconds = found.st_birthtimespec.tv_nsec;
    status.mode = found.st_mode;
    status.owner = found.st_uid;
    return status;
}

}  // namespace

bool MacFileStatus::isFolder() const {
    return S_ISDIR(mode);
}

bool MacFileStatus::isRegularFile() const {
    return S_ISREG(mode);
}

bool MacFileStatus::isLink() const {
    return S_ISLNK(mode);
}

bool MacFileStatus::isOwnFolder() const {
    return isFolder() && owner == ::geteuid();
}

bool MacFileStatus::othersMayWrite() const {
    return (mode & S_IWOTH) != 0;
}

Result<MacFileStatus, int> macStatusOf(int descriptor) {
    struct stat found = {};
    if (::fstat(descriptor, &found) != 0) {
        return errno;
    }
    return statusFrom(found);
}

Result<MacFileStatus, int> macStatusIn(int folder, const std::string& path) {
    struct stat found = {};
    if (::fstatat(folder, path.c_str(), &found, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno;
    }
    return statusFrom(found);
}

}  // namespace kestrune
