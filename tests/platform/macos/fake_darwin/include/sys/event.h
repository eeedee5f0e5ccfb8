#pragma once

#include <sys/types.h>

#include <cstdint>
#include <ctime>

struct kevent {
    std::uintptr_t ident;
    std::int16_t filter;
    std::uint16_t flags;
    std::uint32_t fflags;
    std::intptr_t data;
    void* udata;
};

constexpr std::int16_t EVFILT_READ = -1;
constexpr std::int16_t EVFILT_PROC = -5;
constexpr std::uint16_t EV_ADD = 0x0001;
constexpr std::uint32_t NOTE_EXIT = 0x80000000;

inline void EV_SET(struct kevent* event, std::uintptr_t identifier, std::int16_t filter, std::uint16_t flags,
                   std::uint32_t filterFlags, std::intptr_t data, void* userData) {
    *event = {identifier, filter, flags, filterFlags, data, userData};
}

int kqueue();
int kevent(int queue, const struct kevent* changes, int changeCount, struct kevent* events, int eventCount,
           const timespec* timeout);
