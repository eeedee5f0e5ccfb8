// The system's <sys/syslimits.h>: PATH_MAX.
#pragma once

#include <linux/limits.h>
