#include "platform/linux/LinuxLoginItem.h"

#include <utility>

namespace kestrune {

LinuxLoginItem::LinuxLoginItem(std::string configHome, std::string executable, FileStore& files)
    : m_configHome(std::move(configHome)), m_executable(std::move(executable)), m_files(files) {
}

bool LinuxLoginItem::isRegistered() const {
    return !m_files.read(m_configHome + "/autostart/" + m_executable, 1).bytes.value_or("").empty();
}

bool LinuxLoginItem::setRegistered(bool /*on*/) {
    return false;
}

bool LinuxLoginItem::isAgentInstalled() const {
    return false;
}

bool LinuxLoginItem::setAgentInstalled(bool /*on*/) {
    return false;
}

}  // namespace kestrune
