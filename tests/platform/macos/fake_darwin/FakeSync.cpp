#include "tests/platform/macos/fake_darwin/FakeSync.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace kestrune::fake_darwin {

std::atomic<int>& fullSyncError() {
    static std::atomic<int> error{0};
    return error;
}

std::atomic<int>& fullSyncs() {
    static std::atomic<int> count{0};
    return count;
}

}  // namespace kestrune::fake_darwin

int fcntl(int descriptor, int command, int argument) {
    using namespace kestrune::fake_darwin;
    if (command != F_FULLFSYNC) {
        return static_cast<int>(::syscall(SYS_fcntl, descriptor, command, argument));
    }
    if (fullSyncError() != 0) {
        errno = fullSyncError();
        return -1;
    }
    ++fullSyncs();
    return ::fsync(descriptor);
}
