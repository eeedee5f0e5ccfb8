#include "platform/linux/LinuxMoveWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace kestrune {

LinuxMoveWatch::LinuxMoveWatch(int fromFolder, int toFolder)
    : m_events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), m_from(watch(fromFolder)), m_to(watch(toFolder)) {
}

int LinuxMoveWatch::watch(int folder) const {
    const std::string path = "/proc/self/fd/" + std::to_string(folder);
    return ::inotify_add_watch(m_events.get(), path.c_str(), IN_MOVE | IN_CREATE | IN_DELETE | IN_ONLYDIR);
}

bool LinuxMoveWatch::cameStraight(const std::string& from, const std::string& to) {
    if (m_from < 0 || m_to < 0 || m_from == m_to) {
        return false;
    }
    std::optional<std::uint32_t> leaving;  // the number that the two halves of a rename share
    bool straight = false;
    std::array<char, 16384> bytes = {};
    for (;;) {
        const ssize_t length = ::read(m_events.get(), bytes.data(), bytes.size());
        if (length <= 0) {
            return straight;
        }
        for (std::size_t place = 0; place < static_cast<std::size_t>(length);) {
            inotify_event event = {};
            std::memcpy(&event, bytes.data() + place, sizeof event);
            const std::string name = event.len == 0 ? std::string() : std::string(bytes.data() + place + sizeof event);
            place += sizeof event + event.len;
            if ((event.mask & IN_Q_OVERFLOW) != 0) {
                return false;
            }
            if (event.wd == m_from && name == from && (event.mask & IN_MOVED_FROM) != 0) {
                leaving = event.cookie;
            } else if (event.wd == m_to && name == to) {
                straight = (event.mask & IN_MOVED_TO) != 0 && leaving == event.cookie;
            }
        }
    }
}

}  // namespace kestrune
