#include "platform/linux/LinuxWalkSystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>

namespace kestrune {

namespace {

constexpr std::int64_t bytesOfBlock = 512;

std::int64_t bytesOf(std::uint64_t blocks) {
    std::int64_t bytes = 0;
    if (__builtin_mul_overflow(blocks, bytesOfBlock, &bytes)) {
        std::abort();
    }
    return bytes;
}

}  // namespace

std::optional<LinuxWalkSystem> LinuxWalkSystem::around(int descriptor) {
    struct statx status {};

    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0) {
        return std::nullopt;
    }
    return LinuxWalkSystem(status.stx_mnt_id);
}

WalkEntry LinuxWalkSystem::look(int folder, const Record& record) const {
    switch (record.type) {
        case DT_DIR:
            return {WalkEntryKind::folder, 0};
        case DT_LNK:
            return {WalkEntryKind::link, 0};
        case DT_REG:
        case DT_UNKNOWN:
            return lookClosely(folder, record.name);
        default:
            return {WalkEntryKind::other, 0};
    }
}

WalkEntry LinuxWalkSystem::lookClosely(int folder, const char* name) const {
    struct statx status {};

    constexpr int how = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
    constexpr unsigned wanted = STATX_TYPE | STATX_BLOCKS | STATX_MNT_ID;
    if (::statx(folder, name, how, wanted, &status) != 0) {
        return {WalkEntryKind::unreadable, 0};
    }
    if (status.stx_mnt_id != m_mount) {
        return {WalkEntryKind::elsewhere, 0};
    }
    if (S_ISREG(status.stx_mode)) {
        return {WalkEntryKind::file, bytesOf(status.stx_blocks)};
    }
    if (S_ISDIR(status.stx_mode)) {
        return {WalkEntryKind::folder, 0};
    }
    return {S_ISLNK(status.stx_mode) ? WalkEntryKind::link : WalkEntryKind::other, 0};
}

std::optional<LinuxWalkSystem::Identity> LinuxWalkSystem::identityOf(int descriptor) const {
    struct statx status {};

    if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_INO, &status) != 0) {
        return std::nullopt;
    }
    return Identity{status.stx_dev_major, status.stx_dev_minor, status.stx_ino};
}

}  // namespace kestrune
