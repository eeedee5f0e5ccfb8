#include "platform/linux/LinuxUpdateInstaller.h"

#include <utility>

namespace kestrune {

LinuxUpdateInstaller::LinuxUpdateInstaller(std::string executable, std::string appImage)
    : m_executable(std::move(executable)), m_appImage(std::move(appImage)) {
}

std::optional<std::string> LinuxUpdateInstaller::archiveSuffix() const {
    return std::nullopt;
}

void LinuxUpdateInstaller::install(const std::string& /*path*/, Answer /*answer*/) {
}

void LinuxUpdateInstaller::relaunch() {
}

}  // namespace kestrune
