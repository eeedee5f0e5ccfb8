#include "platform/linux/AppImageReplacement.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "base/Localized.h"
#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxFileLocation.h"
#include "platform/linux/LinuxFileViewer.h"
#include "platform/linux/LinuxTemporaryFile.h"

namespace kestrune {

namespace {

constexpr std::string_view programMagic =
    "\x7F"
    "ELF";
constexpr mode_t permissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr std::size_t copiedAtOnce = std::size_t{16} << 20;

UpdaterError failed(std::string sentence) {
    return {UpdaterError::install, std::move(sentence)};
}

UpdaterError writeError(int error, const std::string& folder) {
    return failed(error == ENOSPC || error == EDQUOT || error == EFBIG
                      ? localized("There is not enough space in %1 for the new version.", {folder})
                      : localized("The new version could not be written to %1.", {folder}));
}

bool isProgram(int file) {
    std::array<char, programMagic.size()> start{};

    struct stat status {};

    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
           ::pread(file, start.data(), start.size(), 0) == static_cast<ssize_t>(start.size()) &&
           std::string_view(start.data(), start.size()) == programMagic;
}

int opened(int folder, const std::string& path) {
    return ::openat(folder, path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
}

/// 0, or the errno.
int copy(int from, int to) {
    while (true) {
        const ssize_t count = ::sendfile(to, from, nullptr, copiedAtOnce);
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        if (count == 0) {
            return 0;
        }
    }
}

}  // namespace

std::optional<UpdaterError> replaceAppImage(const std::string& appImage, const std::string& archive) {
    const std::string folder = LinuxFileViewer::enclosingFolder(appImage);
    const LinuxFileDescriptor fresh(opened(AT_FDCWD, archive));
    if (!fresh || !isProgram(fresh.get())) {
        return failed(localized("What was fetched is not a program, so the old version stays."));
    }
    const auto location = locateReplaceable(appImage);

    struct stat old {};

    const LinuxFileDescriptor oldFile(location ? opened(location->folder.get(), location->name) : -1);
    if (!oldFile || !isProgram(oldFile.get()) || ::fstat(oldFile.get(), &old) != 0) {
        return failed(localized("The running program, %1, is no longer in its place.", {appImage}));
    }
    LinuxTemporaryFile::removeLeftovers(*location);
    LinuxTemporaryFile file(*location);
    if (!file.created()) {
        return failed(
            localized("The folder %1 cannot be written to. Move Kestrune to a folder of your own.", {folder}));
    }
    if (const int error = copy(fresh.get(), file.descriptor()); error != 0) {
        return writeError(error, folder);
    }
    // A power cut must not leave a program that may not be executed. The permissions come after the long part, because
    // a file that is left behind is known by the ones it is made with.
    const bool isWritten = synced(file.descriptor()) &&
                           ::fchmod(file.descriptor(), (old.st_mode & permissions) | S_IXUSR) == 0 && file.finish({});
    if (!isWritten || !file.replaceOriginal()) {
        return writeError(errno, folder);
    }
    // The new version is in place, whether or not this is known to survive a power cut.
    static_cast<void>(synced(location->folder.get()));
    return std::nullopt;
}

}  // namespace kestrune
