#pragma once

#include <atomic>

namespace kestrune::fake_darwin {

/// The errno of F_FULLFSYNC, 0 while it works, and how often it did.
std::atomic<int>& fullSyncError();
std::atomic<int>& fullSyncs();

}  // namespace kestrune::fake_darwin
