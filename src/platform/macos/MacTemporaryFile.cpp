#include "platform/macos/MacTemporaryFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/macos/MacDirectoryReader.h"

namespace kestrune {

namespace {

constexpr int attempts = 16;
constexpr std::size_t randomDigits = 16;
constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

std::string prefixFor(const std::string& name) {
    return "." + name + ".kestrune-";
}

std::string randomSuffix() {
    static constexpr char digits[] = "0123456789abcdef";
    std::uint64_t bits = 0;
    if (::getentropy(&bits, sizeof bits) != 0) {
        return {};
    }
    std::string suffix;
    for (std::size_t digit = 0; digit < randomDigits; ++digit) {
        suffix += digits[bits % 16];
        bits /= 16;
    }
    return suffix;
}

bool isTemporaryName(std::string_view name, const std::string& prefix) {
    return name.size() == prefix.size() + randomDigits && name.substr(0, prefix.size()) == prefix &&
           name.find_first_not_of("0123456789abcdef", prefix.size()) == std::string_view::npos;
}

bool isOurs(int descriptor) {
    struct stat status {};

    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           status.st_nlink == 1 && (status.st_mode & ~static_cast<mode_t>(S_IFMT)) == ownerOnly;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

}  // namespace

MacTemporaryFile::MacTemporaryFile(const MacFileLocation& location) : m_location(location) {
    for (int attempt = 0; attempt < attempts && !create() && errno == EEXIST; ++attempt) {
    }
}

MacTemporaryFile::~MacTemporaryFile() {
    if (!m_name.empty()) {
        ::unlinkat(m_location.folder.get(), m_name.c_str(), 0);
    }
}

bool MacTemporaryFile::create() {
    const std::string suffix = randomSuffix();
    if (suffix.empty()) {
        return false;
    }
    const std::string name = prefixFor(m_location.name) + suffix;
    constexpr int how = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    MacFileDescriptor file(::openat(m_location.folder.get(), name.c_str(), how, ownerOnly));
    if (!file) {
        return false;
    }
    // Between the open and the lock another writer may have taken the file for a leftover; then it takes a new one.
    const bool isLocked = ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;

    struct stat status {};

    if (!isLocked || ::fstat(file.get(), &status) != 0 || status.st_nlink == 0) {
        ::unlinkat(m_location.folder.get(), name.c_str(), 0);
        errno = EEXIST;
        return false;
    }
    m_name = name;
    m_lock.reset(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
    if (m_lock) {
        m_file = std::move(file);
    }
    return created();
}

bool MacTemporaryFile::finish(std::string_view bytes) {
    const bool written = writeAll(m_file.get(), bytes) && synced(m_file.get());
    return ::close(m_file.release()) == 0 && written;
}

bool MacTemporaryFile::replaceOriginal() {
    const int folder = m_location.folder.get();
    if (::renameat(folder, m_name.c_str(), folder, m_location.name.c_str()) != 0) {
        return false;
    }
    m_name.clear();
    return true;
}

void MacTemporaryFile::removeLeftovers(const MacFileLocation& location) {
    const std::string prefix = prefixFor(location.name);
    const MacFileDescriptor listing(
        ::openat(location.folder.get(), ".", O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
    std::vector<std::string> names;
    MacDirectoryReader reader;
    reader.begin(listing.get());
    while (reader.ready(1) > 0) {
        const auto entry = reader.nextAhead();
        if (entry && isTemporaryName(entry->name, prefix)) {
            names.emplace_back(entry->name);
        }
    }
    for (const std::string& name : names) {
        constexpr int how = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
        const MacFileDescriptor file(::openat(location.folder.get(), name.c_str(), how));
        if (file && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 && isOurs(file.get())) {
            ::unlinkat(location.folder.get(), name.c_str(), 0);
        }
    }
}

}  // namespace kestrune
