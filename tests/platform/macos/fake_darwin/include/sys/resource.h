// What src/platform/macos uses of the system's <sys/resource.h> beyond POSIX (setiopolicy_np(3)).
#pragma once
#pragma GCC system_header

#include_next <sys/resource.h>

#define IOPOL_TYPE_VFS_ATIME_UPDATES 2
#define IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES 3

#define IOPOL_SCOPE_THREAD 1

#define IOPOL_ATIME_UPDATES_OFF 1
#define IOPOL_MATERIALIZE_DATALESS_FILES_OFF 1

int getiopolicy_np(int type, int scope);
int setiopolicy_np(int type, int scope, int policy);
