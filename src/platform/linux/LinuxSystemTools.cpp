#include "platform/linux/LinuxSystemTools.h"

#include <unistd.h>

namespace kestrune {

ToolCommand LinuxSystemTools::withAdministratorRights(const ToolCommand& command) const {
    std::vector<std::string> arguments{"--disable-internal-agent", command.executable};
    arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
    return {"/usr/bin/pkexec", arguments};
}

ToolCommand LinuxSystemTools::userProcesses() const {
    return {"/bin/ps", {"-U", std::to_string(::getuid()), "-o", "pid=,rss=,pcpu=,exe="}};
}

ToolCommand LinuxSystemTools::restartFileManager() const {
    return {"/usr/bin/nautilus", {"-q"}};
}

}  // namespace kestrune
