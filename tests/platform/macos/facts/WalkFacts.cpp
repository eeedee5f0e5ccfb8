// What src/platform/macos takes for granted about listing folders, held to the system's own headers.
#include <fcntl.h>
#include <sys/attr.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cstddef>
#include <cstdint>

namespace kestrune {

static_assert(sizeof(attrlist) == 24);
static_assert(offsetof(attrlist, bitmapcount) == 0 && sizeof(attrlist::bitmapcount) == 2);
static_assert(offsetof(attrlist, reserved) == 2);
static_assert(offsetof(attrlist, commonattr) == 4);
static_assert(offsetof(attrlist, volattr) == 8);
static_assert(offsetof(attrlist, dirattr) == 12);
static_assert(offsetof(attrlist, fileattr) == 16);
static_assert(offsetof(attrlist, forkattr) == 20);

static_assert(sizeof(attribute_set_t) == 20);
static_assert(offsetof(attribute_set_t, commonattr) == 0);
static_assert(offsetof(attribute_set_t, volattr) == 4);
static_assert(offsetof(attribute_set_t, dirattr) == 8);
static_assert(offsetof(attribute_set_t, fileattr) == 12);
static_assert(offsetof(attribute_set_t, forkattr) == 16);

static_assert(sizeof(attrreference_t) == 8);
static_assert(offsetof(attrreference_t, attr_dataoffset) == 0);
static_assert(offsetof(attrreference_t, attr_length) == 4);
static_assert(attrreference_t{-1, 0}.attr_dataoffset == -1);
static_assert(sizeof(fsobj_type_t) == 4);
static_assert(sizeof(attrgroup_t) == 4);

static_assert(ATTR_BIT_MAP_COUNT == 5);
static_assert(ATTR_CMN_NAME == 0x1);
static_assert(ATTR_CMN_OBJTYPE == 0x8);
static_assert(ATTR_CMN_FLAGS == 0x40000);
static_assert(ATTR_CMN_ERROR == 0x20000000);
static_assert(ATTR_CMN_RETURNED_ATTRS == 0x80000000);
static_assert(ATTR_DIR_MOUNTSTATUS == 0x4);
static_assert(DIR_MNTSTATUS_MNTPOINT == 0x1);
static_assert(DIR_MNTSTATUS_TRIGGER == 0x2);
static_assert(ATTR_FILE_ALLOCSIZE == 0x4);

static_assert(SF_DATALESS == 0x40000000);
static_assert(F_FULLFSYNC == 51);

static_assert(IOPOL_TYPE_VFS_ATIME_UPDATES == 2);
static_assert(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES == 3);
static_assert(IOPOL_SCOPE_THREAD == 1);
static_assert(IOPOL_ATIME_UPDATES_OFF == 1);
static_assert(IOPOL_MATERIALIZE_DATALESS_FILES_OFF == 1);

}  // namespace kestrune
