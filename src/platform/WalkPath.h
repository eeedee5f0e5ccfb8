#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrune {

/// An open folder of a walk.
template <class Folder>
struct WalkPlace {
    Folder folder;
    std::size_t depth = 0;       ///< below the root of the walk
    std::size_t pathLength = 0;  ///< of its path below the root
};

/// Where names, each closed by a NUL, fall into two parts of about the same size, neither of them empty; 0 where there
/// is only one name.
[[nodiscard]] inline std::size_t middleOfNames(const std::string& names) {
    const std::size_t middle = names.find('\0', names.size() / 2) + 1;
    return middle < names.size() ? middle : names.rfind('\0', names.size() - 2) + 1;
}

/// The branches above the place where a worker stands, outermost first. Few of them keep their descriptor: the
/// outermost, so that there is always a way on, and the innermost ones. The others are found again by climbing. System
/// is that of WalkWorker.h. One thread.
template <class System>
class WalkPath final {
public:
    using Folder = typename System::Folder;
    using Place = WalkPlace<Folder>;

    /// A folder of which some sub-folders are still to be visited.
    struct Branch {
        Place place;                                        ///< its descriptor may be closed to stay within the bound
        std::string names;                                  ///< the waiting sub-folders, each closed by a NUL
        std::optional<typename System::Identity> identity;  ///< by which a closed one is recognised
    };

    static constexpr std::size_t longestPath = std::size_t{64} * 1024;

    /// Keeps so many branches open, at least two.
    WalkPath(const System& system, std::size_t openAtMost) : m_system(system), m_openAtMost(openAtMost) {}

    [[nodiscard]] bool isEmpty() const { return m_branches.empty(); }

    [[nodiscard]] Branch& innermost() { return m_branches.back(); }

    void push(Place place, std::string names) {
        m_branches.push_back({std::move(place), std::move(names), std::nullopt});
        const std::size_t open = 1 + m_branches.size() - m_firstOpen;
        if (m_branches.size() > m_firstOpen && open > m_openAtMost) {
            Branch& oldest = m_branches[m_firstOpen];
            oldest.identity = m_system.identityOf(oldest.place.folder.get());
            oldest.place.folder.reset();
            ++m_firstOpen;
        }
    }

    [[nodiscard]] Place popInnermost() {
        Place place = std::move(m_branches.back().place);
        m_branches.pop_back();
        m_firstOpen = std::min(m_firstOpen, std::max<std::size_t>(m_branches.size(), 1));
        return place;
    }

    void clear() {
        m_branches.clear();
        m_firstOpen = 1;
    }

    /// Makes sure that the innermost branch has its descriptor, starting from `here`, which lies below it. When what
    /// lies above is not it, the tree was moved: every closed branch is given up. Answers how many were.
    [[nodiscard]] std::int64_t reachInnermost(const Place& here) {
        Branch& branch = m_branches.back();
        if (branch.place.folder) {
            return 0;
        }
        Folder found = openAbove(here.folder.get(), here.depth - branch.place.depth);
        if (found && branch.identity && m_system.identityOf(found.get()) == branch.identity) {
            branch.place.folder = std::move(found);
            m_firstOpen = m_branches.size() - 1;
            return 0;
        }
        const auto givenUp = static_cast<std::int64_t>(m_branches.size() - 1);
        m_branches.resize(1);
        m_firstOpen = 1;
        return givenUp;
    }

    /// Cuts off about half of what the outermost branch has waiting, with a descriptor of its own; `keepInnermost`
    /// leaves some of the innermost one, from which the worker goes on. Nothing when there is nothing to spare or no
    /// descriptor to be had. Paths longer than `longestPath` stay where they are: carrying them would cost more than
    /// walking them.
    [[nodiscard]] std::optional<Branch> cutOff(bool keepInnermost) {
        const std::size_t index = branchToCut();
        if (index >= m_branches.size() || m_branches[index].place.pathLength > longestPath) {
            return std::nullopt;
        }
        Branch& branch = m_branches[index];
        const std::size_t cut = middleOfNames(branch.names);
        if (cut > 0) {
            Folder again = m_system.openAgain(branch.place.folder.get());
            if (!again) {
                return std::nullopt;
            }
            Branch half{{std::move(again), branch.place.depth, branch.place.pathLength},
                        branch.names.substr(0, cut),
                        std::nullopt};
            branch.names.erase(0, cut);
            return half;
        }
        if (keepInnermost && index + 1 == m_branches.size()) {
            return std::nullopt;
        }
        Branch whole = std::move(branch);
        m_branches.erase(m_branches.begin() + static_cast<std::ptrdiff_t>(index));
        return whole;
    }

private:
    /// Opens the folder that lies this many levels above the one given, on the same file system.
    [[nodiscard]] Folder openAbove(int descriptor, std::size_t levels) const {
        Folder reached;
        while (levels > 0) {
            const std::size_t step = std::min(levels, System::levelsAtOnce);
            std::string path;
            for (std::size_t level = 0; level < step; ++level) {
                path += "../";
            }
            reached = m_system.openBelow(reached ? reached.get() : descriptor, path.c_str());
            if (!reached) {
                break;
            }
            levels -= step;
        }
        return reached;
    }

    /// The last name of the outermost branch may only go when the next branch can take its part.
    [[nodiscard]] std::size_t branchToCut() const {
        const bool hasSeveral = !m_branches.empty() && m_branches[0].names.find('\0') + 1 < m_branches[0].names.size();
        return hasSeveral || m_firstOpen == 1 ? 0 : m_firstOpen;
    }

    const System m_system;
    const std::size_t m_openAtMost;
    std::vector<Branch> m_branches;
    std::size_t m_firstOpen = 1;  ///< m_branches[0] and those from here on have their descriptor
};

}  // namespace kestrune
