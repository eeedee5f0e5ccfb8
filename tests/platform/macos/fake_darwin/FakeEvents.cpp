#include "tests/platform/macos/fake_darwin/FakeEvents.h"

#include <poll.h>
#include <sys/event.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace {

struct Watched {
    struct kevent event;
    std::string openFile;  ///< what the descriptor stood for: closed descriptors leave a queue by themselves
};

std::mutex mutex;
std::map<int, std::vector<Watched>> queues;
std::atomic<FakeEvents::EndTold> endTold{FakeEvents::EndTold::whenItEnded};
std::atomic<int> waits{0};

std::string openFileOf(int descriptor) {
    std::array<char, 64> text{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), text.data(), text.size());
    return length < 0 ? std::string() : std::string(text.data(), static_cast<std::size_t>(length));
}

int addTo(int queue, const struct kevent& change) {
    if (change.filter == EVFILT_PROC && endTold == FakeEvents::EndTold::never) {
        errno = ESRCH;
        return -1;
    }
    const bool isFile = change.filter == EVFILT_READ;
    const std::scoped_lock lock(mutex);
    queues[queue].push_back({change, isFile ? openFileOf(static_cast<int>(change.ident)) : std::string()});
    return 0;
}

// A descriptor that polls readable when the watched thing happens; the caller closes those of processes.
int descriptorOf(const Watched& watched) {
    const int number = static_cast<int>(watched.event.ident);
    if (watched.event.filter == EVFILT_READ) {
        return openFileOf(number) == watched.openFile ? number : -1;
    }
    if (endTold == FakeEvents::EndTold::beforeItCanReap) {
        return ::eventfd(1, EFD_CLOEXEC);
    }
    return static_cast<int>(::syscall(SYS_pidfd_open, number, 0));
}

std::vector<Watched> contentOf(int queue) {
    const std::scoped_lock lock(mutex);
    return queues[queue];
}

void forget(int queue, const struct kevent& event) {
    const std::scoped_lock lock(mutex);
    std::erase_if(queues[queue], [&](const Watched& one) {
        return one.event.filter == event.filter && one.event.ident == event.ident;
    });
}

}  // namespace

namespace FakeEvents {

void tellEnd(EndTold how) {
    endTold = how;
}

int takeWaits() {
    return waits.exchange(0);
}

}  // namespace FakeEvents

int kqueue() {
    const int queue = ::eventfd(0, EFD_CLOEXEC);
    const std::scoped_lock lock(mutex);
    queues[queue].clear();
    return queue;
}

int kevent(int queue, const struct kevent* changes, int changeCount, struct kevent* events, int eventCount,
           const timespec* timeout) {
    if (changeCount == 1) {
        return addTo(queue, *changes);
    }
    ++waits;
    const std::vector<Watched> content = contentOf(queue);
    std::vector<pollfd> polled;
    for (const Watched& watched : content) {
        polled.push_back({descriptorOf(watched), POLLIN, 0});
    }
    const int ready = ::ppoll(polled.data(), polled.size(), timeout, nullptr);
    int count = 0;
    for (std::size_t i = 0; i < content.size(); ++i) {
        if (ready > 0 && polled[i].revents != 0 && count < eventCount) {
            events[count++] = content[i].event;
        }
        if (content[i].event.filter == EVFILT_PROC) {
            ::close(polled[i].fd);
            // The end of a process is told once.
            if (ready > 0 && polled[i].revents != 0) {
                forget(queue, content[i].event);
            }
        }
    }
    return ready < 0 ? -1 : count;
}
