#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/HostStatistics.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

/// The counters of the physical Ethernet and Wi-Fi adapters. Loopback, tunnels, bridges, bonds, VLANs and container
/// ends have no device of their own and are left out: what they carry goes through an adapter and is counted there. So
/// is an adapter that is a port of another physical one (a virtual function behind its hypervisor's adapter).
/// The list of adapters is kept, with their counters open, and looked up again when a counter cannot be read or when
/// the list is older than maxAge. One thread at a time.
class LinuxNetworkAdapters final {
public:
    LinuxNetworkAdapters(std::string classFolder, std::chrono::milliseconds maxAge);

    /// Nothing when the system has no list of interfaces.
    [[nodiscard]] std::optional<std::vector<NetworkInterface>> read();

private:
    struct Adapter {
        std::string name;
        LinuxStatusFile flags;
        LinuxStatusFile received;
        LinuxStatusFile sent;
    };

    [[nodiscard]] bool rescan();
    [[nodiscard]] std::vector<NetworkInterface> readKnown();
    [[nodiscard]] bool isPhysical(const std::string& name) const;

    std::string m_classFolder;
    std::chrono::milliseconds m_maxAge;
    std::optional<std::chrono::steady_clock::time_point> m_scannedAt;
    std::vector<Adapter> m_adapters;
};

}  // namespace kestrune
