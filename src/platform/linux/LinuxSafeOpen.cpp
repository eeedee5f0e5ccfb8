#include "platform/linux/LinuxSafeOpen.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>

namespace kestrune {

LinuxOpened openWithoutLinks(int folder, const std::string& path, int flags, LinuxReach reach) {
    open_how how = {};
    how.flags = static_cast<__u64>(flags | O_CLOEXEC);
    how.resolve = RESOLVE_NO_SYMLINKS | RESOLVE_NO_MAGICLINKS;
    if (reach != LinuxReach::anywhere) {
        how.resolve |= RESOLVE_BENEATH;
    }
    if (reach == LinuxReach::mount) {
        how.resolve |= RESOLVE_NO_XDEV;
    }
    LinuxOpened opened;
    opened.descriptor.reset(static_cast<int>(::syscall(SYS_openat2, folder, path.c_str(), &how, sizeof how)));
    if (!opened.descriptor) {
        opened.error = errno;
    }
    return opened;
}

LinuxOpened openOrMakeFolder(int folder, const std::string& name, int flags) {
    LinuxOpened opened = openWithoutLinks(folder, name, flags | O_DIRECTORY, LinuxReach::below);
    if (opened.error != ENOENT) {
        return opened;
    }
    if (::mkdirat(folder, name.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        opened.error = errno;
        return opened;
    }
    opened.error = syncFolder(folder);
    if (opened.error != 0) {
        return opened;
    }
    return openWithoutLinks(folder, name, flags | O_DIRECTORY, LinuxReach::below);
}

int syncFolder(int folder) {
    const LinuxFileDescriptor readable(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!readable) {
        return errno == EACCES ? 0 : errno;
    }
    if (::fsync(readable.get()) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS) {
        return errno;
    }
    return 0;
}

}  // namespace kestrune
