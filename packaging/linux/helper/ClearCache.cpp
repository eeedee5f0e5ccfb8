// Lets the kernel drop its clean page cache, dentries and inodes: the one thing Kestrune asks administrator rights for.
// polkit runs it as root, so it takes no arguments, looks at no environment variable and opens one fixed file. Nothing
// is written to disk first: what is still to be written stays in memory, and an unreachable volume cannot hold this up.
// Ends with 0 when it is done, 1 when the system refuses, 2 when it was given arguments.

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr const char* switchFile = "/proc/sys/vm/drop_caches";

// 1 stands for the page cache and 2 for dentries and inodes (Documentation/admin-guide/sysctl/vm.rst).
constexpr std::string_view everything = "3\n";

// 0, or the errno.
int dropCaches() {
    const int file = ::open(switchFile, O_WRONLY | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0) {
        return errno;
    }
    const ssize_t written = ::write(file, everything.data(), everything.size());
    const int error = written < 0 ? errno : 0;
    ::close(file);
    return error;
}

}  // namespace

int main(int argumentCount, char** /*arguments*/) {
    if (argumentCount != 1) {
        static_cast<void>(std::fputs("kestrune-clear-cache takes no arguments.\n", stderr));
        return 2;
    }
    if (const int error = dropCaches(); error != 0) {
        static_cast<void>(std::fprintf(stderr, "Cached memory could not be cleared: %s\n", std::strerror(error)));
        return 1;
    }
    return 0;
}
