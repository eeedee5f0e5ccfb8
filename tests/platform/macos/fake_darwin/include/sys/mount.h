// What src/platform/macos uses of the system's <sys/mount.h> (getfsstat(2)).
#pragma once

#include <sys/param.h>
#include <sys/types.h>

#include <cstdint>

#define MNT_LOCAL 0x00001000
#define MNT_NOWAIT 2
#define MFSTYPENAMELEN 16

struct fsid {
    std::int32_t val[2];
};

struct statfs {
    std::uint32_t f_bsize;
    std::int32_t f_iosize;
    std::uint64_t f_blocks;
    std::uint64_t f_bfree;
    std::uint64_t f_bavail;
    std::uint64_t f_files;
    std::uint64_t f_ffree;
    struct fsid f_fsid;
    uid_t f_owner;
    std::uint32_t f_type;
    std::uint32_t f_flags;
    std::uint32_t f_fssubtype;
    char f_fstypename[MFSTYPENAMELEN];
    char f_mntonname[1024];
    char f_mntfromname[1024];
    std::uint32_t f_flags_ext;
    std::uint32_t f_reserved[7];
};

/// Fills bytes of volumes, as many as fit, and answers their number; without volumes, how many there are.
int getfsstat(struct statfs* volumes, int bytes, int flags);
