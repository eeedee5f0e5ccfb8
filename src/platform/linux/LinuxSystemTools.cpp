#include "platform/linux/LinuxSystemTools.h"

#include <unistd.h>

#include <utility>

#include "platform/linux/LinuxFileManager.h"
#include "platform/linux/LinuxRootOnly.h"

namespace kestrune {

LinuxSystemTools::LinuxSystemTools() : LinuxSystemTools(KESTRUNE_CLEAR_CACHE_HELPER) {
}

LinuxSystemTools::LinuxSystemTools(std::string clearCacheHelper) : m_clearCacheHelper(std::move(clearCacheHelper)) {
}

ToolCommand LinuxSystemTools::withAdministratorRights(const ToolCommand& command) const {
    const bool hasHelper = command == purgeMemory() && onlyRootCanChangeProgram(m_clearCacheHelper);
    const ToolCommand privileged = hasHelper ? ToolCommand{m_clearCacheHelper, {}} : command;
    std::vector<std::string> arguments{"--disable-internal-agent", privileged.executable};
    arguments.insert(arguments.end(), privileged.arguments.begin(), privileged.arguments.end());
    return {"/usr/bin/pkexec", arguments};
}

ToolCommand LinuxSystemTools::userProcesses() const {
    return {"/bin/ps", {"-U", std::to_string(::getuid()), "-o", "pid=,rss=,pcpu=,exe="}};
}

ToolCommand LinuxSystemTools::restartFileManager() const {
    return LinuxFileManager::quitCommand(LinuxFileManager::standardPlaces());
}

}  // namespace kestrune
