#include "platform/linux/LinuxSocketOwners.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <tuple>

#include "platform/linux/LinuxFileDescriptor.h"

namespace kestrune {

namespace {

constexpr std::size_t longestPath = 64;

// The inode of the socket that the link name below folder leads to; 0 for everything else, nothing without a link.
std::optional<std::uint64_t> linkedSocket(int folder, const char* name) {
    constexpr std::string_view prefix = "socket:[";
    std::array<char, 40> buffer;
    const ssize_t length = ::readlinkat(folder, name, buffer.data(), buffer.size());
    if (length < 0) {
        return std::nullopt;
    }
    std::string_view target(buffer.data(), static_cast<std::size_t>(length));
    if (!target.starts_with(prefix)) {
        return 0;
    }
    target.remove_prefix(prefix.size());
    std::uint64_t inode = 0;
    const auto [end, error] = std::from_chars(target.data(), target.data() + target.size(), inode);
    const bool isWhole = error == std::errc{} && end + 1 == target.data() + target.size() && *end == ']';
    return isWhole ? inode : 0;
}

bool contains(const std::vector<std::uint64_t>& sorted, std::uint64_t inode) {
    return std::binary_search(sorted.begin(), sorted.end(), inode);
}

bool isBefore(const LinuxSocketOwners::Holder& one, const LinuxSocketOwners::Holder& other) {
    return std::tie(one.pid, one.inode, one.descriptor) < std::tie(other.pid, other.inode, other.descriptor);
}

}  // namespace

void LinuxSocketOwners::refresh(const Question& question) {
    std::vector<Process> now;
    std::vector<std::int32_t> all;
    for (const ProcessRecord& process : question.processes) {
        now.emplace_back(process.pid, process.startTime);
        all.push_back(process.pid);
    }
    std::vector<std::int32_t> unsure;
    std::set_union(m_unsure.begin(), m_unsure.end(), question.active.begin(), question.active.end(),
                   std::back_inserter(unsure));
    m_unsure = std::move(unsure);
    const std::vector<std::uint64_t>& inodes = question.inodes;
    bool everything = !std::includes(m_inodes.begin(), m_inodes.end(), inodes.begin(), inodes.end());
    if (!everything) {
        const std::vector<std::uint64_t> before = heldInodes();
        lookThrough(question, recheck(question, now));
        const std::vector<std::uint64_t> after = heldInodes();
        everything = std::any_of(before.begin(), before.end(), [&](std::uint64_t inode) {
            return contains(inodes, inode) && !contains(after, inode);
        });
    }
    if (everything) {
        m_holders.clear();
        lookThrough(question, all);
    }
    m_processes = std::move(now);
    m_inodes = inodes;
}

std::vector<std::int32_t> LinuxSocketOwners::recheck(const Question& question, const std::vector<Process>& now) {
    std::vector<Process> fresh;
    std::set_difference(now.begin(), now.end(), m_processes.begin(), m_processes.end(), std::back_inserter(fresh));
    std::vector<std::int32_t> pids;
    pids.reserve(fresh.size());
    for (const auto& [pid, startTime] : fresh) {
        pids.push_back(pid);
    }
    if (question.isThorough) {
        pids.insert(pids.end(), m_unsure.begin(), m_unsure.end());
    }
    std::array<char, longestPath> path;
    for (const Holder& holder : m_holders) {
        if (std::binary_search(question.active.begin(), question.active.end(), holder.pid)) {
            static_cast<void>(std::snprintf(path.data(), path.size(), "%d/fd/%d", holder.pid, holder.descriptor));
            if (linkedSocket(question.procFolder, path.data()) != holder.inode) {
                pids.push_back(holder.pid);
            }
        }
    }
    std::sort(pids.begin(), pids.end());
    pids.erase(std::unique(pids.begin(), pids.end()), pids.end());
    const auto isOut = [&](const Holder& holder) {
        const auto place = std::lower_bound(now.begin(), now.end(), Process{holder.pid, 0});
        return place == now.end() || place->first != holder.pid || !contains(question.inodes, holder.inode) ||
               std::binary_search(pids.begin(), pids.end(), holder.pid);
    };
    m_holders.erase(std::remove_if(m_holders.begin(), m_holders.end(), isOut), m_holders.end());
    return pids;
}

void LinuxSocketOwners::lookThrough(const Question& question, const std::vector<std::int32_t>& pids) {
    for (const std::int32_t pid : pids) {
        lookThrough(question, pid);
    }
    std::vector<std::int32_t> unsure;
    std::set_difference(m_unsure.begin(), m_unsure.end(), pids.begin(), pids.end(), std::back_inserter(unsure));
    m_unsure = std::move(unsure);
    sortHolders();
}

void LinuxSocketOwners::lookThrough(const Question& question, std::int32_t pid) {
    const std::vector<std::uint64_t>& inodes = question.inodes;
    if (inodes.empty()) {
        return;
    }
    std::array<char, longestPath> path;
    static_cast<void>(std::snprintf(path.data(), path.size(), "%d/fd", pid));
    const LinuxFileDescriptor folder(::openat(question.procFolder, path.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        return;
    }
    if (countThrough(folder.get(), pid, inodes)) {
        return;
    }
    m_reader.begin(folder.get());
    while (const std::optional<DirectoryRecord> record = m_reader.next()) {
        const std::string_view name = record->name;
        std::int32_t descriptor = 0;
        std::from_chars(name.data(), name.data() + name.size(), descriptor);
        note({pid, descriptor, linkedSocket(folder.get(), record->name).value_or(0)}, inodes);
    }
}

bool LinuxSocketOwners::countThrough(int folder, std::int32_t pid, const std::vector<std::uint64_t>& inodes) {
    constexpr off_t worthwhile = 32;
    constexpr int longestGap = 8;

    struct stat status {};

    // The size of the folder is the number of its descriptors; 0 before Linux 6.2.
    if (::fstat(folder, &status) != 0 || status.st_size < worthwhile) {
        return false;
    }
    off_t missing = status.st_size;
    int gap = 0;
    std::array<char, 16> name{};
    // Beyond that number on to the first gap: the process may have opened more since.
    for (int descriptor = 0; gap < (missing > 0 ? longestGap : 1); ++descriptor) {
        *std::to_chars(name.data(), name.data() + name.size() - 1, descriptor).ptr = '\0';
        const std::optional<std::uint64_t> inode = linkedSocket(folder, name.data());
        gap = inode ? 0 : gap + 1;
        missing -= inode ? 1 : 0;
        note({pid, descriptor, inode.value_or(0)}, inodes);
    }
    return missing <= 0;
}

void LinuxSocketOwners::note(const Holder& holder, const std::vector<std::uint64_t>& inodes) {
    if (holder.inode != 0 && contains(inodes, holder.inode)) {
        m_holders.push_back(holder);
    }
}

void LinuxSocketOwners::sortHolders() {
    std::sort(m_holders.begin(), m_holders.end(), isBefore);
    const auto isSame = [](const Holder& one, const Holder& other) {
        return one.pid == other.pid && one.inode == other.inode;
    };
    m_holders.erase(std::unique(m_holders.begin(), m_holders.end(), isSame), m_holders.end());
}

std::vector<std::uint64_t> LinuxSocketOwners::heldInodes() const {
    std::vector<std::uint64_t> inodes;
    inodes.reserve(m_holders.size());
    for (const Holder& holder : m_holders) {
        inodes.push_back(holder.inode);
    }
    std::sort(inodes.begin(), inodes.end());
    return inodes;
}

}  // namespace kestrune
