// What src/platform/macos uses of the system's <stdio.h> beyond POSIX (renameatx_np(2)).
#pragma once
#pragma GCC system_header

#include_next <stdio.h>

#define RENAME_EXCL 0x00000004

int renameatx_np(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags);
