// What the stand-ins for the calls around processes promise, held against the system's own headers.
#include <crt_externs.h>
#include <spawn.h>
#include <sys/event.h>

#include <cstddef>
#include <type_traits>

namespace {

// Starting tools.
static_assert(POSIX_SPAWN_CLOEXEC_DEFAULT == 0x4000);
static_assert(POSIX_SPAWN_SETSIGDEF == 0x0004);
static_assert(POSIX_SPAWN_SETSIGMASK == 0x0008);
static_assert(std::is_same_v<decltype(_NSGetEnviron()), char***>);
static_assert(
    std::is_same_v<
        decltype(posix_spawn_file_actions_addinherit_np(static_cast<posix_spawn_file_actions_t*>(nullptr), 0)), int>);

// Waiting for them.
static_assert(EVFILT_READ == -1);
static_assert(EVFILT_PROC == -5);
static_assert(EV_ADD == 0x0001);
static_assert(NOTE_EXIT == 0x80000000);
static_assert(sizeof(struct kevent) == 32);
static_assert(offsetof(struct kevent, ident) == 0);
static_assert(offsetof(struct kevent, filter) == 8);
static_assert(offsetof(struct kevent, flags) == 10);
static_assert(offsetof(struct kevent, fflags) == 12);
static_assert(offsetof(struct kevent, data) == 16);
static_assert(offsetof(struct kevent, udata) == 24);

}  // namespace
