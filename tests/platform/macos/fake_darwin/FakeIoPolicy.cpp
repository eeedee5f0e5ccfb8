#include "tests/platform/macos/fake_darwin/FakeIoPolicy.h"

#include <sys/resource.h>

#include <cerrno>
#include <map>

namespace kestrune::fake_darwin {

namespace {

std::map<int, int>& policies() {
    static thread_local std::map<int, int> ofThisThread;
    return ofThisThread;
}

}  // namespace

int ioPolicyOfThisThread(int type) {
    return policies()[type];
}

std::atomic<bool>& refusesIoPolicies() {
    static std::atomic<bool> refuses{false};
    return refuses;
}

}  // namespace kestrune::fake_darwin

int getiopolicy_np(int type, int scope) {
    if (scope != IOPOL_SCOPE_THREAD) {
        errno = EINVAL;
        return -1;
    }
    return kestrune::fake_darwin::ioPolicyOfThisThread(type);
}

int setiopolicy_np(int type, int scope, int policy) {
    if (scope != IOPOL_SCOPE_THREAD || kestrune::fake_darwin::refusesIoPolicies()) {
        errno = EINVAL;
        return -1;
    }
    kestrune::fake_darwin::policies()[type] = policy;
    return 0;
}
