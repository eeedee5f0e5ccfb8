#include "platform/macos/MacFileLocation.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <utility>

namespace kestrune {

namespace {

struct Parts {
    std::string folder;
    std::string name;
};

std::optional<Parts> partsOf(const std::string& path) {
    const std::size_t separator = path.find_last_of('/');
    Parts parts;
    parts.name = separator == std::string::npos ? path : path.substr(separator + 1);
    parts.folder = separator == std::string::npos ? "." : path.substr(0, separator + 1);
    const bool namesFile = !parts.name.empty() && parts.name != "." && parts.name != "..";
    if (!namesFile || path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return parts;
}

std::optional<MacFileLocation> locateFrom(int base, const std::string& path) {
    auto parts = partsOf(path);
    if (!parts) {
        return std::nullopt;
    }
    MacFileDescriptor folder(::openat(base, parts->folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
    if (!folder) {
        return std::nullopt;
    }
    return MacFileLocation{std::move(folder), std::move(parts->name)};
}

/// What stands at the location, links not followed: its status, or the errno.
int statusAt(const MacFileLocation& location, struct stat& status) {
    return ::fstatat(location.folder.get(), location.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

std::optional<MacFileLocation> targetOf(const MacFileLocation& link) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlinkat(link.folder.get(), link.name.c_str(), target.data(), target.size());
    if (length <= 0 || static_cast<std::size_t>(length) == target.size()) {
        return std::nullopt;
    }
    auto location = locateFrom(link.folder.get(), std::string(target.data(), static_cast<std::size_t>(length)));

    struct stat status {};

    const bool isUsersFile =
        location && statusAt(*location, status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
    return isUsersFile ? std::move(location) : std::nullopt;
}

/// What file systems answer that do not know a way to sync: fcntl(2), fsync(2).
bool isUnsupported(int error) {
    return error == ENOTSUP || error == EINVAL || error == ENOTTY;
}

}  // namespace

MacMissingFolders::MacMissingFolders(const std::string& path) {
    const auto parts = partsOf(path);
    if (!parts) {
        return;
    }

    struct stat status {};

    if (::stat(parts->folder.c_str(), &status) == 0) {
        m_made = S_ISDIR(status.st_mode);
        return;
    }
    m_made = true;
    std::size_t end = 0;
    while (m_made && (end = parts->folder.find('/', end + 1)) != std::string::npos) {
        m_made = make(parts->folder.substr(0, end));
    }
}

MacMissingFolders::~MacMissingFolders() {
    while (!m_created.empty()) {
        ::rmdir(m_created.back().c_str());
        m_created.pop_back();
    }
}

bool MacMissingFolders::make(const std::string& folder) {
    if (::mkdir(folder.c_str(), S_IRWXU) != 0) {
        // Whatever stands there is looked at when the whole path is opened; EROFS and EACCES come for what exists, too.
        struct stat status {};

        return ::stat(folder.c_str(), &status) == 0;
    }
    m_created.push_back(folder);
    const auto location = locateFrom(AT_FDCWD, folder);
    return location && synced(location->folder.get());
}

std::optional<MacFileLocation> locate(const std::string& path) {
    return locateFrom(AT_FDCWD, path);
}

std::optional<MacFileLocation> locateReplaceable(const std::string& path) {
    auto location = locate(path);
    if (!location) {
        return std::nullopt;
    }

    struct stat status {};

    const int error = statusAt(*location, status);
    if (error == ENOENT || (error == 0 && S_ISREG(status.st_mode))) {
        return location;
    }
    if (error == 0 && S_ISLNK(status.st_mode) && status.st_uid == ::geteuid()) {
        return targetOf(*location);
    }
    return std::nullopt;
}

bool synced(int descriptor) {
    int result = -1;
    do {
        result = ::fcntl(descriptor, F_FULLFSYNC, 0);
    } while (result != 0 && errno == EINTR);
    if (result == 0 || !isUnsupported(errno)) {
        return result == 0;
    }
    do {
        result = ::fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0 || isUnsupported(errno);
}

}  // namespace kestrune
