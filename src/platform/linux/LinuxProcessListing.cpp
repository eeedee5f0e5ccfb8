#include "platform/linux/LinuxProcessListing.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxSocketDiagnosis.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

namespace {

bool isBefore(const LinuxListeningSocket& one, const LinuxListeningSocket& other) {
    return one.inode < other.inode;
}

ListeningPorts endpointsOf(const std::vector<LinuxSocketOwners::Holder>& holders,
                           const std::vector<LinuxListeningSocket>& sockets) {
    ListeningPorts ports;
    for (const LinuxSocketOwners::Holder& holder : holders) {
        LinuxListeningSocket wanted;
        wanted.inode = holder.inode;
        const auto place = std::lower_bound(sockets.begin(), sockets.end(), wanted, isBefore);
        ports[holder.pid].push_back(endpointText(*place));
    }
    for (auto& [pid, endpoints] : ports) {
        std::sort(endpoints.begin(), endpoints.end());
        endpoints.erase(std::unique(endpoints.begin(), endpoints.end()), endpoints.end());
    }
    return ports;
}

}  // namespace

LinuxProcessListing::LinuxProcessListing()
    : LinuxProcessListing("/proc", ::getuid(), LinuxSocketDiagnosis::listeningSockets) {
}

LinuxProcessListing::LinuxProcessListing(std::string procRoot, std::uint32_t user, SocketQuestion ask)
    : m_procRoot(std::move(procRoot)),
      m_ask(std::move(ask)),
      m_table(user, static_cast<std::uint64_t>(::sysconf(_SC_CLK_TCK)), ::sysconf(_SC_PAGESIZE) / 1024) {
}

ProcessSnapshot LinuxProcessListing::snapshot() {
    constexpr unsigned snapshotsBetweenLooks = 12;
    const bool isThorough = m_snapshots++ % snapshotsBetweenLooks == 0;
    ProcessSnapshot snapshot;
    const LinuxFileDescriptor procFolder(::open(m_procRoot.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!procFolder) {
        return snapshot;
    }
    // The sockets first: a socket that is listed then belongs to a process that is listed after it.
    const std::vector<LinuxListeningSocket> sockets = listeningSockets();
    std::vector<std::uint64_t> inodes;
    inodes.reserve(sockets.size());
    for (const LinuxListeningSocket& socket : sockets) {
        inodes.push_back(socket.inode);
    }
    snapshot.processes = m_table.refresh(procFolder.get(), isThorough);
    m_owners.refresh({procFolder.get(), inodes, snapshot.processes, m_table.active(), isThorough});
    snapshot.listeners = endpointsOf(m_owners.holders(), sockets);
    return snapshot;
}

std::vector<LinuxListeningSocket> LinuxProcessListing::listeningSockets() const {
    constexpr std::size_t largestTable = std::size_t{1} << 24U;
    std::vector<LinuxListeningSocket> sockets;
    for (const bool isVersion6 : {false, true}) {
        std::optional<std::vector<LinuxListeningSocket>> some = m_ask(isVersion6);
        if (!some) {
            LinuxStatusFile table(m_procRoot + (isVersion6 ? "/net/tcp6" : "/net/tcp"));
            some = parseSocketTable(table.read(largestTable).value_or(std::string_view{}), isVersion6);
        }
        sockets.insert(sockets.end(), some->begin(), some->end());
    }
    std::sort(sockets.begin(), sockets.end(), isBefore);
    return sockets;
}

}  // namespace kestrune
