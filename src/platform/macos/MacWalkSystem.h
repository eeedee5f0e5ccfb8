#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/WalkEntry.h"
#include "platform/macos/MacDirectoryReader.h"
#include "platform/macos/MacFileDescriptor.h"
#include "platform/macos/MacIoPolicy.h"

namespace kestrune {

/// How a walk lists and opens folders on macOS, and stays on one volume: see WalkWorker.h. Listing a folder tells all
/// about its entries. An opened folder is compared with the root by the device that fstat(2) names, which is one for
/// the volumes of a start-up group: below "/" the folders that firmlinks lead to belong to the walk.
class MacWalkSystem final {
public:
    using Folder = MacFileDescriptor;
    using Reader = MacDirectoryReader;
    using Record = MacDirectoryEntry;
    using ThreadPolicy = MacQuietThread;

    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;

        bool operator==(const Identity&) const = default;
    };

    static constexpr bool looksOneByOne = false;
    static constexpr std::size_t levelsAtOnce = 300;  ///< PATH_MAX is 1,024

    /// Opens the folder a walk begins in; a link that leads to one is followed.
    [[nodiscard]] static Folder openRoot(const std::string& path);

    /// Of the device that the open folder lies on; nothing when the system does not tell.
    [[nodiscard]] static std::optional<MacWalkSystem> around(int descriptor);

    [[nodiscard]] static Reader makeReader() { return {}; }

    [[nodiscard]] WalkEntry look(int /*folder*/, const Record& record) const { return record.entry; }

    [[nodiscard]] std::optional<Identity> identityOf(int descriptor) const;
    [[nodiscard]] Folder openBelow(int parent, const char* path) const;

    [[nodiscard]] Folder openAgain(int descriptor) const { return openBelow(descriptor, "."); }

private:
    explicit MacWalkSystem(std::uint64_t device) : m_device(device) {}

    std::uint64_t m_device;
};

}  // namespace kestrune
