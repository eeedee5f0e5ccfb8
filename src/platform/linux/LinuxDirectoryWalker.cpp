#include "platform/linux/LinuxDirectoryWalker.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/LinuxDirectoryReader.h"

namespace kestrune {

namespace {

constexpr std::size_t openFoldersAtMost = 56;
constexpr std::int64_t bytesOfBlock = 512;

struct Identity {
    std::uint32_t deviceMajor = 0;
    std::uint32_t deviceMinor = 0;
    std::uint64_t inode = 0;

    bool operator==(const Identity&) const = default;
};

std::optional<Identity> identityOf(int descriptor) {
    struct statx status {};

    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_INO, &status) != 0) {
        return std::nullopt;
    }
    return Identity{status.stx_dev_major, status.stx_dev_minor, status.stx_ino};
}

/// Where the walk stands: an open folder and its depth below the root.
struct Place {
    LinuxFileDescriptor folder;
    std::size_t depth = 0;
};

/// A folder on the way down that still has sub-folders to visit. Its descriptor may be closed to stay within the
/// bound; then it is found again by climbing, and recognised by its identity.
struct Branch {
    Place place;
    std::size_t firstName = 0;  ///< where its waiting names begin in m_names
    std::optional<Identity> identity;
};

/// One walk. Depth first: a folder is listed whole, its sub-folders wait by name on one shared stack, and a folder
/// whose last sub-folder is being visited is given up, so that a chain of folders, however long, needs two descriptors.
class Walk final {
public:
    explicit Walk(const DirectoryWalker::Cancelled& cancelled) : m_cancelled(cancelled) {}

    TreeSize run(const std::string& folder) {
        m_here.folder = openRoot(folder);
        if (!m_here.folder) {
            return {};
        }
        m_size.opened = true;
        list();
        while (m_size.opened && !m_size.cancelled && !m_branches.empty()) {
            if (enterNext()) {
                list();
            }
        }
        return m_size.opened ? m_size : TreeSize{};
    }

private:
    LinuxFileDescriptor openRoot(const std::string& folder) {
        LinuxFileDescriptor root = openFolderToWalk(folder);

        struct statx status {};

        if (root && ::statx(root.get(), "", AT_EMPTY_PATH, STATX_MNT_ID, &status) == 0) {
            m_mount = status.stx_mnt_id;
            return root;
        }
        return {};
    }

    void list() {
        const std::size_t firstName = m_names.size();
        m_reader.begin(m_here.folder.get());
        bool seenAny = false;
        while (const auto record = m_reader.next()) {
            seenAny = true;
            if (m_cancelled && m_cancelled()) {
                m_size.cancelled = true;
                return;
            }
            ++m_size.entries;
            take(*record);
        }
        if (m_reader.failed()) {
            ++m_size.unreadable;
            m_size.opened = seenAny || m_here.depth > 0;
        }
        if (m_names.size() > firstName) {
            m_branches.push_back({std::move(m_here), firstName, std::nullopt});
            closeOldest();
        }
    }

    void take(const DirectoryRecord& record) {
        switch (record.type) {
            case DT_DIR:
                keepForLater(record.name);
                break;
            case DT_REG:
            case DT_UNKNOWN:
                look(record.name);
                break;
            default:
                break;  // links, FIFOs, sockets and devices hold nothing of their own
        }
    }

    void keepForLater(const char* name) {
        m_names += name;
        m_names += '\0';
    }

    void look(const char* name) {
        struct statx status {};

        constexpr int how = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
        constexpr unsigned wanted = STATX_TYPE | STATX_BLOCKS | STATX_MNT_ID;
        if (::statx(m_here.folder.get(), name, how, wanted, &status) != 0) {
            ++m_size.unreadable;
        } else if (S_ISDIR(status.stx_mode)) {
            keepForLater(name);
        } else if (S_ISREG(status.stx_mode) && status.stx_mnt_id == m_mount) {
            addBlocks(status.stx_blocks);
        }
    }

    void addBlocks(std::uint64_t blocks) {
        std::int64_t bytes = 0;
        if (__builtin_mul_overflow(blocks, bytesOfBlock, &bytes) ||
            __builtin_add_overflow(m_size.allocatedBytes, bytes, &m_size.allocatedBytes)) {
            std::abort();
        }
    }

    /// Opens the next waiting folder of the innermost branch. False when it could not be opened, or not be reached.
    bool enterNext() {
        if (!m_branches.back().place.folder && !climbBack()) {
            return false;
        }
        Branch& branch = m_branches.back();
        const std::size_t before = m_names.rfind('\0', m_names.size() - 2);
        const std::size_t start =
            before == std::string::npos || before < branch.firstName ? branch.firstName : before + 1;
        LinuxFileDescriptor next = openFolderBelow(branch.place.folder.get(), m_names.data() + start);
        if (!next && errno != EXDEV) {
            ++m_size.unreadable;
        }
        m_names.resize(start);
        const std::size_t depth = branch.place.depth + 1;
        if (start == branch.firstName) {
            m_here = std::move(branch.place);
            m_branches.pop_back();
            m_firstOpen = std::min(m_firstOpen, std::max<std::size_t>(m_branches.size(), 1));
        }
        if (!next) {
            return false;
        }
        m_here = {std::move(next), depth};
        return true;
    }

    /// The outermost branch stays open, so that there is always a way on; after it, the innermost ones do.
    void closeOldest() {
        const std::size_t open = 1 + m_branches.size() - m_firstOpen;
        if (m_branches.size() > m_firstOpen && open > openFoldersAtMost) {
            Branch& oldest = m_branches[m_firstOpen];
            oldest.identity = identityOf(oldest.place.folder.get());
            oldest.place.folder.reset();
            ++m_firstOpen;
        }
    }

    /// Finds the innermost branch again from where the walk stands. When what lies above is not it, the tree was moved:
    /// every closed branch is then given up and counted as left half-way.
    bool climbBack() {
        Branch& branch = m_branches.back();
        LinuxFileDescriptor found = openFolderAbove(m_here.folder.get(), m_here.depth - branch.place.depth);
        if (found && branch.identity && identityOf(found.get()) == branch.identity) {
            branch.place.folder = std::move(found);
            m_firstOpen = m_branches.size() - 1;
            return true;
        }
        m_size.unreadable += static_cast<std::int64_t>(m_branches.size() - 1);
        m_names.resize(m_branches[1].firstName);
        m_branches.resize(1);
        m_firstOpen = 1;
        return false;
    }

    const DirectoryWalker::Cancelled& m_cancelled;
    TreeSize m_size;
    LinuxDirectoryReader m_reader;
    Place m_here;
    std::vector<Branch> m_branches;
    std::size_t m_firstOpen = 1;  ///< m_branches[0] and those from here on have their descriptor
    std::string m_names;          ///< the waiting names, each closed by a NUL
    std::uint64_t m_mount = 0;
};

}  // namespace

TreeWalk LinuxDirectoryWalker::walk(const WalkRequest& request) {
    const TreeSize size = Walk(request.cancelled).run(request.folder);
    TreeWalk found;
    found.exists = found.opened = size.opened;
    found.entries = size.entries;
    found.bytes = size.allocatedBytes;
    found.unreadable = size.unreadable;
    found.end = size.cancelled ? WalkEnd::cancelled : WalkEnd::finished;
    return found;
}

}  // namespace kestrune
