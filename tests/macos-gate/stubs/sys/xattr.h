// Hand-written from the manual pages named below, for type checks away from a Mac; no real build sees it.
#pragma once
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif
// getxattr(2)
ssize_t fgetxattr(int fd, const char* name, void* value, size_t size, u_int32_t position, int options);
// setxattr(2)
int fsetxattr(int fd, const char* name, const void* value, size_t size, u_int32_t position, int options);
// removexattr(2)
int fremovexattr(int fd, const char* name, int options);
#ifdef __cplusplus
}
#endif
