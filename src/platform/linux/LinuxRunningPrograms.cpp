#include "platform/linux/LinuxRunningPrograms.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace kestrune {

namespace {

// File names in a folder, sorted; empty when it cannot be read.
std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool isOwnedByUser(const std::string& folder) {
    struct stat status {};

    return ::stat(folder.c_str(), &status) == 0 && status.st_uid == ::getuid();
}

}  // namespace

LinuxRunningPrograms::LinuxRunningPrograms(std::string procRoot, std::vector<std::string> applicationFolders)
    : m_procRoot(std::move(procRoot)), m_folders(std::move(applicationFolders)) {
}

std::vector<std::string> LinuxRunningPrograms::names() {
    if (m_folders.refresh()) {
        m_names = {};
        for (const DesktopEntry& entry : m_folders.entries()) {
            m_names.add(entry);
        }
    }
    const std::string ownNumber = std::to_string(::getpid());
    std::set<std::string> names;
    for (const std::string& number : namesIn(m_procRoot)) {
        const std::string folder = std::string(m_procRoot).append("/").append(number);
        const bool isOtherProcess = number.find_first_not_of("0123456789") == std::string::npos && number != ownNumber;
        if (isOtherProcess && isOwnedByUser(folder)) {
            names.insert(m_names.nameOf(readProcessFacts(folder)));
        }
    }
    // Kernel threads and processes that ended meanwhile have neither an executable nor arguments.
    names.erase("");
    return {names.begin(), names.end()};
}

}  // namespace kestrune
