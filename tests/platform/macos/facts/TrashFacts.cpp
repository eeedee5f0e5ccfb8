// What the stand-ins of this system's calls on files promise, held against the real headers.
#include <fcntl.h>
#include <stdio.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syslimits.h>
#include <sys/types.h>
#include <sys/xattr.h>

#include <cstddef>
#include <type_traits>

static_assert(F_GETPATH == 50);
static_assert(RENAME_EXCL == 0x00000004);
static_assert(MNT_LOCAL == 0x00001000);
static_assert(MNT_NOWAIT == 2);

// PATH_MAX is what F_GETPATH fills at most; the stand-in's is larger, and so is what a buffer of that size takes.
static_assert(PATH_MAX >= 1024);

static_assert(sizeof(struct statfs) == 2168);
static_assert(offsetof(struct statfs, f_blocks) == 8);
static_assert(offsetof(struct statfs, f_fsid) == 48);
static_assert(offsetof(struct statfs, f_owner) == 56);
static_assert(offsetof(struct statfs, f_flags) == 64);
static_assert(offsetof(struct statfs, f_fstypename) == 72);
static_assert(sizeof(statfs::f_fstypename) == 16);
static_assert(offsetof(struct statfs, f_mntonname) == 88);
static_assert(sizeof(statfs::f_mntonname) == 1024);
static_assert(offsetof(struct statfs, f_mntfromname) == 1112);
static_assert(offsetof(struct statfs, f_flags_ext) == 2136);

using SystemStat = struct stat;

static_assert(std::is_same_v<decltype(SystemStat{}.st_birthtimespec), struct timespec>);
static_assert(std::is_same_v<decltype(getfsstat(nullptr, 0, 0)), int>);
static_assert(std::is_same_v<decltype(renameatx_np(0, nullptr, 0, nullptr, 0U)), int>);
static_assert(std::is_same_v<decltype(fsetxattr(0, nullptr, nullptr, std::size_t{}, 0U, 0)), int>);
static_assert(std::is_same_v<decltype(fgetxattr(0, nullptr, nullptr, std::size_t{}, 0U, 0)), ssize_t>);
static_assert(std::is_same_v<decltype(fremovexattr(0, nullptr, 0)), int>);
