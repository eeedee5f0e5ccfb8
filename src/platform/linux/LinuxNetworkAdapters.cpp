#include "platform/linux/LinuxNetworkAdapters.h"

#include <linux/if.h>
#include <linux/if_arp.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/linux/LinuxProcText.h"

namespace kestrune {

namespace {

constexpr std::size_t numberLength = 32;

std::optional<std::uint64_t> readNumber(LinuxStatusFile& file) {
    const std::optional<std::string_view> text = file.read(numberLength);
    return text ? LinuxProcText::number(*text) : std::nullopt;
}

}  // namespace

LinuxNetworkAdapters::LinuxNetworkAdapters(std::string classFolder, std::chrono::milliseconds maxAge)
    : m_classFolder(std::move(classFolder)), m_maxAge(maxAge) {
}

std::optional<std::vector<NetworkInterface>> LinuxNetworkAdapters::read() {
    const bool isOld = !m_scannedAt || std::chrono::steady_clock::now() - *m_scannedAt >= m_maxAge;
    if (isOld) {
        return rescan() ? std::optional(readKnown()) : std::nullopt;
    }
    std::vector<NetworkInterface> interfaces = readKnown();
    const bool isComplete = std::all_of(interfaces.begin(), interfaces.end(),
                                        [](const NetworkInterface& adapter) { return adapter.bytes.has_value(); });
    if (isComplete) {
        return interfaces;
    }
    // An adapter left between two looks at the list.
    return rescan() ? std::optional(readKnown()) : std::nullopt;
}

std::vector<NetworkInterface> LinuxNetworkAdapters::readKnown() {
    std::vector<NetworkInterface> interfaces;
    interfaces.reserve(m_adapters.size());
    for (Adapter& adapter : m_adapters) {
        const std::uint64_t flags = readNumber(adapter.flags).value_or(0);
        const std::optional<std::uint64_t> received = readNumber(adapter.received);
        const std::optional<std::uint64_t> sent = readNumber(adapter.sent);
        NetworkInterface interface { adapter.name, true, (flags & IFF_UP) != 0, std::nullopt };
        if (received && sent) {
            interface.bytes = InterfaceBytes{*received, *sent};
        }
        interfaces.push_back(std::move(interface));
    }
    return interfaces;
}

bool LinuxNetworkAdapters::rescan() {
    m_adapters.clear();
    m_scannedAt.reset();
    std::error_code error;
    std::vector<std::string> names;
    for (std::filesystem::directory_iterator entry(m_classFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    if (error) {
        return false;
    }
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
        const std::string folder = m_classFolder + "/" + name;
        const std::filesystem::path master = std::filesystem::read_symlink(folder + "/master", error);
        const bool isPort = !error && isPhysical(master.filename().string());
        if (isPhysical(name) && !isPort) {
            m_adapters.push_back({name, LinuxStatusFile(folder + "/flags"),
                                  LinuxStatusFile(folder + "/statistics/rx_bytes"),
                                  LinuxStatusFile(folder + "/statistics/tx_bytes")});
        }
    }
    m_scannedAt = std::chrono::steady_clock::now();
    return true;
}

bool LinuxNetworkAdapters::isPhysical(const std::string& name) const {
    const std::string folder = m_classFolder + "/" + name;
    LinuxStatusFile type(folder + "/type");
    std::error_code error;
    return readNumber(type) == std::uint64_t{ARPHRD_ETHER} && std::filesystem::exists(folder + "/device", error);
}

}  // namespace kestrune
