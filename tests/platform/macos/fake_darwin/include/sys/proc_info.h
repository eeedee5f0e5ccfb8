// Stands in for the system's header of this name, as far as it is used here. The facts test holds it to the real one.
#pragma once

#include <cstdint>

constexpr int PROC_PIDVNODEPATHINFO = 9;
constexpr int PROC_PIDPATHINFO_MAXSIZE = 4096;

struct vnode_info_path {
    std::uint64_t vip_vi[19];
    char vip_path[1024];
};

struct proc_vnodepathinfo {
    vnode_info_path pvi_cdir;
    vnode_info_path pvi_rdir;
};
