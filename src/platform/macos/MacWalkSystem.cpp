#include "platform/macos/MacWalkSystem.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace kestrune {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;

MacFileDescriptor openWith(int parent, const char* path, int flags) {
    int descriptor = -1;
    do {
        descriptor = ::openat(parent, path, flags);
    } while (descriptor < 0 && errno == EINTR);
    return MacFileDescriptor(descriptor);
}

std::optional<MacWalkSystem::Identity> identity(int descriptor) {
    struct stat status {};

    if (::fstat(descriptor, &status) != 0) {
        return std::nullopt;
    }
    return MacWalkSystem::Identity{static_cast<std::uint64_t>(status.st_dev), status.st_ino};
}

}  // namespace

MacWalkSystem::Folder MacWalkSystem::openRoot(const std::string& path) {
    if (path.find('\0') != std::string::npos) {
        errno = ENOENT;  // no name holds a NUL
        return {};
    }
    return openWith(AT_FDCWD, path.c_str(), folderFlags);
}

std::optional<MacWalkSystem> MacWalkSystem::around(int descriptor) {
    const auto found = identity(descriptor);
    return found ? std::optional(MacWalkSystem(found->device)) : std::nullopt;
}

std::optional<MacWalkSystem::Identity> MacWalkSystem::identityOf(int descriptor) const {
    return identity(descriptor);
}

MacWalkSystem::Folder MacWalkSystem::openBelow(int parent, const char* path) const {
    Folder folder = openWith(parent, path, folderFlags | O_NOFOLLOW);
    const auto found = folder ? identity(folder.get()) : std::nullopt;
    if (found && found->device != m_device) {
        folder.reset();
        errno = EXDEV;
    }
    return found ? std::move(folder) : Folder();
}

}  // namespace kestrune
