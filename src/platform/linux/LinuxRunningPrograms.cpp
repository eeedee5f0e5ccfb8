#include "platform/linux/LinuxRunningPrograms.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <system_error>

#include "base/Text.h"
#include "platform/linux/LinuxStatusFile.h"

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

bool hasSuffix(const std::string& text, std::string_view suffix) {
    return text.size() > suffix.size() && text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::string linkTarget(const std::string& path) {
    std::error_code error;
    return std::filesystem::read_symlink(path, error).string();
}

bool isOwnedByUser(const std::string& folder) {
    struct stat status {};

    return ::stat(folder.c_str(), &status) == 0 && status.st_uid == ::getuid();
}

std::int64_t changeTime(const std::string& folder) {
    struct stat status {};

    if (::stat(folder.c_str(), &status) != 0) {
        return 0;
    }
    return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

ProcessFacts factsOf(const std::string& folder) {
    // A virtual machine's class path can be very long; what tells programs apart comes first.
    constexpr std::size_t longest = 16'384;
    ProcessFacts facts;
    facts.executable = linkTarget(folder + "/exe");
    LinuxStatusFile commandLine(folder + "/cmdline");
    std::string_view text = commandLine.read(longest).value_or(std::string_view{});
    if (!text.empty() && text.back() == '\0') {
        text.remove_suffix(1);
    }
    if (!text.empty()) {
        facts.arguments = split(text, '\0');
    }
    if (isLauncher(lastPathComponent(facts.executable))) {
        facts.workingFolder = linkTarget(folder + "/cwd");
    }
    return facts;
}

std::string environmentOr(const char* name, const std::string& otherwise) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

}  // namespace

LinuxRunningPrograms::LinuxRunningPrograms(std::string procRoot, std::vector<std::string> applicationFolders)
    : m_procRoot(std::move(procRoot)), m_folders(std::move(applicationFolders)) {
}

std::vector<std::string> LinuxRunningPrograms::standardApplicationFolders(const std::string& home) {
    std::vector<std::string> folders{environmentOr("XDG_DATA_HOME", home + "/.local/share") + "/applications"};
    for (const std::string& folder : split(environmentOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ':')) {
        folders.push_back(folder + "/applications");
    }
    folders.push_back(home + "/.local/share/flatpak/exports/share/applications");
    folders.emplace_back("/var/lib/flatpak/exports/share/applications");
    folders.emplace_back("/var/lib/snapd/desktop/applications");
    return folders;
}

std::vector<std::string> LinuxRunningPrograms::names() {
    readEntriesWhenChanged();
    const std::string ownNumber = std::to_string(::getpid());
    std::set<std::string> names;
    for (const std::string& number : namesIn(m_procRoot)) {
        const std::string folder = std::string(m_procRoot).append("/").append(number);
        const bool isOtherProcess = number.find_first_not_of("0123456789") == std::string::npos && number != ownNumber;
        if (isOtherProcess && isOwnedByUser(folder)) {
            names.insert(m_names.nameOf(factsOf(folder)));
        }
    }
    // Kernel threads and processes that ended meanwhile have neither an executable nor arguments.
    names.erase("");
    return {names.begin(), names.end()};
}

void LinuxRunningPrograms::readEntriesWhenChanged() {
    constexpr std::size_t longestEntry = 1U << 18U;
    std::vector<std::int64_t> times;
    for (const std::string& folder : m_folders) {
        times.push_back(changeTime(folder));
    }
    if (times == m_folderTimes) {
        return;
    }
    m_folderTimes = std::move(times);
    m_names = {};
    for (const std::string& folder : m_folders) {
        for (const std::string& name : namesIn(folder)) {
            if (!hasSuffix(name, ".desktop")) {
                continue;
            }
            LinuxStatusFile file(std::string(folder).append("/").append(name));
            const std::optional<std::string_view> text = file.read(longestEntry);
            const std::optional<DesktopEntry> entry = text ? parseDesktopEntry(*text) : std::nullopt;
            if (entry) {
                m_names.add(*entry);
            }
        }
    }
}

}  // namespace kestrune
