// Stands in for the system's header of this name, as far as it is used here. The facts test holds it to the real one.
#pragma once

#include <cstdint>

using kern_return_t = int;
using natural_t = unsigned int;
using integer_t = int;
using mach_port_t = natural_t;
using mach_port_name_t = natural_t;
using ipc_space_t = mach_port_t;
using host_t = mach_port_t;
using host_flavor_t = integer_t;
using host_info_t = integer_t*;
using host_info64_t = integer_t*;
using mach_msg_type_number_t = natural_t;
using vm_size_t = std::uintptr_t;

constexpr kern_return_t KERN_SUCCESS = 0;
constexpr kern_return_t KERN_INVALID_NAME = 15;
constexpr mach_port_t MACH_PORT_NULL = 0;
constexpr host_flavor_t HOST_CPU_LOAD_INFO = 3;
constexpr host_flavor_t HOST_VM_INFO64 = 4;
constexpr int CPU_STATE_USER = 0;
constexpr int CPU_STATE_SYSTEM = 1;
constexpr int CPU_STATE_IDLE = 2;
constexpr int CPU_STATE_NICE = 3;
constexpr int CPU_STATE_MAX = 4;

struct host_cpu_load_info {
    natural_t cpu_ticks[CPU_STATE_MAX];
};

using host_cpu_load_info_data_t = host_cpu_load_info;

constexpr mach_msg_type_number_t HOST_CPU_LOAD_INFO_COUNT = sizeof(host_cpu_load_info_data_t) / sizeof(integer_t);

struct alignas(8) vm_statistics64 {
    natural_t free_count;
    natural_t active_count;
    natural_t inactive_count;
    natural_t wire_count;
    std::uint64_t eventsSinceBoot[9];
    natural_t purgeable_count;
    natural_t speculative_count;
    std::uint64_t compressorEventsSinceBoot[4];
    natural_t compressor_page_count;
    natural_t otherPages[3];
    std::uint64_t pagesInsideCompressor;
};

using vm_statistics64_data_t = vm_statistics64;

constexpr mach_msg_type_number_t HOST_VM_INFO64_COUNT = sizeof(vm_statistics64_data_t) / sizeof(integer_t);

extern "C" {
extern mach_port_t mach_task_self_;
extern vm_size_t vm_kernel_page_size;
mach_port_t mach_host_self();
kern_return_t mach_port_deallocate(ipc_space_t task, mach_port_name_t name);
kern_return_t host_statistics(host_t host, host_flavor_t flavor, host_info_t info, mach_msg_type_number_t* count);
kern_return_t host_statistics64(host_t host, host_flavor_t flavor, host_info64_t info, mach_msg_type_number_t* count);
}

inline mach_port_t mach_task_self() {
    return mach_task_self_;
}
