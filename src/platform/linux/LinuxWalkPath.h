#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

/// An open folder of a walk.
struct LinuxWalkPlace {
    LinuxFileDescriptor folder;
    std::size_t depth = 0;       ///< below the root of the walk
    std::size_t pathLength = 0;  ///< of its path below the root
};

/// A folder of which some sub-folders are still to be visited.
struct LinuxWalkBranch {
    struct Identity {
        std::uint32_t deviceMajor = 0;
        std::uint32_t deviceMinor = 0;
        std::uint64_t inode = 0;

        bool operator==(const Identity&) const = default;
    };

    LinuxWalkPlace place;              ///< its descriptor may be closed to stay within the bound
    std::string names;                 ///< the waiting sub-folders, each closed by a NUL
    std::optional<Identity> identity;  ///< by which a closed one is recognised
};

/// The branches above the place where a worker stands, outermost first. Few of them keep their descriptor: the
/// outermost, so that there is always a way on, and the innermost ones. The others are found again by climbing. One
/// thread.
class LinuxWalkPath final {
public:
    /// Keeps so many branches open, at least two.
    explicit LinuxWalkPath(std::size_t openAtMost) : m_openAtMost(openAtMost) {}

    [[nodiscard]] bool isEmpty() const { return m_branches.empty(); }

    [[nodiscard]] LinuxWalkBranch& innermost() { return m_branches.back(); }

    void push(LinuxWalkPlace place, std::string names);
    [[nodiscard]] LinuxWalkPlace popInnermost();
    void clear();

    /// Makes sure that the innermost branch has its descriptor, starting from `here`, which lies below it. When what
    /// lies above is not it, the tree was moved: every closed branch is given up. Answers how many were.
    [[nodiscard]] std::int64_t reachInnermost(const LinuxWalkPlace& here);

    /// Cuts off about half of what the outermost branch has waiting, with a descriptor of its own; `keepInnermost`
    /// leaves some of the innermost one, from which the worker goes on. Nothing when there is nothing to spare or no
    /// descriptor to be had. Paths longer than `longestPath` stay where they are: carrying them would cost more than
    /// walking them.
    [[nodiscard]] std::optional<LinuxWalkBranch> cutOff(bool keepInnermost);

    static constexpr std::size_t longestPath = std::size_t{64} * 1024;

private:
    [[nodiscard]] std::size_t branchToCut() const;

    const std::size_t m_openAtMost;
    std::vector<LinuxWalkBranch> m_branches;
    std::size_t m_firstOpen = 1;  ///< m_branches[0] and those from here on have their descriptor
};

}  // namespace kestrune
