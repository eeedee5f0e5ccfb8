// What src/platform/macos uses of the system's <sys/xattr.h> (getxattr(2), setxattr(2), removexattr(2)).
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>

int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size, std::uint32_t position,
              int options);
ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size, std::uint32_t position, int options);
int fremovexattr(int descriptor, const char* name, int options);
