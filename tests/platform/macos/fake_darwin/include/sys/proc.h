// Stands in for the system's header of this name, as far as it is used here. The facts test holds it to the real one.
#pragma once

#include <sys/time.h>
#include <sys/types.h>

constexpr char SRUN = 2;
constexpr char SZOMB = 5;

struct extern_proc {
    union {
        timeval __p_starttime;
    } p_un;

    char before_p_stat[20];
    char p_stat;
    pid_t p_pid;
    char after_p_pid[252];
};

#define p_starttime p_un.__p_starttime
