// Stands in for the system's header of this name, as far as it is used here. The facts test holds it to the real one.
#pragma once

#include <sys/proc_info.h>

#include <cstdint>

extern "C" {
int proc_pidpath(int pid, void* buffer, std::uint32_t bufferSize);
int proc_pidinfo(int pid, int flavor, std::uint64_t argument, void* buffer, int bufferSize);
}
