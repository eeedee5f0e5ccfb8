// What src/platform/macos uses of the system's <unistd.h> beyond POSIX (getattrlistbulk(2)).
#pragma once
#pragma GCC system_header

#include_next <unistd.h>

#include <stddef.h>
#include <stdint.h>

int getattrlistbulk(int folder, void* attributes, void* buffer, size_t bytes, uint64_t options);
