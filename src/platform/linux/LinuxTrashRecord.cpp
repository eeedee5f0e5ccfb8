#include "platform/linux/LinuxTrashRecord.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>

#include "platform/linux/TrashInfo.h"

namespace kestrune {

namespace {

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
constexpr int temporaryNames = 100;
constexpr std::time_t longestMoveSeconds = 60;

int writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        if (written == 0) {
            return ENOSPC;
        }
        bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return 0;
}

std::string recordName(const std::string& name) {
    return name + std::string(trashInfoSuffix);
}

void removeIfStill(int info, const std::string& name, const FileIdentity& identity) {
    const auto found = statusIn(info, name);
    if (found.ok() && found.value().identity == identity) {
        ::unlinkat(info, name.c_str(), 0);
    }
}

}  // namespace

LinuxTrashRecord::LinuxTrashRecord(int info) : m_info(info) {
}

LinuxTrashRecord::~LinuxTrashRecord() {
    if (!m_temporaryName.empty()) {
        removeIfStill(m_info, m_temporaryName, m_identity);
    }
}

int LinuxTrashRecord::write(std::string_view text) {
    if (const int error = createTemporary(); error != 0) {
        return error;
    }
    const auto status = statusOf(m_file.get());
    if (!status.ok()) {
        return status.error();
    }
    m_identity = status.value().identity;
    if (const int error = writeAll(m_file.get(), text); error != 0) {
        return error;
    }
    return ::fsync(m_file.get()) == 0 ? 0 : errno;
}

int LinuxTrashRecord::createTemporary() {
    m_temporaryName.clear();
    m_publishedName.clear();
    m_file.reset(::openat(m_info, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, ownerOnly));
    if (m_file) {
        return 0;
    }
    if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL) {
        return errno;
    }
    for (int i = 0; i < temporaryNames; ++i) {
        std::string name = ".kestrune-" + std::to_string(::getpid()) + "-" + std::to_string(i);
        m_file.reset(::openat(m_info, name.c_str(), O_CREAT | O_EXCL | O_NOFOLLOW | O_WRONLY | O_CLOEXEC, ownerOnly));
        if (m_file) {
            m_temporaryName = std::move(name);
            return 0;
        }
        if (errno != EEXIST) {
            return errno;
        }
    }
    return EEXIST;
}

int LinuxTrashRecord::publish(const std::string& name) {
    std::string published = recordName(name);
    int result = 0;
    if (m_temporaryName.empty()) {
        const std::string unnamed = "/proc/self/fd/" + std::to_string(m_file.get());
        result = ::linkat(AT_FDCWD, unnamed.c_str(), m_info, published.c_str(), AT_SYMLINK_FOLLOW);
    } else {
        result = ::renameat2(m_info, m_temporaryName.c_str(), m_info, published.c_str(), RENAME_NOREPLACE);
    }
    if (result != 0) {
        return errno;
    }
    m_temporaryName.clear();
    m_publishedName = std::move(published);
    return 0;
}

bool LinuxTrashRecord::isIn(int info) const {
    const auto found = statusIn(info, m_publishedName);
    return found.ok() && found.value().identity == m_identity;
}

void LinuxTrashRecord::withdraw() {
    if (!m_publishedName.empty()) {
        removeIfStill(m_info, m_publishedName, m_identity);
    }
    m_publishedName.clear();
}

bool removeStaleRecord(int info, const std::string& name, std::string_view originalPath) {
    const std::string record = recordName(name);
    const LinuxFileDescriptor file(
        ::openat(info, record.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file) {
        return false;
    }
    const auto status = statusOf(file.get());
    const bool old = status.ok() && std::time(nullptr) - status.value().modified > longestMoveSeconds;
    if (!old || !status.value().isRegularFile() || status.value().owner != ::geteuid()) {
        return false;
    }
    std::array<char, 16384> bytes = {};
    const ssize_t length = ::read(file.get(), bytes.data(), bytes.size());
    if (length <= 0 || !isTrashInfoOf({bytes.data(), static_cast<std::size_t>(length)}, originalPath)) {
        return false;
    }
    const auto still = statusIn(info, record);
    return still.ok() && still.value().identity == status.value().identity && ::unlinkat(info, record.c_str(), 0) == 0;
}

}  // namespace kestrune
