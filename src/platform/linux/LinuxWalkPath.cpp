#include "platform/linux/LinuxWalkPath.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <utility>

#include "platform/linux/LinuxDirectoryReader.h"

namespace kestrune {

namespace {

std::optional<LinuxWalkBranch::Identity> identityOf(int descriptor) {
    struct statx status {};

    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_INO, &status) != 0) {
        return std::nullopt;
    }
    return LinuxWalkBranch::Identity{status.stx_dev_major, status.stx_dev_minor, status.stx_ino};
}

/// Where names falls into two parts of about the same size, neither of them empty; 0 where there is only one name.
std::size_t middleOf(const std::string& names) {
    const std::size_t middle = names.find('\0', names.size() / 2) + 1;
    return middle < names.size() ? middle : names.rfind('\0', names.size() - 2) + 1;
}

}  // namespace

void LinuxWalkPath::push(LinuxWalkPlace place, std::string names) {
    m_branches.push_back({std::move(place), std::move(names), std::nullopt});
    const std::size_t open = 1 + m_branches.size() - m_firstOpen;
    if (m_branches.size() > m_firstOpen && open > m_openAtMost) {
        LinuxWalkBranch& oldest = m_branches[m_firstOpen];
        oldest.identity = identityOf(oldest.place.folder.get());
        oldest.place.folder.reset();
        ++m_firstOpen;
    }
}

LinuxWalkPlace LinuxWalkPath::popInnermost() {
    LinuxWalkPlace place = std::move(m_branches.back().place);
    m_branches.pop_back();
    m_firstOpen = std::min(m_firstOpen, std::max<std::size_t>(m_branches.size(), 1));
    return place;
}

void LinuxWalkPath::clear() {
    m_branches.clear();
    m_firstOpen = 1;
}

std::int64_t LinuxWalkPath::reachInnermost(const LinuxWalkPlace& here) {
    LinuxWalkBranch& branch = m_branches.back();
    if (branch.place.folder) {
        return 0;
    }
    LinuxFileDescriptor found = openFolderAbove(here.folder.get(), here.depth - branch.place.depth);
    if (found && branch.identity && identityOf(found.get()) == branch.identity) {
        branch.place.folder = std::move(found);
        m_firstOpen = m_branches.size() - 1;
        return 0;
    }
    const auto givenUp = static_cast<std::int64_t>(m_branches.size() - 1);
    m_branches.resize(1);
    m_firstOpen = 1;
    return givenUp;
}

/// The last name of the outermost branch may only go when the next branch can take its part.
std::size_t LinuxWalkPath::branchToCut() const {
    const bool hasSeveral = !m_branches.empty() && m_branches[0].names.find('\0') + 1 < m_branches[0].names.size();
    return hasSeveral || m_firstOpen == 1 ? 0 : m_firstOpen;
}

std::optional<LinuxWalkBranch> LinuxWalkPath::cutOff(bool keepInnermost) {
    const std::size_t index = branchToCut();
    if (index >= m_branches.size() || m_branches[index].place.pathLength > longestPath) {
        return std::nullopt;
    }
    LinuxWalkBranch& branch = m_branches[index];
    const std::size_t cut = middleOf(branch.names);
    if (cut > 0) {
        LinuxFileDescriptor again = openFolderAgain(branch.place.folder.get());
        if (!again) {
            return std::nullopt;
        }
        LinuxWalkBranch half{
            {std::move(again), branch.place.depth, branch.place.pathLength}, branch.names.substr(0, cut), std::nullopt};
        branch.names.erase(0, cut);
        return half;
    }
    if (keepInnermost && index + 1 == m_branches.size()) {
        return std::nullopt;
    }
    LinuxWalkBranch whole = std::move(branch);
    m_branches.erase(m_branches.begin() + static_cast<std::ptrdiff_t>(index));
    return whole;
}

}  // namespace kestrune
