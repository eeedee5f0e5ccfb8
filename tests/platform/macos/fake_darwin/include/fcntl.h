// What src/platform/macos uses of the system's <fcntl.h> beyond POSIX (open(2), fcntl(2)).
#pragma once
#pragma GCC system_header

#include_next <fcntl.h>

#define F_GETPATH 50
#define F_FULLFSYNC 51

/// fcntl(2) with a command that fills a buffer of PATH_MAX bytes.
int fcntl(int descriptor, int command, char* path);

/// fcntl(2) with a command that takes a number, or none but is given 0.
int fcntl(int descriptor, int command, int argument);
