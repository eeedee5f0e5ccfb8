#include "platform/macos/MacEventQueue.h"

#include <sys/event.h>

#include <array>
#include <cerrno>
#include <cstdint>

namespace kestrune {

namespace {

// kqueue(2): nothing is retrieved when there is no room for it, so errors come back as errno.
bool add(int queue, std::uintptr_t identifier, std::int16_t filter, std::uint32_t what) {
    struct kevent change {};

    EV_SET(&change, identifier, filter, EV_ADD, what, 0, nullptr);
    int result = 0;
    do {
        result = ::kevent(queue, &change, 1, nullptr, 0, nullptr);
    } while (result < 0 && errno == EINTR);
    return result == 0;
}

timespec timeOf(std::chrono::milliseconds duration) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
    timespec time{};
    time.tv_sec = static_cast<decltype(time.tv_sec)>(seconds.count());
    time.tv_nsec = static_cast<decltype(time.tv_nsec)>(std::chrono::nanoseconds(duration - seconds).count());
    return time;
}

}  // namespace

// A queue is not inherited by processes that this one starts.
MacEventQueue::MacEventQueue() : m_queue(::kqueue()) {
}

bool MacEventQueue::watchReading(int descriptor) {
    return add(m_queue.get(), static_cast<std::uintptr_t>(descriptor), EVFILT_READ, 0);
}

bool MacEventQueue::watchEnd(pid_t pid) {
    return add(m_queue.get(), static_cast<std::uintptr_t>(pid), EVFILT_PROC, NOTE_EXIT);
}

MacEventQueue::Events MacEventQueue::wait(std::chrono::milliseconds longest) {
    std::array<struct kevent, 2> came{};
    const timespec timeout = timeOf(longest);
    const int count = ::kevent(m_queue.get(), nullptr, 0, came.data(), static_cast<int>(came.size()), &timeout);
    Events events;
    for (std::size_t i = 0; count > 0 && i < static_cast<std::size_t>(count); ++i) {
        events.isReadable = events.isReadable || came[i].filter == EVFILT_READ;
        events.hasEnded = events.hasEnded || came[i].filter == EVFILT_PROC;
    }
    return events;
}

}  // namespace kestrune
