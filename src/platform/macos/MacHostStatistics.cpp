#include "platform/macos/MacHostStatistics.h"

#include <net/if.h>
#include <sys/socket.h>
#include <sys/sysctl.h>
#include <sys/time.h>

// After net/if.h, which defines a name of its own that this header has as well.
#include <ifaddrs.h>

#include <array>
#include <cstring>
#include <memory>
#include <string_view>

namespace kestrune {

namespace {

// More than any release's record needs; what a release does not know stays 0.
constexpr std::size_t memoryWords = 104;

struct FreeInterfaces {
    void operator()(ifaddrs* list) const { freeifaddrs(list); }
};

using InterfaceList = std::unique_ptr<ifaddrs, FreeInterfaces>;

InterfaceList interfaceList() {
    ifaddrs* list = nullptr;
    return InterfaceList(getifaddrs(&list) == 0 ? list : nullptr);
}

// getifaddrs(3): the entry with the link's own address is the one that carries the counters.
bool isLink(const ifaddrs& entry) {
    return entry.ifa_addr != nullptr && entry.ifa_addr->sa_family == AF_LINK;
}

NetworkInterface describe(const ifaddrs& entry) {
    const std::string_view name = entry.ifa_name;
    NetworkInterface interface {
        std::string(name), name.starts_with("en"), (entry.ifa_flags & IFF_UP) != 0, {}
    };
    if (entry.ifa_data != nullptr) {
        const auto& data = *static_cast<const if_data*>(entry.ifa_data);
        interface.bytes = InterfaceBytes{data.ifi_ibytes, data.ifi_obytes};
    }
    return interface;
}

}  // namespace

std::optional<MemoryPages> MacHostStatistics::memory() {
    std::array<integer_t, memoryWords> words{};
    mach_msg_type_number_t count = words.size();
    if (host_statistics64(m_host.get(), HOST_VM_INFO64, words.data(), &count) != KERN_SUCCESS) {
        return std::nullopt;
    }
    static_assert(sizeof(vm_statistics64_data_t) <= sizeof(words));
    vm_statistics64_data_t pages{};
    std::memcpy(&pages, words.data(), sizeof pages);
    return MemoryPages{pages.free_count,        pages.active_count,          pages.wire_count,   pages.inactive_count,
                       pages.speculative_count, pages.compressor_page_count, vm_kernel_page_size};
}

std::optional<CpuTicks> MacHostStatistics::cpuTicks() {
    std::array<integer_t, HOST_CPU_LOAD_INFO_COUNT> words{};
    mach_msg_type_number_t count = words.size();
    if (host_statistics(m_host.get(), HOST_CPU_LOAD_INFO, words.data(), &count) != KERN_SUCCESS) {
        return std::nullopt;
    }
    host_cpu_load_info_data_t load{};
    static_assert(sizeof load == sizeof words);
    std::memcpy(&load, words.data(), sizeof load);
    const auto ticks = [&load](int state) { return static_cast<double>(load.cpu_ticks[state]); };
    return CpuTicks{ticks(CPU_STATE_USER), ticks(CPU_STATE_SYSTEM), ticks(CPU_STATE_IDLE), ticks(CPU_STATE_NICE)};
}

std::optional<std::int64_t> MacHostStatistics::bootTime() {
    timeval boot{};
    std::size_t length = sizeof boot;
    if (sysctlbyname("kern.boottime", &boot, &length, nullptr, 0) != 0 || length != sizeof boot) {
        return std::nullopt;
    }
    return boot.tv_sec;
}

std::optional<std::vector<NetworkInterface>> MacHostStatistics::networkInterfaces() {
    const InterfaceList list = interfaceList();
    if (!list) {
        return std::nullopt;
    }
    std::vector<NetworkInterface> interfaces;
    for (const ifaddrs* entry = list.get(); entry != nullptr; entry = entry->ifa_next) {
        if (isLink(*entry)) {
            interfaces.push_back(describe(*entry));
        }
    }
    return interfaces;
}

}  // namespace kestrune
