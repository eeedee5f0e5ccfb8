// Stands in for the system's header of this name, as far as it is used here. The facts test holds it to the real one.
#pragma once

#include <sys/proc.h>
#include <sys/types.h>

#include <cstddef>

constexpr int CTL_KERN = 1;
constexpr int KERN_PROC = 14;
constexpr int KERN_PROC_PID = 1;
constexpr int KERN_PROC_UID = 5;

struct _ucred {
    int cr_ref;
    uid_t cr_uid;
    char after_cr_uid[68];
};

struct kinfo_proc {
    extern_proc kp_proc;

    struct eproc {
        char before_e_ucred[120];
        _ucred e_ucred;
        char after_e_ucred[156];
    } kp_eproc;
};

extern "C" {
int sysctl(int* name, u_int nameLength, void* old, std::size_t* oldLength, void* replacement,
           std::size_t replacementLength);
int sysctlbyname(const char* name, void* old, std::size_t* oldLength, void* replacement, std::size_t replacementLength);
}
