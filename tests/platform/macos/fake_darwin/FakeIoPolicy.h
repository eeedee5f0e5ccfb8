#pragma once

#include <atomic>

namespace kestrune::fake_darwin {

/// What a thread's policy of this type is; 0, the default, until it is set.
int ioPolicyOfThisThread(int type);

/// While true, setiopolicy_np refuses with EINVAL.
std::atomic<bool>& refusesIoPolicies();

}  // namespace kestrune::fake_darwin
