#include <crt_externs.h>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <map>
#include <mutex>
#include <set>

#undef posix_spawnattr_setflags
#undef posix_spawnattr_setsigdefault
#undef posix_spawn_file_actions_adddup2
#undef posix_spawn_file_actions_destroy
#undef posix_spawnattr_destroy
#undef posix_spawn

// On Linux the flag and the action that are missing become plain close actions, added when the program starts.
namespace {

std::mutex mutex;
std::set<const posix_spawnattr_t*> closing;  // that say POSIX_SPAWN_CLOEXEC_DEFAULT
std::map<const posix_spawn_file_actions_t*, std::set<int>> made;

bool isSaid(const posix_spawnattr_t* attributes) {
    const std::scoped_lock lock(mutex);
    return closing.contains(attributes);
}

std::set<int> madeBy(const posix_spawn_file_actions_t* actions) {
    const std::scoped_lock lock(mutex);
    return made[actions];
}

void note(const posix_spawn_file_actions_t* actions, int descriptor) {
    const std::scoped_lock lock(mutex);
    made[actions].insert(descriptor);
}

}  // namespace

char*** _NSGetEnviron() {
    return &environ;
}

int posix_spawn_file_actions_addinherit_np(posix_spawn_file_actions_t* actions, int descriptor) {
    note(actions, descriptor);
    // Onto itself: an error when it is not open, as there.
    return ::posix_spawn_file_actions_adddup2(actions, descriptor, descriptor);
}

int fake_spawn_actions_adddup2(posix_spawn_file_actions_t* actions, int descriptor, int other) {
    note(actions, other);
    return ::posix_spawn_file_actions_adddup2(actions, descriptor, other);
}

int fake_spawn_actions_destroy(posix_spawn_file_actions_t* actions) {
    {
        const std::scoped_lock lock(mutex);
        made.erase(actions);
    }
    return ::posix_spawn_file_actions_destroy(actions);
}

int fake_spawnattr_setflags(posix_spawnattr_t* attributes, short flags) {
    if ((flags & POSIX_SPAWN_CLOEXEC_DEFAULT) != 0) {
        const std::scoped_lock lock(mutex);
        closing.insert(attributes);
    }
    return ::posix_spawnattr_setflags(attributes, static_cast<short>(flags & ~POSIX_SPAWN_CLOEXEC_DEFAULT));
}

int fake_spawnattr_destroy(posix_spawnattr_t* attributes) {
    {
        const std::scoped_lock lock(mutex);
        closing.erase(attributes);
    }
    return ::posix_spawnattr_destroy(attributes);
}

int fake_spawnattr_setsigdefault(posix_spawnattr_t* attributes, const sigset_t* signals) {
    sigset_t wanted = *signals;
    if (::sigismember(signals, SIGTERM) == 1) {
        // sigfillset leaves out two signals that this C library keeps for itself, and would have the child ignore.
        std::memset(&wanted, 0xFF, sizeof wanted);
    }
    return ::posix_spawnattr_setsigdefault(attributes, &wanted);
}

int fake_spawn(pid_t* pid, const char* path, const posix_spawn_file_actions_t* actions,
               const posix_spawnattr_t* attributes, char* const arguments[], char* const environment[]) {
    if (!isSaid(attributes)) {
        return ::posix_spawn(pid, path, actions, attributes, arguments, environment);
    }
    auto* closed = const_cast<posix_spawn_file_actions_t*>(actions);
    const std::set<int> kept = madeBy(actions);
    for (int standard = 0; standard <= STDERR_FILENO; ++standard) {
        if (!kept.contains(standard)) {
            ::posix_spawn_file_actions_addclose(closed, standard);
        }
    }
    ::posix_spawn_file_actions_addclosefrom_np(closed, STDERR_FILENO + 1);
    return ::posix_spawn(pid, path, closed, attributes, arguments, environment);
}
