// What src/platform/macos uses of the system's <sys/stat.h> beyond POSIX (stat(2)).
#pragma once
#pragma GCC system_header

#include_next <sys/stat.h>

#define SF_DATALESS 0x40000000

// The time of birth takes the field that nothing here reads; the calls below put it there.
#define st_birthtimespec st_ctim

int statWithBirth(int descriptor, struct stat* status);
int statWithBirthAt(int folder, const char* path, struct stat* status, int flags);

#define fstat statWithBirth
#define fstatat statWithBirthAt
