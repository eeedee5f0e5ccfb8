#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/ProcessListing.h"
#include "platform/linux/LinuxListeningSocket.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/LinuxSocketOwners.h"

namespace kestrune {

/// Processes and listening sockets from /proc and the kernel's socket tables; no tool is run, and the figures and
/// endpoints are those that `ps -U` and `lsof -nP -iTCP -sTCP:LISTEN` print.
///
/// A process is called by its executable, and by its short name where this user cannot see one (zombies, and programs
/// that hide from their own user). Not seen are sockets of other network namespaces (most containers) and those of
/// processes whose descriptors this user may not read; the tools do not see them either. What was learnt of processes
/// and sockets is kept between snapshots and checked at each (see LinuxProcessTable and LinuxSocketOwners); every
/// twelfth snapshot is a thorough one. Does not block.
class LinuxProcessListing final : public ProcessListing {
public:
    /// The listening sockets of IPv4 or, when true, IPv6; nothing when they are not told.
    using SocketQuestion = std::function<std::optional<std::vector<LinuxListeningSocket>>(bool)>;

    /// The processes of the user who runs this program.
    LinuxProcessListing();

    /// Where ask gives nothing, the tables below procRoot are read.
    LinuxProcessListing(std::string procRoot, std::uint32_t user, SocketQuestion ask);

    [[nodiscard]] ProcessSnapshot snapshot() override;

private:
    [[nodiscard]] std::vector<LinuxListeningSocket> listeningSockets() const;

    const std::string m_procRoot;
    const SocketQuestion m_ask;
    LinuxProcessTable m_table;
    LinuxSocketOwners m_owners;
    unsigned m_snapshots = 0;
};

}  // namespace kestrune
