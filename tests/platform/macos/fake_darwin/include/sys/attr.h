// What src/platform/macos uses of the system's <sys/attr.h> (getattrlist(2), getattrlistbulk(2)).
#pragma once

#include <stdint.h>
#include <sys/types.h>

using attrgroup_t = uint32_t;
using fsobj_type_t = uint32_t;

struct attrlist {
    unsigned short bitmapcount;
    uint16_t reserved;
    attrgroup_t commonattr;
    attrgroup_t volattr;
    attrgroup_t dirattr;
    attrgroup_t fileattr;
    attrgroup_t forkattr;
};

struct attribute_set_t {
    attrgroup_t commonattr;
    attrgroup_t volattr;
    attrgroup_t dirattr;
    attrgroup_t fileattr;
    attrgroup_t forkattr;
};

struct attrreference_t {
    int32_t attr_dataoffset;
    uint32_t attr_length;
};

#define ATTR_BIT_MAP_COUNT 5

#define ATTR_CMN_NAME 0x00000001
#define ATTR_CMN_OBJTYPE 0x00000008
#define ATTR_CMN_FLAGS 0x00040000
#define ATTR_CMN_ERROR 0x20000000
#define ATTR_CMN_RETURNED_ATTRS 0x80000000

#define ATTR_DIR_MOUNTSTATUS 0x00000004
#define DIR_MNTSTATUS_MNTPOINT 0x00000001
#define DIR_MNTSTATUS_TRIGGER 0x00000002

#define ATTR_FILE_ALLOCSIZE 0x00000004
