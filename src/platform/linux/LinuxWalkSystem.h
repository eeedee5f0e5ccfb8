#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/WalkEntry.h"
#include "platform/linux/LinuxDirectoryReader.h"
#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxWalkNames.h"

namespace kestrune {

/// How a walk lists and opens folders on Linux, and stays on one mount: see WalkWorker.h. A listing tells names and,
/// mostly, kinds; a regular file takes one statx(2).
class LinuxWalkSystem final {
public:
    using Folder = LinuxFileDescriptor;
    using Reader = LinuxDirectoryReader;
    using Record = DirectoryRecord;
    using Listed = LinuxWalkNames;

    struct Identity {
        std::uint32_t deviceMajor = 0;
        std::uint32_t deviceMinor = 0;
        std::uint64_t inode = 0;

        bool operator==(const Identity&) const = default;
    };

    struct ThreadPolicy {};

    static constexpr bool looksOneByOne = true;
    static constexpr std::size_t levelsAtOnce = 1000;

    /// Of the mount that the open folder lies on; nothing when the system does not tell.
    [[nodiscard]] static std::optional<LinuxWalkSystem> around(int descriptor);

    [[nodiscard]] static Reader makeReader() { return Reader(LinuxDirectoryReader::mediumBuffer); }

    [[nodiscard]] WalkEntry look(int folder, const Record& record) const;
    [[nodiscard]] std::optional<Identity> identityOf(int descriptor) const;

    [[nodiscard]] Folder openBelow(int parent, const char* path) const { return openFolderBelow(parent, path); }

    [[nodiscard]] Folder openAgain(int descriptor) const { return openFolderAgain(descriptor); }

private:
    explicit LinuxWalkSystem(std::uint64_t mount) : m_mount(mount) {}

    [[nodiscard]] WalkEntry lookClosely(int folder, const char* name) const;

    std::uint64_t m_mount;
};

}  // namespace kestrune
