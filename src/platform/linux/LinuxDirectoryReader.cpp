#include "platform/linux/LinuxDirectoryReader.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kestrune {

namespace {

constexpr unsigned folderFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;

LinuxFileDescriptor openWith(int parent, const char* path, unsigned flags, unsigned resolve) {
    open_how how{};
    how.flags = flags;
    how.resolve = resolve;
    long descriptor = -1;
    do {
        descriptor = ::syscall(SYS_openat2, parent, path, &how, sizeof how);
    } while (descriptor < 0 && errno == EINTR);
    return LinuxFileDescriptor(static_cast<int>(descriptor));
}

// Looking is no use of a folder, so its access time stays; only its owner may ask for that.
LinuxFileDescriptor openQuietly(int parent, const char* path, unsigned flags, unsigned resolve) {
    LinuxFileDescriptor folder = openWith(parent, path, flags | O_NOATIME, resolve);
    if (!folder && errno == EPERM) {
        folder = openWith(parent, path, flags, resolve);
    }
    return folder;
}

LinuxFileDescriptor openWithinMount(int parent, const char* path) {
    return openQuietly(parent, path, folderFlags | O_NOFOLLOW, RESOLVE_NO_XDEV | RESOLVE_NO_SYMLINKS);
}

const dirent64& recordAt(const char* place) {
    return *reinterpret_cast<const dirent64*>(place);
}

bool isSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

}  // namespace

LinuxDirectoryReader::LinuxDirectoryReader(std::size_t bufferBytes)
    : m_bufferBytes(bufferBytes), m_buffer(std::make_unique_for_overwrite<char[]>(bufferBytes)) {
}

void LinuxDirectoryReader::begin(int descriptor) {
    m_descriptor = descriptor;
    m_filled = 0;
    m_position = 0;
    m_failed = false;
}

std::optional<DirectoryRecord> LinuxDirectoryReader::nextAhead() {
    while (m_position < m_filled) {
        const dirent64& record = recordAt(m_buffer.get() + m_position);
        m_position += record.d_reclen;
        if (!isSelfOrParent(record.d_name)) {
            return DirectoryRecord{record.d_name, record.d_type, record.d_ino};
        }
    }
    return std::nullopt;
}

std::optional<DirectoryRecord> LinuxDirectoryReader::next() {
    std::optional<DirectoryRecord> record = nextAhead();
    while (!record && fill()) {
        record = nextAhead();
    }
    return record;
}

std::size_t LinuxDirectoryReader::ready(std::size_t atMost) {
    std::size_t count = 0;
    do {
        for (std::size_t position = m_position; position < m_filled && count < atMost;) {
            const dirent64& record = recordAt(m_buffer.get() + position);
            position += record.d_reclen;
            count += isSelfOrParent(record.d_name) ? 0U : 1U;
        }
    } while (count == 0 && fill());
    return count;
}

bool LinuxDirectoryReader::fill() {
    ssize_t got = -1;
    do {
        got = ::getdents64(m_descriptor, m_buffer.get(), m_bufferBytes);
    } while (got < 0 && errno == EINTR);
    m_failed = got < 0;
    m_filled = static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    m_position = 0;
    return m_filled > 0;
}

LinuxFileDescriptor openFolderToWalk(const std::string& path) {
    if (path.find('\0') != std::string::npos) {
        errno = ENOENT;  // no name holds a NUL
        return {};
    }
    return openQuietly(AT_FDCWD, path.c_str(), folderFlags, 0);
}

LinuxFileDescriptor openFolderBelow(int parent, const char* path) {
    return openWithinMount(parent, path);
}

LinuxFileDescriptor openFolderAgain(int descriptor) {
    return openWithinMount(descriptor, ".");
}

}  // namespace kestrune
