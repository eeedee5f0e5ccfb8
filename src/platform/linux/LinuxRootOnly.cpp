#include "platform/linux/LinuxRootOnly.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/LinuxFileStatus.h"
#include "platform/linux/LinuxSafeOpen.h"

namespace kestrune {

namespace {

bool isRootOnly(const LinuxFileStatus& status) {
    return status.owner == 0 && !status.groupOrOthersMayWrite();
}

}  // namespace

bool onlyRootCanChangeProgram(const std::string& path) {
    if (!path.starts_with('/')) {
        return false;
    }
    const LinuxOpened program = openWithoutLinks(AT_FDCWD, path, O_PATH | O_NOFOLLOW, LinuxReach::anywhere);
    const auto status = statusOf(program.descriptor.get());
    if (!status.ok() || !status.value().isRegularFile() || !isRootOnly(status.value()) ||
        (status.value().mode & S_IXOTH) == 0) {
        return false;
    }
    for (std::size_t end = path.rfind('/'); end != std::string::npos;
         end = end == 0 ? end - 1 : path.rfind('/', end - 1)) {
        const LinuxOpened folder =
            openWithoutLinks(AT_FDCWD, path.substr(0, end) + "/", O_PATH | O_DIRECTORY, LinuxReach::anywhere);
        const auto above = statusOf(folder.descriptor.get());
        if (!above.ok() || !isRootOnly(above.value())) {
            return false;
        }
    }
    return true;
}

}  // namespace kestrune
