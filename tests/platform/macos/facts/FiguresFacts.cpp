// What the stand-ins of the figures' calls promise, held to whichever headers this file is compiled with.
#include <ifaddrs.h>
#include <mach/mach.h>
#include <net/if.h>
#include <sys/socket.h>
#include <sys/sysctl.h>
#include <sys/time.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <type_traits>

static_assert(std::is_same_v<kern_return_t, int>);
static_assert(std::is_same_v<natural_t, unsigned int>);
static_assert(std::is_same_v<integer_t, int>);
static_assert(std::is_same_v<mach_port_t, unsigned int>);
static_assert(std::is_same_v<mach_port_name_t, unsigned int>);
static_assert(std::is_same_v<ipc_space_t, mach_port_t>);
static_assert(std::is_same_v<host_t, mach_port_t>);
static_assert(std::is_same_v<host_flavor_t, int>);
static_assert(std::is_same_v<host_info_t, int*>);
static_assert(std::is_same_v<host_info64_t, int*>);
static_assert(std::is_same_v<mach_msg_type_number_t, unsigned int>);
static_assert(sizeof(vm_size_t) == 8 && std::is_unsigned_v<vm_size_t>);
static_assert(KERN_SUCCESS == 0);
static_assert(KERN_INVALID_NAME == 15);
static_assert(MACH_PORT_NULL == 0);
static_assert(std::is_same_v<decltype(mach_host_self()), mach_port_t>);
static_assert(std::is_same_v<decltype(mach_task_self()), mach_port_t>);
static_assert(std::is_same_v<decltype(&mach_port_deallocate), kern_return_t (*)(ipc_space_t, mach_port_name_t)>);
static_assert(std::is_same_v<decltype(&host_statistics),
                             kern_return_t (*)(host_t, host_flavor_t, host_info_t, mach_msg_type_number_t*)>);
static_assert(std::is_same_v<decltype(&host_statistics64),
                             kern_return_t (*)(host_t, host_flavor_t, host_info64_t, mach_msg_type_number_t*)>);
static_assert(std::is_same_v<decltype(vm_kernel_page_size), vm_size_t>);

static_assert(HOST_CPU_LOAD_INFO == 3);
static_assert(HOST_CPU_LOAD_INFO_COUNT == 4);
static_assert(CPU_STATE_USER == 0 && CPU_STATE_SYSTEM == 1 && CPU_STATE_IDLE == 2 && CPU_STATE_NICE == 3);
static_assert(CPU_STATE_MAX == 4);
static_assert(sizeof(host_cpu_load_info_data_t) == 16);
static_assert(std::is_same_v<decltype(host_cpu_load_info_data_t::cpu_ticks), natural_t[4]>);

static_assert(HOST_VM_INFO64 == 4);
static_assert(HOST_VM_INFO64_COUNT == 38);
static_assert(sizeof(vm_statistics64_data_t) == 152 && alignof(vm_statistics64_data_t) == 8);
static_assert(offsetof(vm_statistics64_data_t, free_count) == 0);
static_assert(offsetof(vm_statistics64_data_t, active_count) == 4);
static_assert(offsetof(vm_statistics64_data_t, inactive_count) == 8);
static_assert(offsetof(vm_statistics64_data_t, wire_count) == 12);
static_assert(offsetof(vm_statistics64_data_t, speculative_count) == 92);
static_assert(offsetof(vm_statistics64_data_t, compressor_page_count) == 128);
static_assert(std::is_same_v<decltype(vm_statistics64_data_t::free_count), natural_t>);
static_assert(std::is_same_v<decltype(vm_statistics64_data_t::compressor_page_count), natural_t>);

static_assert(AF_LINK == 18);
static_assert(IFF_UP == 1);
static_assert(std::is_same_v<decltype(ifaddrs::ifa_next), ifaddrs*>);
static_assert(std::is_same_v<decltype(ifaddrs::ifa_name), char*>);
static_assert(std::is_same_v<decltype(ifaddrs::ifa_flags), unsigned int>);
static_assert(std::is_same_v<decltype(ifaddrs::ifa_addr), sockaddr*>);
static_assert(std::is_same_v<decltype(ifaddrs::ifa_data), void*>);
static_assert(sizeof(if_data) == 96 && alignof(if_data) == 4);
static_assert(offsetof(if_data, ifi_ibytes) == 40 && sizeof(if_data::ifi_ibytes) == 4);
static_assert(offsetof(if_data, ifi_obytes) == 44 && sizeof(if_data::ifi_obytes) == 4);
static_assert(std::is_unsigned_v<decltype(if_data::ifi_ibytes)> && std::is_unsigned_v<decltype(if_data::ifi_obytes)>);

static_assert(sizeof(timeval) == 16 && offsetof(timeval, tv_sec) == 0 && sizeof(timeval::tv_sec) == 8);
static_assert(SIGHUP == 1 && SIGINT == 2 && SIGTERM == 15);

namespace {

[[maybe_unused]] int (*const readByName)(const char*, void*, std::size_t*, void*, std::size_t) = &sysctlbyname;
[[maybe_unused]] int (*const readByNumbers)(int*, unsigned int, void*, std::size_t*, void*, std::size_t) = &sysctl;

}  // namespace
