#include "platform/linux/LinuxLinkOpener.h"

#include <utility>

namespace kestrune {

LinuxLinkOpener::LinuxLinkOpener(std::string helpFolder) : m_helpFolder(std::move(helpFolder)) {
}

bool LinuxLinkOpener::open(const std::string& address) {
    return address.starts_with(m_helpFolder);
}

}  // namespace kestrune
