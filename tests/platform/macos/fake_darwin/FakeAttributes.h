#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace kestrune::fake_darwin {

/// An entry of a folder before getattrlistbulk packs it.
struct Entry {
    std::string name;
    std::uint32_t type = 0;  ///< enum vtype of the system: 1 a file, 2 a folder, 5 a link
    std::uint32_t flags = 0;
    std::uint32_t mountStatus = 0;
    std::uint32_t error = 0;
    std::int64_t allocatedBytes = 0;
    bool tellsType = true;
    bool tellsFlags = true;
    bool tellsMountStatus = true;
    bool tellsAllocatedBytes = true;
};

/// How getattrlistbulk behaves, which serves real folders; reset by `attributes() = {}` in a test's fixture. The
/// settings may only change while no walk runs.
struct Attributes {
    std::function<void(Entry&)> change;                    ///< of each entry; several threads at once
    std::function<void(char* buffer, std::size_t)> spoil;  ///< of the packed entries of a call
    bool needsSearch = false;                              ///< EACCES for a folder that may be read but not searched
    int failingCall = 0;                                   ///< the number of the call that fails, from 1 on
    int error = 0;                                         ///< its errno
    std::size_t entriesOfCall = 1000000;                   ///< at most
};

Attributes& attributes();

/// Calls since the last `callsOfBulk() = 0`, and those from a thread that would have fetched what lies in a cloud.
std::atomic<int>& callsOfBulk();
std::atomic<int>& fetchingCallsOfBulk();

/// An entry as getattrlistbulk packs it where everything is asked for, its length included.
std::string packed(const Entry& entry);

}  // namespace kestrune::fake_darwin
