#include "FakeSysctl.h"

#include <sys/sysctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

// Without a buffer the length alone is told; a buffer that is too small is filled and the call fails.
template <typename Table, typename Key>
int answer(const Table& table, const Key& key, void* old, std::size_t* oldLength) {
    const auto found = table.find(key);
    if (found == table.end()) {
        errno = ENOENT;
        return -1;
    }
    const std::string& bytes = found->second;
    if (old == nullptr) {
        *oldLength = bytes.size();
        return 0;
    }
    const bool fits = bytes.size() <= *oldLength;
    *oldLength = std::min(bytes.size(), *oldLength);
    std::memcpy(old, bytes.data(), *oldLength);
    errno = fits ? errno : ENOMEM;
    return fits ? 0 : -1;
}

}  // namespace

namespace kestrune {

FakeSysctl& FakeSysctl::state() {
    static FakeSysctl state;
    return state;
}

void FakeSysctl::reset() {
    state() = {};
}

}  // namespace kestrune

using kestrune::FakeSysctl;

extern "C" {

int sysctl(int* name, u_int nameLength, void* old, std::size_t* oldLength, void* /*replacement*/,
           std::size_t /*replacementLength*/) {
    FakeSysctl& state = FakeSysctl::state();
    const int result = answer(state.byNumbers, std::vector<int>(name, name + nameLength), old, oldLength);
    if (state.onNumbers) {
        state.onNumbers();
    }
    return result;
}

int sysctlbyname(const char* name, void* old, std::size_t* oldLength, void* /*replacement*/,
                 std::size_t /*replacementLength*/) {
    return answer(FakeSysctl::state().byName, std::string(name), old, oldLength);
}

}  // extern "C"
