#include "platform/linux/LinuxRegularFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

std::optional<std::string> readRegularFile(const std::string& path, std::size_t atMost) {
    const LinuxFileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));

    struct stat status {};

    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string text(std::min(atMost, static_cast<std::size_t>(std::max<off_t>(status.st_size, 0))), '\0');
    std::size_t length = 0;
    while (length < text.size()) {
        const ssize_t count = ::read(file.get(), text.data() + length, text.size() - length);
        if (count == 0 || (count < 0 && errno != EINTR)) {
            break;
        }
        length += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    text.resize(length);
    return text;
}

}  // namespace kestrune
