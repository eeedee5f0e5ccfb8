#include "platform/macos/MacFileStore.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "platform/macos/MacFileDescriptor.h"
#include "platform/macos/MacFileLocation.h"
#include "platform/macos/MacTemporaryFile.h"

namespace kestrune {

namespace {

constexpr int asideNumbersAtMost = 9999;

FileContent failed(ReadFailure failure) {
    return {std::nullopt, failure};
}

FileContent readUpTo(int descriptor, std::size_t expected, std::size_t maxBytes) {
    std::string bytes(std::min(expected, maxBytes) + 1, '\0');
    std::size_t filled = 0;
    while (true) {
        const ssize_t got = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return failed(ReadFailure::unreadable);
        }
        filled += static_cast<std::size_t>(got);
        if (filled > maxBytes) {
            return failed(ReadFailure::tooLarge);
        }
        if (got == 0) {
            bytes.resize(filled);
            return {std::move(bytes), ReadFailure::missing};
        }
        if (filled == bytes.size()) {  // the file grew since it was looked at
            bytes.resize(std::min(bytes.size() * 2, maxBytes + 1));
        }
    }
}

}  // namespace

FileContent MacFileStore::read(const std::string& path, std::size_t maxBytes) const {
    if (path.find('\0') != std::string::npos) {
        return failed(ReadFailure::missing);
    }
    const MacFileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file) {
        return failed(errno == ENOENT || errno == ENOTDIR ? ReadFailure::missing : ReadFailure::unreadable);
    }

    struct stat status {};

    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return failed(ReadFailure::unreadable);
    }
    const auto length = static_cast<std::size_t>(status.st_size);
    return length > maxBytes ? failed(ReadFailure::tooLarge) : readUpTo(file.get(), length, maxBytes);
}

bool MacFileStore::replace(const std::string& path, std::string_view bytes) {
    MacMissingFolders folders(path);
    if (!folders.made()) {
        return false;
    }
    const auto location = locateReplaceable(path);
    if (!location) {
        return false;
    }
    MacTemporaryFile::removeLeftovers(*location);
    MacTemporaryFile file(*location);
    if (!file.created() || !file.finish(bytes) || !file.replaceOriginal()) {
        return false;
    }
    folders.keep();
    return synced(location->folder.get());
}

bool MacFileStore::setAside(const std::string& path) {
    const auto location = locate(path);
    if (!location) {
        return false;
    }
    const int folder = location->folder.get();
    for (int number = 1; number <= asideNumbersAtMost; ++number) {
        const std::string aside = location->name + ".unreadable-" + std::to_string(number);
        if (::renameatx_np(folder, location->name.c_str(), folder, aside.c_str(), RENAME_EXCL) == 0) {
            return synced(folder);
        }
        if (errno != EEXIST) {
            return false;
        }
    }
    return false;
}

}  // namespace kestrune
