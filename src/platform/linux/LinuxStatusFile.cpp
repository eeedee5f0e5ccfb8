#include "platform/linux/LinuxStatusFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kestrune {

std::optional<std::string_view> LinuxStatusFile::read(std::size_t atMost) {
    if (!m_descriptor) {
        m_descriptor.reset(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC));
        if (!m_descriptor) {
            return std::nullopt;
        }
    }
    constexpr std::size_t smallest = 512;
    std::size_t length = 0;
    while (length < atMost) {
        if (length == m_buffer.size()) {
            m_buffer.resize(std::min(atMost, std::max(smallest, 4 * length)));
        }
        const std::size_t room = std::min(atMost, m_buffer.size()) - length;
        const ssize_t count = ::pread(m_descriptor.get(), m_buffer.data() + length, room, static_cast<off_t>(length));
        if (count == 0) {
            break;
        }
        if (count > 0) {
            length += static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            m_descriptor.reset();
            return std::nullopt;
        }
    }
    return std::string_view(m_buffer).substr(0, length);
}

}  // namespace kestrune
