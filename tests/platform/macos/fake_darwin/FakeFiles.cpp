#include "tests/platform/macos/fake_darwin/FakeFiles.h"

#include <fcntl.h>
#include <linux/limits.h>
#include <stdio.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <tuple>
#include <utility>

#undef fstat
#undef fstatat

namespace kestrune::fake_darwin {

namespace {

/// Which item an attribute belongs to: device, inode, time of birth.
using Item = std::tuple<std::uint64_t, std::uint64_t, std::int64_t, std::int64_t>;

/// In memory, because not every file system the tests run on keeps attributes.
std::map<std::pair<Item, std::string>, std::string>& attributes() {
    static std::map<std::pair<Item, std::string>, std::string> all;
    return all;
}

Item itemOf(int folder, const char* path) {
    struct stat status = {};
    if (statWithBirthAt(folder, path, &status, AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino, status.st_birthtimespec.tv_sec, status.st_birthtimespec.tv_nsec};
}

std::mutex& attributesLock() {
    static std::mutex lock;
    return lock;
}

int failWith(int error) {
    errno = error;
    return -1;
}

}  // namespace

Files& files() {
    static Files all;
    return all;
}

void setAttribute(const std::string& path, const std::string& name, const std::string& value) {
    const std::lock_guard guard(attributesLock());
    attributes()[{itemOf(AT_FDCWD, path.c_str()), name}] = value;
}

std::string attribute(const std::string& path, const std::string& name) {
    const std::lock_guard guard(attributesLock());
    const auto found = attributes().find({itemOf(AT_FDCWD, path.c_str()), name});
    return found == attributes().end() ? std::string() : found->second;
}

}  // namespace kestrune::fake_darwin

using namespace kestrune::fake_darwin;

int fcntl(int descriptor, int command, char* path) {
    if (command != F_GETPATH) {
        return failWith(EINVAL);
    }
    if (files().pathError != 0) {
        return failWith(files().pathError);
    }
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), path, PATH_MAX - 1);
    if (length < 0) {
        return failWith(EBADF);
    }
    path[length] = '\0';
    return std::string(path).ends_with(" (deleted)") ? failWith(ENOENT) : 0;
}

int renameatx_np(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags) {
    if (flags != RENAME_EXCL) {
        return failWith(EINVAL);
    }
    if (const auto once = std::exchange(files().beforeRename, nullptr)) {
        once();
    }
    if (files().renameError != 0) {
        return failWith(files().renameError);
    }
    const int result = ::renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE);
    const int error = errno;
    if (result == 0) {
        if (const auto once = std::exchange(files().afterRename, nullptr)) {
            once();
        }
    }
    errno = error;
    return result;
}

int statWithBirthAt(int folder, const char* path, struct stat* status, int flags) {
    // One look tells both, or what lies there could change between the two.
    struct statx found = {};
    if (::statx(folder, path, flags | AT_NO_AUTOMOUNT, STATX_BASIC_STATS | STATX_BTIME, &found) != 0) {
        return -1;
    }
    *status = {};
    status->st_dev = (static_cast<dev_t>(found.stx_dev_major) << 32U) | found.stx_dev_minor;
    status->st_ino = found.stx_ino;
    status->st_mode = found.stx_mode;
    status->st_uid = found.stx_uid;
    status->st_gid = found.stx_gid;
    status->st_nlink = found.stx_nlink;
    status->st_size = static_cast<off_t>(found.stx_size);
    status->st_blocks = static_cast<blkcnt_t>(found.stx_blocks);
    status->st_mtim = {found.stx_mtime.tv_sec, found.stx_mtime.tv_nsec};
    status->st_birthtimespec = {found.stx_btime.tv_sec, found.stx_btime.tv_nsec};
    return 0;
}

int statWithBirth(int descriptor, struct stat* status) {
    return statWithBirthAt(descriptor, "", status, AT_EMPTY_PATH);
}

int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size, std::uint32_t position,
              int options) {
    if (files().attributeError != 0 || position != 0 || options != 0) {
        return failWith(files().attributeError != 0 ? files().attributeError : EINVAL);
    }
    const std::lock_guard guard(attributesLock());
    attributes()[{itemOf(descriptor, ""), name}] = std::string(static_cast<const char*>(value), size);
    return 0;
}

ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size, std::uint32_t position,
                  int options) {
    const std::lock_guard guard(attributesLock());
    const auto found = attributes().find({itemOf(descriptor, ""), name});
    if (found == attributes().end() || position != 0 || options != 0) {
        return failWith(ENODATA);
    }
    if (found->second.size() > size) {
        return failWith(ERANGE);
    }
    std::memcpy(value, found->second.data(), found->second.size());
    return static_cast<ssize_t>(found->second.size());
}

int fremovexattr(int descriptor, const char* name, int options) {
    const std::lock_guard guard(attributesLock());
    return options == 0 && attributes().erase({itemOf(descriptor, ""), name}) == 1 ? 0 : failWith(ENODATA);
}

int getfsstat(struct statfs* volumes, int bytes, int flags) {
    const auto& all = files().volumes;
    if (files().volumesError != 0 || flags != MNT_NOWAIT) {
        return failWith(files().volumesError != 0 ? files().volumesError : EINVAL);
    }
    if (volumes == nullptr) {
        return static_cast<int>(all.size());
    }
    const std::size_t fitting = std::min(all.size(), static_cast<std::size_t>(bytes) / sizeof(struct statfs));
    for (std::size_t i = 0; i < fitting; ++i) {
        volumes[i] = {};
        volumes[i].f_flags = all[i].isLocal ? MNT_LOCAL : 0U;
        all[i].mountPoint.copy(volumes[i].f_mntonname, sizeof volumes[i].f_mntonname - 1);
    }
    return static_cast<int>(fitting);
}
