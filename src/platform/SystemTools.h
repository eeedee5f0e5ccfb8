#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune {

/// An external tool: the absolute path of its executable and the arguments it is started with.
struct ToolCommand {
    std::string executable;
    std::vector<std::string> arguments;

    bool operator==(const ToolCommand&) const = default;
};

/// Where each external tool lies on this system. A tool that is not there is named all the same: starting it fails.
/// Any thread.
class SystemTools {
public:
    SystemTools() = default;
    SystemTools(const SystemTools&) = delete;
    SystemTools& operator=(const SystemTools&) = delete;
    virtual ~SystemTools() = default;

    /// Prints the start-up volume's use in blocks of 1024 bytes.
    [[nodiscard]] virtual ToolCommand diskFree() const = 0;

    /// Deletes simulators that their development kit no longer supports.
    [[nodiscard]] virtual ToolCommand deleteUnavailableSimulators() const = 0;

    /// Runs command with administrator rights after the system has asked the user.
    [[nodiscard]] virtual ToolCommand withAdministratorRights(const ToolCommand& command) const = 0;

    // Processes.

    /// Prints a header, then percent of memory and name of every process, by processor use.
    [[nodiscard]] virtual ToolCommand topProcesses() const = 0;

    /// Prints the listening TCP sockets in lsof's field format, fields p and n.
    [[nodiscard]] virtual ToolCommand listeningSockets() const = 0;

    /// Prints this user's processes: pid, resident kilobytes, percent of processor time, command; no header.
    [[nodiscard]] virtual ToolCommand userProcesses() const = 0;

    /// Prints the owner's number and the command of one process; no header.
    [[nodiscard]] virtual ToolCommand processOwner(std::int32_t pid) const = 0;

    // Maintenance.

    /// Clears cached memory; usually needs administrator rights.
    [[nodiscard]] virtual ToolCommand purgeMemory() const = 0;

    /// Lets go of local snapshots of the start-up volume, as many as can be.
    [[nodiscard]] virtual ToolCommand thinLocalSnapshots() const = 0;

    [[nodiscard]] virtual ToolCommand emptyTrash() const = 0;

    /// To be run one after the other.
    [[nodiscard]] virtual std::vector<ToolCommand> flushNameCache() const = 0;

    /// Ends the file manager; the system starts it again.
    [[nodiscard]] virtual ToolCommand restartFileManager() const = 0;

    /// Tell the system whether to animate; to be run one after the other.
    [[nodiscard]] virtual std::vector<ToolCommand> reduceAnimations(bool reduce) const = 0;
};

}  // namespace kestrune
