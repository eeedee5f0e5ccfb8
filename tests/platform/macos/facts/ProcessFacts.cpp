// What the stand-ins for the calls around processes promise, held against the system's own headers.
#include <crt_externs.h>
#include <libproc.h>
#include <spawn.h>
#include <sys/event.h>
#include <sys/sysctl.h>

#include <cstddef>
#include <type_traits>

namespace {

// Starting tools.
static_assert(POSIX_SPAWN_CLOEXEC_DEFAULT == 0x4000);
static_assert(POSIX_SPAWN_SETSIGDEF == 0x0004);
static_assert(POSIX_SPAWN_SETSIGMASK == 0x0008);
static_assert(std::is_same_v<decltype(_NSGetEnviron()), char***>);
static_assert(
    std::is_same_v<
        decltype(posix_spawn_file_actions_addinherit_np(static_cast<posix_spawn_file_actions_t*>(nullptr), 0)), int>);

// Waiting for them.
static_assert(EVFILT_READ == -1);
static_assert(EVFILT_PROC == -5);
static_assert(EV_ADD == 0x0001);
static_assert(NOTE_EXIT == 0x80000000);
static_assert(sizeof(struct kevent) == 32);
static_assert(offsetof(struct kevent, ident) == 0);
static_assert(offsetof(struct kevent, filter) == 8);
static_assert(offsetof(struct kevent, flags) == 10);
static_assert(offsetof(struct kevent, fflags) == 12);
static_assert(offsetof(struct kevent, data) == 16);
static_assert(offsetof(struct kevent, udata) == 24);

// What the kernel tells of a process.
static_assert(CTL_KERN == 1);
static_assert(KERN_PROC == 14);
static_assert(KERN_PROC_PID == 1);
static_assert(KERN_PROC_UID == 5);
static_assert(SRUN == 2);
static_assert(SZOMB == 5);
static_assert(sizeof(timeval) == 16);
static_assert(offsetof(timeval, tv_usec) == 8);
static_assert(sizeof(extern_proc) == 296);
static_assert(offsetof(extern_proc, p_starttime) == 0);
static_assert(offsetof(extern_proc, p_stat) == 36);
static_assert(sizeof(extern_proc::p_stat) == 1);
static_assert(offsetof(extern_proc, p_pid) == 40);
static_assert(sizeof(kinfo_proc) == 648);
static_assert(offsetof(kinfo_proc, kp_proc) == 0);
static_assert(offsetof(kinfo_proc, kp_eproc.e_ucred) == 416);
static_assert(offsetof(_ucred, cr_uid) == 4);
static_assert(sizeof(uid_t) == 4 && sizeof(pid_t) == 4);
static_assert(PROC_PIDVNODEPATHINFO == 9);
static_assert(PROC_PIDPATHINFO_MAXSIZE == 4096);
static_assert(sizeof(proc_vnodepathinfo) == 2352);
static_assert(offsetof(proc_vnodepathinfo, pvi_cdir) == 0);
static_assert(offsetof(vnode_info_path, vip_path) == 152);
static_assert(sizeof(vnode_info_path::vip_path) == 1024);
static_assert(std::is_same_v<decltype(proc_pidpath(0, nullptr, 0)), int>);
static_assert(std::is_same_v<decltype(proc_pidinfo(0, 0, 0, nullptr, 0)), int>);

}  // namespace
