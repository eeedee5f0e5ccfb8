#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace kestrune {

/// Runs in a child process without root's rights; answers whether the child was content.
inline bool asOrdinaryUser(const std::function<bool()>& check) {
    const pid_t child = ::fork();
    if (child == 0) {
        const bool dropped = ::geteuid() != 0 || (::setegid(65534) == 0 && ::seteuid(65534) == 0);
        ::_exit(dropped && check() ? 0 : 1);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace kestrune
