#include "FakeMach.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr mach_port_t hostPort = 0x1203;
constexpr mach_port_t taskPort = 0x0103;
constexpr kern_return_t failure = 5;

bool holdsHost(mach_port_t port) {
    return port == hostPort && kestrune::FakeMach::state().hostRights > 0;
}

}  // namespace

namespace kestrune {

FakeMach& FakeMach::state() {
    static FakeMach state;
    return state;
}

void FakeMach::reset() {
    state() = {};
}

}  // namespace kestrune

using kestrune::FakeMach;

extern "C" {

mach_port_t mach_task_self_ = taskPort;
vm_size_t vm_kernel_page_size = 16384;

mach_port_t mach_host_self() {
    FakeMach& state = FakeMach::state();
    if (!state.hasHost) {
        return MACH_PORT_NULL;
    }
    ++state.hostRights;
    return hostPort;
}

kern_return_t mach_port_deallocate(ipc_space_t task, mach_port_name_t name) {
    if (task != taskPort || !holdsHost(name)) {
        return KERN_INVALID_NAME;
    }
    --FakeMach::state().hostRights;
    return KERN_SUCCESS;
}

kern_return_t host_statistics(host_t host, host_flavor_t flavor, host_info_t info, mach_msg_type_number_t* count) {
    const FakeMach& state = FakeMach::state();
    if (!holdsHost(host) || state.ticksFail || flavor != HOST_CPU_LOAD_INFO || *count < HOST_CPU_LOAD_INFO_COUNT) {
        return failure;
    }
    std::memcpy(info, &state.ticks, sizeof state.ticks);
    *count = HOST_CPU_LOAD_INFO_COUNT;
    return KERN_SUCCESS;
}

kern_return_t host_statistics64(host_t host, host_flavor_t flavor, host_info64_t info, mach_msg_type_number_t* count) {
    FakeMach& state = FakeMach::state();
    state.roomForMemory = *count;
    if (!holdsHost(host) || state.memoryFails || flavor != HOST_VM_INFO64) {
        return failure;
    }
    *count = std::min(*count, state.memoryWords);
    std::memcpy(info, &state.memory, *count * sizeof(integer_t));
    return KERN_SUCCESS;
}

}  // extern "C"
