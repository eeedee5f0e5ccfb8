#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// A name inside a folder and what the file system says it is.
struct DirectoryRecord {
    const char* name = nullptr;  ///< valid until the next call of the reader
    unsigned char type = 0;      ///< DT_DIR, DT_REG … DT_UNKNOWN
    std::uint64_t inode = 0;
};

/// Lists open folders through getdents64(2) with one buffer. One thread at a time.
class LinuxDirectoryReader final {
public:
    static constexpr std::size_t largeBuffer = std::size_t{256} * 1024;  ///< for trees of files
    static constexpr std::size_t mediumBuffer = std::size_t{32} * 1024;  ///< for one of many that walk together
    static constexpr std::size_t smallBuffer = std::size_t{16} * 1024;   ///< for who lists little and keeps the reader

    /// A reader whose buffer takes this many bytes.
    explicit LinuxDirectoryReader(std::size_t bufferBytes = largeBuffer);

    /// Turns to another folder; descriptor stands at its beginning and stays open until the last record was read.
    void begin(int descriptor);

    /// The next record, "." and ".." left out; nothing at the end or when the system fails (see failed()).
    [[nodiscard]] std::optional<DirectoryRecord> next();

    /// How many records, up to atMost, next() gives without asking the system. Asks it when there are none; 0 then
    /// means what nothing means to next().
    [[nodiscard]] std::size_t ready(std::size_t atMost);

    /// The next of the records that were read ahead; never asks the system.
    [[nodiscard]] std::optional<DirectoryRecord> nextAhead();

    /// How many bytes of records were read ahead.
    [[nodiscard]] std::size_t bytesAhead() const { return m_filled - m_position; }

    /// Whether the last next() or ready() ended because the folder could not be read on.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    [[nodiscard]] bool fill();

    const std::size_t m_bufferBytes;
    const std::unique_ptr<char[]> m_buffer;
    int m_descriptor = -1;
    std::size_t m_filled = 0;
    std::size_t m_position = 0;
    bool m_failed = false;
};

/// Opens the folder a walk begins in; a link that leads to one is followed.
[[nodiscard]] LinuxFileDescriptor openFolderToWalk(const std::string& path);

/// Opens the folder at path below (or, with "../", above) parent for listing: no link is followed, no mount point
/// entered, nothing but a folder opened. errno tells why when there is none; EXDEV is a mount point.
[[nodiscard]] LinuxFileDescriptor openFolderBelow(int parent, const char* path);

/// Opens a folder once more: unlike a duplicated descriptor, it shares no position and no counter with the first.
[[nodiscard]] LinuxFileDescriptor openFolderAgain(int descriptor);

}  // namespace kestrune
