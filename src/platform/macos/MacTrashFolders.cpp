#include "platform/macos/MacTrashFolders.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/PathText.h"

namespace kestrune {

namespace {

struct DirectoryCloser {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

/// The same for an error that means there is no Trash there, and so nothing in it.
std::optional<bool> withoutFolder(int error) {
    return error == ENOENT ? std::optional(true) : std::nullopt;
}

/// Whether the folder holds nothing but the Finder's own notes; nothing when it cannot be read.
std::optional<bool> isEmpty(MacFolder folder) {
    if (!folder.isOpen()) {
        return withoutFolder(folder.error);
    }
    const std::unique_ptr<DIR, DirectoryCloser> directory(::fdopendir(folder.descriptor.get()));
    if (!directory) {
        return std::nullopt;
    }
    // closedir(3) closes it.
    static_cast<void>(folder.descriptor.release());
    errno = 0;
    while (const dirent* entry = ::readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && name != ".DS_Store") {
            return false;
        }
        errno = 0;
    }
    return errno == 0 ? std::optional(true) : std::nullopt;
}

MacFolder failed(int error) {
    MacFolder folder;
    folder.error = error;
    return folder;
}

}  // namespace

MacTrashFolders::MacTrashFolders(const std::string& home, const std::vector<MacVolume>& volumes)
    : m_volumes(volumes), m_inHome(inFolder(home, ".Trash")), m_onVolume(".Trashes/" + std::to_string(::geteuid())) {
}

bool MacTrashFolders::holds(const std::string& path) const {
    const std::string folder = folderOf(path);
    return folder == m_inHome || std::any_of(m_volumes.begin(), m_volumes.end(), [&](const MacVolume& volume) {
               return folder == inFolder(volume.mountPoint, m_onVolume);
           });
}

MacFolder MacTrashFolders::open(const std::string& path) const {
    if (path == m_inHome) {
        return openMacFolder(AT_FDCWD, path);
    }
    const auto volume = std::find_if(m_volumes.begin(), m_volumes.end(), [&](const MacVolume& candidate) {
        return path == inFolder(candidate.mountPoint, m_onVolume);
    });
    return volume == m_volumes.end() ? failed(ENOENT) : openOnVolume(volume->mountPoint);
}

std::optional<bool> MacTrashFolders::areEmpty() const {
    std::optional<bool> all = isEmpty(openMacFolder(AT_FDCWD, m_inHome));
    for (const MacVolume& volume : m_volumes) {
        if (all == false) {
            break;
        }
        if (volume.isLocal) {
            const std::optional<bool> one = isEmpty(openOnVolume(volume.mountPoint));
            all = one == true ? all : one;
        }
    }
    return all;
}

/// Only the volume's owner may read ".Trashes", so that it cannot be opened on the way: the kernel's word for where
/// the folder lies takes the place of a look at each step.
MacFolder MacTrashFolders::openOnVolume(const std::string& mountPoint) const {
    const MacFolder top = openMacFolder(AT_FDCWD, mountPoint);
    if (!top.isOpen()) {
        return failed(top.error);
    }
    MacFileDescriptor opened(
        ::openat(top.descriptor.get(), m_onVolume.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!opened) {
        return failed(errno);
    }
    const auto status = macStatusOf(opened.get());
    if (!status.ok()) {
        return failed(status.error());
    }
    const auto topNow = pathNow(top.descriptor.get());
    const bool isThere = topNow && pathNow(opened.get()) == inFolder(*topNow, m_onVolume) &&
                         status.value().identity.device == top.status.identity.device;
    return isThere ? MacFolder{std::move(opened), status.value(), 0} : failed(ELOOP);
}

}  // namespace kestrune
