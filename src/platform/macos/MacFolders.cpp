#include "platform/macos/MacFolders.h"

#include <fcntl.h>
#include <sys/syslimits.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "base/Text.h"

namespace kestrune {

namespace {

MacFolder failed(int error) {
    MacFolder folder;
    folder.error = error;
    return folder;
}

/// Systems differ in what they say about a link that O_DIRECTORY and O_NOFOLLOW both refuse.
int reasonOf(int error, int folder, const std::string& name) {
    if (error != ENOTDIR && error != ELOOP) {
        return error;
    }
    const auto found = macStatusIn(folder, name);
    return found.ok() && found.value().isLink() ? ELOOP : ENOTDIR;
}

MacFolder withStatus(MacFileDescriptor descriptor) {
    const auto status = macStatusOf(descriptor.get());
    return status.ok() ? MacFolder{std::move(descriptor), status.value(), 0} : failed(status.error());
}

}  // namespace

MacFolder openMacFolder(int start, const std::string& path) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    MacFileDescriptor current(::openat(start, path.starts_with('/') ? "/" : ".", flags));
    if (!current) {
        return failed(errno);
    }
    for (const std::string& name : split(path, '/')) {
        if (name.empty()) {
            continue;
        }
        MacFileDescriptor next(::openat(current.get(), name.c_str(), flags));
        if (!next) {
            return failed(reasonOf(errno, current.get(), name));
        }
        current = std::move(next);
    }
    return withStatus(std::move(current));
}

std::optional<std::string> pathNow(int descriptor) {
    std::array<char, PATH_MAX> path{};
    return ::fcntl(descriptor, F_GETPATH, path.data()) == 0 ? std::optional<std::string>(path.data()) : std::nullopt;
}

int renameIfFree(int fromFolder, const std::string& from, int toFolder, const std::string& to) {
    return ::renameatx_np(fromFolder, from.c_str(), toFolder, to.c_str(), RENAME_EXCL) == 0 ? 0 : errno;
}

}  // namespace kestrune
