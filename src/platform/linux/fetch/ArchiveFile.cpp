#include "platform/linux/fetch/ArchiveFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/linux/LinuxDirectoryReader.h"
#include "platform/linux/LinuxFileLocation.h"
#include "platform/linux/LinuxSafeOpen.h"
#include "platform/linux/fetch/ArchiveSignature.h"

namespace kestrune {

namespace {

constexpr std::string_view folderPrefix = "fetch-";
constexpr std::string_view folderPattern = "fetch-XXXXXX";  // of mkdtemp(3)

FetchFailure writeFailure(int error) {
    const bool isFull = error == ENOSPC || error == EDQUOT || error == EFBIG;
    return {isFull ? FetchReason::diskFull : FetchReason::fileUnwritable, {}};
}

/// Whether nobody but the user and root can put another folder in the place of this one.
bool isKeptInPlace(int folder) {
    struct stat above {};

    return ::fstatat(folder, "..", &above, 0) == 0 && (above.st_uid == ::geteuid() || above.st_uid == 0) &&
           ((above.st_mode & S_IWOTH) == 0 || (above.st_mode & S_ISVTX) != 0);
}

bool isLocked(int folder) {
    return ::flock(folder, LOCK_EX | LOCK_NB) != 0;
}

std::vector<std::string> namesIn(int folder) {
    const LinuxFileDescriptor listing = openFolderAgain(folder);
    std::vector<std::string> names;
    if (!listing) {
        return names;
    }
    LinuxDirectoryReader reader(LinuxDirectoryReader::smallBuffer);
    reader.begin(listing.get());
    while (const auto record = reader.next()) {
        names.emplace_back(record->name);
    }
    return names;
}

}  // namespace

ArchiveFile::ArchiveFile(const std::string& folder, const std::string& suffix)
    : m_parentPath(folder), m_name("kestrune." + suffix) {
    if (!openFolder(folder)) {
        m_failure = FetchFailure{FetchReason::folderUnusable, folder};
        return;
    }
    removeStaleFolders();
    if (!makeFile()) {
        m_failure = errno == ENOSPC || errno == EDQUOT ? writeFailure(errno)
                                                       : FetchFailure{FetchReason::folderUnusable, folder};
    }
}

ArchiveFile::~ArchiveFile() {
    if (!m_folderName.empty()) {
        ::unlinkat(m_folder.get(), m_name.c_str(), 0);
        ::unlinkat(m_parent.get(), m_folderName.c_str(), AT_REMOVEDIR);
    }
}

/// The folder has to be the user's own and nobody else's to write in: whoever may rename in it could put another file
/// in the place of a verified one. The same goes for the folder it lies in, which a cache folder that several people
/// share may already have held.
bool ArchiveFile::openFolder(const std::string& folder) {
    LinuxMissingFolders missing(folder + "/" + m_name);
    if (!missing.made()) {
        return false;
    }
    missing.keep();
    m_parent.reset(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));

    struct stat status {};

    return m_parent && ::fstat(m_parent.get(), &status) == 0 && status.st_uid == ::geteuid() &&
           isKeptInPlace(m_parent.get()) && ::fchmod(m_parent.get(), S_IRWXU) == 0;
}

void ArchiveFile::removeStaleFolders() const {
    for (const std::string& name : namesIn(m_parent.get())) {
        if (name.size() != folderPattern.size() || !name.starts_with(folderPrefix)) {
            continue;
        }
        const LinuxOpened stale = openWithoutLinks(m_parent.get(), name, O_RDONLY | O_DIRECTORY, LinuxReach::mount);
        if (!stale.descriptor || isLocked(stale.descriptor.get())) {
            continue;
        }
        for (const std::string& file : namesIn(stale.descriptor.get())) {
            ::unlinkat(stale.descriptor.get(), file.c_str(), 0);
        }
        ::unlinkat(m_parent.get(), name.c_str(), AT_REMOVEDIR);
    }
}

bool ArchiveFile::makeFile() {
    std::string path = "/proc/self/fd/" + std::to_string(m_parent.get()) + "/" + std::string(folderPattern);
    if (::mkdtemp(path.data()) == nullptr) {
        return false;
    }
    m_folderName = path.substr(path.size() - folderPattern.size());
    LinuxOpened opened = openWithoutLinks(m_parent.get(), m_folderName, O_RDONLY | O_DIRECTORY, LinuxReach::mount);
    m_folder = std::move(opened.descriptor);
    if (!m_folder || isLocked(m_folder.get())) {
        return false;
    }
    m_file.reset(::openat(m_folder.get(), m_name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                          S_IRUSR | S_IWUSR));
    return static_cast<bool>(m_file);
}

std::optional<FetchFailure> ArchiveFile::write(const QByteArray& bytes) {
    const char* next = bytes.constData();
    std::size_t left = static_cast<std::size_t>(bytes.size());
    while (left > 0) {
        const ssize_t written = ::write(m_file.get(), next, left);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return writeFailure(errno);
        }
        next += written;
        left -= static_cast<std::size_t>(written);
        m_size += written;
    }
    return std::nullopt;
}

std::optional<FetchFailure> ArchiveFile::verify(const std::string& publicKey, const std::string& signature) const {
    if (!synced(m_file.get())) {
        return writeFailure(errno);
    }
    if (!ArchiveSignature::isBy(publicKey, signature, m_file.get())) {
        return FetchFailure{FetchReason::signatureWrong, {}};
    }
    return std::nullopt;
}

std::string ArchiveFile::keep() {
    std::string path = m_parentPath + "/" + m_folderName + "/" + m_name;
    m_folderName.clear();
    return path;
}

}  // namespace kestrune
