#include "platform/linux/XcbGuestServer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

#include "platform/linux/LinuxDirectoryReader.h"
#include "platform/linux/LinuxFileDescriptor.h"
#include "platform/linux/LinuxStatusFile.h"

namespace kestrune {

namespace {

// Folders of processes belong to their effective owner.
bool isUsers(int procFolder, const char* process) {
    struct stat status {};

    return ::fstatat(procFolder, process, &status, AT_SYMLINK_NOFOLLOW) == 0 && status.st_uid == ::getuid();
}

}  // namespace

bool guestServerRuns(const std::string& procRoot) {
    constexpr std::size_t longestName = 64;
    constexpr std::string_view digits = "0123456789";
    const LinuxFileDescriptor folder(::open(procRoot.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    LinuxDirectoryReader reader(LinuxDirectoryReader::smallBuffer);
    reader.begin(folder.get());
    while (const std::optional<DirectoryRecord> record = reader.next()) {
        const std::string_view number = record->name;
        if (number.find_first_not_of(digits) == std::string_view::npos && isUsers(folder.get(), record->name) &&
            LinuxStatusFile(std::string(procRoot).append("/").append(number).append("/comm")).read(longestName) ==
                "Xwayland\n") {
            return true;
        }
    }
    return false;
}

}  // namespace kestrune
