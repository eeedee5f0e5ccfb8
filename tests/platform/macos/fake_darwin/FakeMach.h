#pragma once

#include <mach/mach.h>

namespace kestrune {

/// What the stand-ins for Mach's calls answer, and what they were asked. One for all tests: reset before each.
struct FakeMach {
    vm_statistics64_data_t memory{};
    mach_msg_type_number_t memoryWords = HOST_VM_INFO64_COUNT;  ///< how much of the record this kernel knows
    bool memoryFails = false;
    mach_msg_type_number_t roomForMemory = 0;  ///< words the last caller offered
    host_cpu_load_info_data_t ticks{};
    bool ticksFail = false;
    bool hasHost = true;
    int hostRights = 0;  ///< rights to the host's port that were taken and not given back

    static FakeMach& state();
    static void reset();
};

}  // namespace kestrune
