#pragma once

#include <string>
#include <string_view>

#include "platform/macos/MacFileDescriptor.h"
#include "platform/macos/MacFileLocation.h"

namespace kestrune {

/// A new file beside the one it is going to replace. Removed when it goes away without having replaced it. The file is
/// locked (flock(2)) for as long as its writer lives, so that others can tell it from what a killed one left behind.
/// One thread; the location outlives it.
class MacTemporaryFile final {
public:
    /// Makes the file with mode 0600; see created().
    explicit MacTemporaryFile(const MacFileLocation& location);
    MacTemporaryFile(const MacTemporaryFile&) = delete;
    MacTemporaryFile& operator=(const MacTemporaryFile&) = delete;
    ~MacTemporaryFile();

    [[nodiscard]] bool created() const { return static_cast<bool>(m_file); }

    /// The file, for what is not written by finish(); open until this object goes away.
    [[nodiscard]] int descriptor() const { return m_lock.get(); }

    /// Writes all bytes, puts them on disk and closes the file. False when any of that fails.
    [[nodiscard]] bool finish(std::string_view bytes);

    /// Renames the finished file over the location's.
    [[nodiscard]] bool replaceOriginal();

    /// Removes what killed writers of the same file left in its folder.
    static void removeLeftovers(const MacFileLocation& location);

private:
    [[nodiscard]] bool create();

    const MacFileLocation& m_location;
    std::string m_name;
    MacFileDescriptor m_file;
    MacFileDescriptor m_lock;  ///< the same open file: keeps the lock until the rename is done
};

}  // namespace kestrune
