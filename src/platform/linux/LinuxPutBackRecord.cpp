#include "platform/linux/LinuxPutBackRecord.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>

#include "platform/linux/LinuxFileStatus.h"
#include "platform/linux/LinuxSafeOpen.h"
#include "platform/linux/LinuxTrashError.h"
#include "platform/linux/TrashInfo.h"

namespace kestrune {

namespace {

constexpr std::size_t longestRecord = 64U << 10U;
constexpr int temporaryNames = 100;

PutBackError noRecord() {
    return {PutBackFailure::noRecord, {}, {}};
}

/// The whole file, as long as it may be, and one byte more when it is longer; or the errno.
Result<std::string, int> contentOf(int file) {
    std::string text;
    std::array<char, 4096> piece = {};
    while (text.size() <= longestRecord) {
        const ssize_t length = ::read(file, piece.data(), piece.size());
        if (length == 0) {
            break;
        }
        if (length < 0 && errno != EINTR) {
            return errno;
        }
        text.append(piece.data(), length < 0 ? 0 : static_cast<std::size_t>(length));
    }
    return text;
}

bool renameIfFree(int folder, const std::string& from, const std::string& to) {
    return ::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0;
}

/// Gives the entry a name that no other program knows, so that it cannot be exchanged any more; empty when that fails.
std::string setAside(int info, const std::string& entry) {
    for (int i = 0; i < temporaryNames; ++i) {
        std::string aside = ".kestrune-" + std::to_string(::getpid()) + "-back-" + std::to_string(i);
        if (renameIfFree(info, entry, aside)) {
            return aside;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return {};
}

}  // namespace

Result<LinuxPutBackRecord, PutBackError> readPutBackRecord(int info, const std::string& name) {
    const LinuxOpened opened = openWithoutLinks(info, name + std::string(trashInfoSuffix),
                                                O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, LinuxReach::mount);
    switch (opened.error) {
        case 0:
            break;
        case ENOENT:
        case ELOOP:
        case EXDEV:
        case ENXIO:
        case ENAMETOOLONG:
            return noRecord();
        default:
            return putBackSystemError(opened.error);
    }
    const auto status = statusOf(opened.descriptor.get());
    if (!status.ok()) {
        return putBackSystemError(status.error());
    }
    const LinuxFileStatus& file = status.value();
    if (!file.isRegularFile() || file.owner != ::geteuid() || file.othersMayWrite()) {
        return noRecord();
    }
    const auto text = contentOf(opened.descriptor.get());
    if (!text.ok()) {
        return putBackSystemError(text.error());
    }
    auto path = text.value().size() > longestRecord ? std::nullopt : originalPathIn(text.value());
    if (!path) {
        return noRecord();
    }
    return LinuxPutBackRecord{file.identity, std::move(*path)};
}

void removePutBackRecord(int info, const std::string& name, const FileIdentity& record) {
    const std::string entry = name + std::string(trashInfoSuffix);
    const auto found = statusIn(info, entry);
    if (!found.ok() || found.value().identity != record) {
        return;
    }
    const std::string aside = setAside(info, entry);
    if (aside.empty()) {
        return;
    }
    const auto taken = statusIn(info, aside);
    if (taken.ok() && taken.value().identity == record) {
        ::unlinkat(info, aside.c_str(), 0);
    } else {
        static_cast<void>(renameIfFree(info, aside, entry));
    }
}

}  // namespace kestrune
