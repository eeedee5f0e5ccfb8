// Stands in for the system's header of this name, as far as it is used here. The facts test holds it to the real one.
#pragma once

#include <sys/types.h>

#include <cstddef>

extern "C" {
int sysctl(int* name, u_int nameLength, void* old, std::size_t* oldLength, void* replacement,
           std::size_t replacementLength);
int sysctlbyname(const char* name, void* old, std::size_t* oldLength, void* replacement, std::size_t replacementLength);
}
