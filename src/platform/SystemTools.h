#pragma once

#include <string>
#include <vector>

namespace kestrune {

/// An external tool: the absolute path of its executable and the arguments it is started with.
struct ToolCommand {
    std::string executable;
    std::vector<std::string> arguments;

    bool operator==(const ToolCommand&) const = default;
};

/// Where each external tool lies on this system. Any thread.
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

    /// Runs script with administrator rights after the system has asked the user.
    [[nodiscard]] virtual ToolCommand runScript(const std::string& script) const = 0;
};

}  // namespace kestrune
