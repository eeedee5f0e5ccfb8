#include "tests/platform/macos/fake_darwin/FakeAttributes.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/attr.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include "tests/platform/macos/fake_darwin/FakeIoPolicy.h"

namespace kestrune::fake_darwin {

namespace {

int failWith(int error) {
    errno = error;
    return -1;
}

template <class Value>
void append(std::string& bytes, const Value& value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

/// getattrlist(2): the attributes in the order of their bits, the name at the end, everything aligned to 32 bits and
/// the group to 64.
std::string packedAs(const Entry& entry, const attrlist& wanted) {
    attribute_set_t returned{};
    const auto tells = [&wanted](bool told, attrgroup_t attribute) {
        return told ? wanted.commonattr & attribute : attrgroup_t{0};
    };
    returned.commonattr = ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_NAME | tells(entry.error != 0, ATTR_CMN_ERROR) |
                          tells(entry.tellsType, ATTR_CMN_OBJTYPE) | tells(entry.tellsFlags, ATTR_CMN_FLAGS);
    const bool isFolder = entry.type == 2;
    returned.dirattr = isFolder && entry.tellsMountStatus ? wanted.dirattr & ATTR_DIR_MOUNTSTATUS : 0;
    returned.fileattr = !isFolder && entry.tellsAllocatedBytes ? wanted.fileattr & ATTR_FILE_ALLOCSIZE : 0;

    std::string group(sizeof(std::uint32_t), '\0');
    append(group, returned);
    if ((returned.commonattr & ATTR_CMN_ERROR) != 0) {
        append(group, entry.error);
    }
    const std::size_t reference = group.size();
    append(group, attrreference_t{});
    if ((returned.commonattr & ATTR_CMN_OBJTYPE) != 0) {
        append(group, entry.type);
    }
    if ((returned.commonattr & ATTR_CMN_FLAGS) != 0) {
        append(group, entry.flags);
    }
    if (returned.dirattr != 0) {
        append(group, entry.mountStatus);
    }
    if (returned.fileattr != 0) {
        append(group, entry.allocatedBytes);
    }
    const attrreference_t name = {static_cast<std::int32_t>(group.size() - reference),
                                  static_cast<std::uint32_t>(entry.name.size() + 1)};
    std::memcpy(group.data() + reference, &name, sizeof name);
    group.append(entry.name).push_back('\0');
    group.resize((group.size() + 7) / 8 * 8);
    const auto length = static_cast<std::uint32_t>(group.size());
    std::memcpy(group.data(), &length, sizeof length);
    return group;
}

std::uint32_t typeOf(mode_t mode) {
    switch (mode & static_cast<mode_t>(S_IFMT)) {
        case S_IFREG:
            return 1;
        case S_IFDIR:
            return 2;
        case S_IFBLK:
            return 3;
        case S_IFCHR:
            return 4;
        case S_IFLNK:
            return 5;
        case S_IFSOCK:
            return 6;
        case S_IFIFO:
            return 7;
        default:
            return 0;
    }
}

Entry entryFor(int folder, const char* name, unsigned char kind) {
    Entry entry;
    entry.name = name;
    struct statx status = {};
    if (::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_BASIC_STATS, &status) == 0) {
        entry.type = typeOf(status.stx_mode);
        entry.allocatedBytes = static_cast<std::int64_t>(status.stx_blocks) * 512;
        entry.mountStatus = (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 ? DIR_MNTSTATUS_MNTPOINT : 0U;
    } else {
        entry.error = static_cast<std::uint32_t>(errno);
        entry.type = typeOf(static_cast<mode_t>(DTTOIF(kind)));
        entry.tellsType = kind != DT_UNKNOWN;
        entry.tellsFlags = entry.tellsMountStatus = entry.tellsAllocatedBytes = false;
    }
    if (attributes().change) {
        attributes().change(entry);
    }
    return entry;
}

bool isSelfOrParent(const char* name) {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

/// Packs entries of the folder from its position on and leaves it behind the last that fitted.
int pack(int folder, const attrlist& wanted, char* buffer, std::size_t bytes) {
    int count = 0;
    std::size_t filled = 0;
    std::array<char, 32768> records{};
    std::optional<off64_t> resumeAt;
    while (!resumeAt) {
        off64_t position = ::lseek64(folder, 0, SEEK_CUR);
        const ssize_t got = ::getdents64(folder, records.data(), records.size());
        if (got < 0) {
            return -1;
        }
        if (got == 0) {
            break;
        }
        for (ssize_t place = 0; place < got && !resumeAt;) {
            const auto& record = *reinterpret_cast<const dirent64*>(records.data() + place);
            place += record.d_reclen;
            if (!isSelfOrParent(record.d_name)) {
                const std::string group = packedAs(entryFor(folder, record.d_name, record.d_type), wanted);
                if (filled + group.size() > bytes || count == static_cast<int>(attributes().entriesOfCall)) {
                    resumeAt = position;
                    break;
                }
                std::memcpy(buffer + filled, group.data(), group.size());
                filled += group.size();
                ++count;
            }
            position = record.d_off;
        }
    }
    if (resumeAt && ::lseek64(folder, *resumeAt, SEEK_SET) < 0) {
        return -1;
    }
    if (resumeAt && count == 0) {
        return failWith(ERANGE);
    }
    if (attributes().spoil) {
        attributes().spoil(buffer, filled);
    }
    return count;
}

}  // namespace

Attributes& attributes() {
    static Attributes all;
    return all;
}

std::atomic<int>& callsOfBulk() {
    static std::atomic<int> calls{0};
    return calls;
}

std::atomic<int>& fetchingCallsOfBulk() {
    static std::atomic<int> calls{0};
    return calls;
}

std::string packed(const Entry& entry) {
    attrlist wanted{};
    wanted.commonattr = wanted.dirattr = wanted.fileattr = ~attrgroup_t{0};
    return packedAs(entry, wanted);
}

}  // namespace kestrune::fake_darwin

using namespace kestrune::fake_darwin;

int getattrlistbulk(int folder, void* wantedAttributes, void* buffer, std::size_t bytes, std::uint64_t options) {
    const attrlist& wanted = *static_cast<const attrlist*>(wantedAttributes);
    const attrgroup_t required = ATTR_CMN_NAME | ATTR_CMN_RETURNED_ATTRS;
    const bool asksRightly = wanted.bitmapcount == ATTR_BIT_MAP_COUNT && wanted.reserved == 0 && wanted.volattr == 0 &&
                             (wanted.commonattr & required) == required && options == 0;
    if (!asksRightly) {
        return failWith(EINVAL);
    }
    const int call = ++callsOfBulk();
    if (ioPolicyOfThisThread(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES) != IOPOL_MATERIALIZE_DATALESS_FILES_OFF) {
        ++fetchingCallsOfBulk();
    }
    if (attributes().failingCall == call) {
        return failWith(attributes().error);
    }
    if (attributes().needsSearch && ::faccessat(folder, ".", X_OK, AT_EACCESS) != 0) {
        return failWith(EACCES);
    }
    return pack(folder, wanted, static_cast<char*>(buffer), bytes);
}
