#include "platform/macos/MacInstanceLock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace kestrune {

namespace {

struct flock wholeFile() {
    struct flock lock {};

    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

}  // namespace

MacInstanceLock::MacInstanceLock(std::string file) : m_file(std::move(file)) {
}

std::optional<std::int32_t> MacInstanceLock::takeOrNameHolder() {
    static_cast<void>(mkdir(m_file.substr(0, m_file.rfind('/')).c_str(), S_IRWXU));
    m_descriptor =
        MacFileDescriptor(open(m_file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    // Whoever has it may end between the two questions: then it is free, and is asked for again.
    for (int attempt = 0; attempt < 3 && m_descriptor; ++attempt) {
        struct flock lock = wholeFile();
        const bool isTaken = fcntl(m_descriptor.get(), F_SETLK, &lock) == -1 && (errno == EACCES || errno == EAGAIN);
        if (!isTaken) {
            return std::nullopt;
        }
        lock = wholeFile();
        if (fcntl(m_descriptor.get(), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK) {
            return lock.l_pid;
        }
    }
    return std::nullopt;
}

}  // namespace kestrune
