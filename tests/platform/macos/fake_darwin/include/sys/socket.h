// Adds what the system's header of this name has beside what is common.
#pragma once
#pragma GCC system_header

#include_next <sys/socket.h>

#define AF_LINK 18
