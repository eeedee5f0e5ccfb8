#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/macos/MacFileDescriptor.h"

namespace kestrune {

/// A lock that one process at a time has, and that goes with it however it ends: a record lock of fcntl(2) on a file.
/// Unlike flock(2) it tells who has it. It also goes when the process closes any other descriptor of that file, which
/// nothing here opens.
class MacInstanceLock final {
public:
    /// file is made when it is not there; the folder it lies in as well, but not the one above that.
    explicit MacInstanceLock(std::string file);

    /// Takes the lock until this object goes. The process that has it instead; nothing when it is ours, or when this
    /// system gives no lock on that file: then nobody is known to have it. At once.
    [[nodiscard]] std::optional<std::int32_t> takeOrNameHolder();

private:
    std::string m_file;
    MacFileDescriptor m_descriptor;
};

}  // namespace kestrune
