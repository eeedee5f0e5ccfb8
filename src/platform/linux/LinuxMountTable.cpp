#include "platform/linux/LinuxMountTable.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

namespace kestrune {

LinuxMountTable::LinuxMountTable() : m_file(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {
    if (!m_file) {
        m_error = errno;
    }
}

Result<std::vector<LinuxMount>, int> LinuxMountTable::mounts() const {
    if (!m_file) {
        return m_error;
    }
    if (::lseek(m_file.get(), 0, SEEK_SET) != 0) {
        return errno;
    }
    std::string text;
    std::array<char, 65536> piece = {};
    for (;;) {
        const ssize_t length = ::read(m_file.get(), piece.data(), piece.size());
        if (length < 0) {
            return errno;
        }
        if (length == 0) {
            return parseMountInfo(text);
        }
        text.append(piece.data(), static_cast<std::size_t>(length));
    }
}

}  // namespace kestrune
